#include "services/Prompts.h"

#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/KorTextFile.h"

#include <charconv>
#include <cstdlib>
#include <unordered_map>

namespace fs = std::filesystem;

namespace {

struct Store {
    std::unordered_map<std::string, KorString> texts; // "category number"
    std::string language;
};

Store& store() {
    static Store texts;
    return texts;
}

std::string idOf(std::string_view category, int number) {
    return std::string(category) + ' ' + std::to_string(number);
}

KorString unescaped(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char kind = text[++i];
        out += kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
    }
    return KorString(out);
}

// Adds one line; returns false when it is no prompt.
bool takeLine(std::string_view line) {
    const auto first = line.find('\t');
    const auto second = first == std::string_view::npos ? first : line.find('\t', first + 1);
    if (second == std::string_view::npos || first == 0)
        return false;
    int number = 0;
    const auto [end, error] = std::from_chars(line.data() + first + 1, line.data() + second, number);
    if (error != std::errc() || end != line.data() + second)
        return false;
    std::string id = idOf(line.substr(0, first), number);
    const KorString text = unescaped(line.substr(second + 1));
    store().texts.insert_or_assign(std::move(id), text);
    return true;
}

bool readFile(const fs::path& file) {
    std::vector<KorString> lines;
    if (!KorTextFile::readLines(file, lines)) {
        KorHostReport::add(KorString::format(
            "The text file %s cannot be read; texts show as their numbers. Install the program again.",
            {file.string()}));
        return false;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = lines[i].view();
        if (line.empty() || line.front() == '#' || takeLine(line))
            continue;
        KorHostReport::add(KorString::format(
            "The text file %s is damaged in line %d; that text shows as its number. Mend the line (category, "
            "number and text, separated by tabs) or install the program again.",
            {file.string(), KorString::number(static_cast<int>(i) + 1)}));
    }
    return true;
}

void loadOnce() {
    static bool tried = false;
    if (tried || !store().texts.empty())
        return;
    tried = true;
    const fs::path folder = KorResources::folder() / "prompts";
    Prompts::load(folder, Prompts::chooseLanguage(folder));
}

} // namespace

KorString Prompts::getPrompt(const KorString& category, int number) {
    loadOnce();
    const std::string id = idOf(category.view(), number);
    const auto it = store().texts.find(id);
    if (it != store().texts.end())
        return it->second;
    KorHostReport::add(KorString::format("The text %s is missing in the language \"%s\"; its number is shown. "
                                         "Add it to the text file or install the program again.",
                                         {id, store().language}));
    return KorString(id);
}

bool Prompts::load(const fs::path& folder, const std::string& language) {
    store().texts.clear();
    store().language = language;
    const bool english = readFile(folder / "en.tsv");
    return language == "en" ? english : readFile(folder / (language + ".tsv"));
}

bool Prompts::has(const KorString& category, int number) {
    loadOnce();
    return store().texts.contains(idOf(category.view(), number));
}

const std::string& Prompts::language() {
    loadOnce();
    return store().language;
}

std::string Prompts::chooseLanguage(const fs::path& folder) {
    std::vector<std::string> wishes;
    KorString setting;
    if (KOSettings::getInstance().readString(KOSettings::getKeyDSM(), "Language", setting))
        wishes.push_back(setting.toStdString());
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (!value || !*value)
            continue;
        wishes.emplace_back(std::string(value).substr(0, 2));
        break;
    }
    std::error_code ignored;
    for (const std::string& wish : wishes)
        if (wish.find('/') == std::string::npos && fs::exists(folder / (wish + ".tsv"), ignored))
            return wish;
    return "en";
}
