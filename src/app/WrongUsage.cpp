#include "app/WrongUsage.h"

#include "app/ArgumentTypes.h"
#include "app/DidYouMean.h"
#include "base/Translation.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>

namespace {

// In the command, or in those that it belongs to.
const CLI::Option* findOption(const CLI::App* command, const std::string& name) {
    for (; command; command = command->get_parent())
        if (const CLI::Option* option = command->get_option_no_throw(name))
            return option;
    return nullptr;
}

bool isOption(const std::string& word) {
    return word.size() > 1 && word[0] == '-' && (word[1] < '0' || word[1] > '9');
}

KorString noSuchOption(const CLI::App& app, const CLI::App* command, const std::string& name) {
    std::vector<KorString> known;
    for (const CLI::App* each = command; each; each = each->get_parent())
        for (const CLI::Option* option : each->get_options())
            if (!option->get_positional())
                known.emplace_back(option->get_name());
    KorString path;
    for (const CLI::App* each = command; each != &app; each = each->get_parent())
        path = KorString(" ") + each->get_name() + path;
    path = KorString("detailstyles") + path;
    return KorString::format(translated("There is no option \"%s\"; \"%s --help\" names them."),
                             {name, path}) +
           didYouMean(name, known);
}

KorString noSuchCommand(const CLI::App& command, const std::string& name) {
    std::vector<KorString> known;
    for (const CLI::App* each : command.get_subcommands({}))
        if (!each->get_group().empty()) // others serve the program itself
            known.emplace_back(each->get_name());
    const KorString meant = didYouMean(name, known);
    return command.get_parent()
               ? KorString::format(
                     translated("There is no command \"%s %s\"; \"detailstyles %s --help\" names "
                                "those that there are."),
                     {command.get_name(), name, command.get_name()}) +
                     meant
               : KorString::format(
                     translated("There is no command and no file \"%s\"; \"detailstyles --help\" "
                                "names the commands."),
                     {name}) +
                     meant;
}

bool mayBeFile(const std::string& word) {
    std::error_code error;
    return word.find_first_of("./") != std::string::npos || std::filesystem::exists(word, error);
}

// Reads the words as they are declared, up to the first that is wrong.
class Reader {
public:
    Reader(const CLI::App& app, const std::vector<std::string>& words)
        : m_app(app), m_words(words), m_command(&app) {}

    KorString sentence() {
        while (m_at < m_words.size() && m_words[m_at] != "--") {
            const KorString wrong = isOption(m_words[m_at]) ? readOption() : readWord();
            if (!wrong.isEmpty())
                return wrong;
        }
        return {};
    }

private:
    KorString readOption() {
        const std::string word = m_words[m_at++];
        const std::string name = word.substr(0, word.find('='));
        const CLI::Option* option = findOption(m_command, name);
        if (!option)
            return noSuchOption(m_app, m_command, name);
        const auto expected = static_cast<std::size_t>(option->get_items_expected_min());
        if (name != word || expected == 0)
            return {};
        for (std::size_t i = 0; i < expected && expected > 1; ++i)
            if (m_at + i >= m_words.size() ||
                (isOption(m_words[m_at + i]) && findOption(m_command, m_words[m_at + i])))
                return KorString::format(translated("Too few words follow %s; it takes %s."),
                                         {name, argumentType(*option)->shown});
        m_at += expected;
        return {};
    }
    KorString readWord() {
        const std::string& word = m_words[m_at++];
        const std::vector<const CLI::App*> below = m_command->get_subcommands({});
        const auto found =
            std::ranges::find(below, word, [](const CLI::App* each) { return each->get_name(); });
        const bool isCommand = !m_hasArguments && found != below.end();
        if (isCommand)
            m_command = *found;
        else if (!m_hasArguments && !below.empty() && (m_command->get_parent() || !mayBeFile(word)))
            return noSuchCommand(*m_command, word);
        m_hasArguments = !isCommand;
        return {};
    }

    const CLI::App& m_app;
    const std::vector<std::string>& m_words;
    const CLI::App* m_command;
    std::size_t m_at = 0;
    bool m_hasArguments = false;
};

} // namespace

KorString wrongUsage(const CLI::App& app, const std::vector<std::string>& words, const CLI::Error& fault) {
    return fault.get_exit_code() == 0 ? KorString() : Reader(app, words).sentence();
}
