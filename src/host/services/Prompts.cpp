#include "services/Prompts.h"

#include "base/Translation.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/KorTextFile.h"
#include "services/PluralForms.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <unordered_map>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr int kTextMissing = 9;
constexpr int kLinesDamaged = 10;

using Texts = std::unordered_map<std::string, KorString>; // by "category number"

struct Store {
    Texts english;
    Texts translated; // empty for English
    fs::path file;    // of the language
    std::string language;
    bool isLackTold = false; // of the language's file: that it is missing, has damaged lines or lacks a text
    bool loaded = false;
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

// Adds one line; returns false when it is no prompt, or one that was there before.
bool takeLine(std::string_view line, Texts& texts) {
    const auto first = line.find('\t');
    const auto second = first == std::string_view::npos ? first : line.find('\t', first + 1);
    if (second == std::string_view::npos || first == 0 || second + 1 == line.size())
        return false;
    int number = 0;
    const auto [end, error] = std::from_chars(line.data() + first + 1, line.data() + second, number);
    if (error != std::errc() || end != line.data() + second)
        return false;
    return texts.emplace(idOf(line.substr(0, first), number), unescaped(line.substr(second + 1))).second;
}

// Adds one line; returns false when it is no pair of sentences, or the English one was there before.
bool takeSentence(std::string_view line, Texts& sentences) {
    const auto tab = line.find('\t');
    if (tab == std::string_view::npos || tab == 0 || tab + 1 == line.size())
        return false;
    const std::string english = unescaped(line.substr(0, tab)).toStdString();
    return sentences.emplace(english, unescaped(line.substr(tab + 1))).second;
}

using TakeLine = bool (*)(std::string_view, Texts&);

// Returns whether the file could be read; one sentence tells of all that is wrong with it.
bool readFile(const fs::path& file, TakeLine take, Texts& texts) {
    std::vector<KorString> lines;
    if (!KorTextFile::readLines(file, lines)) {
        // By its English: the file that would have a number for it may be the one that is missing.
        KorHostReport::add(
            KorString::format(translated("The text file %s cannot be read; texts show in English or as their "
                                         "numbers. Install the program again."),
                              {file.string()}));
        store().isLackTold = store().isLackTold || file == store().file;
        return false;
    }
    std::vector<int> damaged;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = lines[i].view();
        if (!lines[i].trimmed().isEmpty() && line.front() != '#' && !take(line, texts))
            damaged.push_back(static_cast<int>(i) + 1);
    }
    store().isLackTold = store().isLackTold || (!damaged.empty() && file == store().file);
    if (!damaged.empty())
        KorHostReport::add(kLinesDamaged, file.string(), KorTextFile::lineList(damaged));
    return true;
}

// English sentences name things in small letters: "There is no detail style".
KorString insideSentence(const KorString& text, bool isEnglish) {
    std::string word = text.toStdString();
    if (isEnglish && !word.empty())
        word.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(word.front())));
    return KorString(word);
}

// Tables and columns are named in sentences as on pages.
Texts termsOf(const Texts& texts, bool isEnglish) {
    Texts terms;
    for (const auto& [id, text] : texts)
        if (id.starts_with("TAB ") || id.starts_with("COL "))
            terms.emplace(id, insideSentence(text, isEnglish));
    return terms;
}

bool hasLanguage(const fs::path& folder, const std::string& name) {
    std::error_code ignored;
    return !name.empty() && name.find_first_of("/.") == std::string::npos &&
           fs::exists(folder / (name + ".tsv"), ignored);
}

void loadOnce() {
    if (store().loaded)
        return;
    const fs::path folder = KorResources::folder() / "prompts";
    Prompts::load(folder, Prompts::chooseLanguage(folder));
}

} // namespace

KorString Prompts::getPrompt(const KorString& category, int number) {
    loadOnce();
    const std::string id = idOf(category.view(), number);
    const bool isEnglish = store().language == "en";
    const Texts& wanted = isEnglish ? store().english : store().translated;
    if (const auto it = wanted.find(id); it != wanted.end())
        return it->second;
    if (!std::exchange(store().isLackTold, true))
        KorHostReport::add(kTextMissing, KorString(id), store().file.string());
    const auto it = store().english.find(id);
    return it == store().english.end() ? KorString(id) : it->second;
}

KorString Prompts::counted(int number, std::int64_t many) {
    const std::string rule = getPrompt("RULE", 1).toStdString();
    return PluralForms::choose(dsm(number), PluralForms::formFor(rule, many));
}

bool Prompts::load(const fs::path& folder, const std::string& language) {
    store() = Store{};
    store().loaded = true;
    store().language = language;
    store().file = folder / (language + ".tsv");
    const bool isEnglish = language == "en";
    Language sentences;
    setLanguage({});
    if (!isEnglish)
        readFile(folder / (language + ".sentences.tsv"), &takeSentence, sentences.sentences);
    setLanguage(sentences);
    const bool english = readFile(folder / "en.tsv", &takeLine, store().english);
    const bool read = isEnglish ? english : readFile(store().file, &takeLine, store().translated);
    sentences.terms = termsOf(isEnglish ? store().english : store().translated, isEnglish);
    setLanguage(std::move(sentences));
    return read;
}

std::vector<std::string> Prompts::languages(const fs::path& folder) {
    std::vector<std::string> codes;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored))
        if (entry.path().extension() == ".tsv" && hasLanguage(folder, entry.path().stem().string()))
            codes.push_back(entry.path().stem().string());
    std::ranges::sort(codes);
    return codes;
}

std::unordered_map<std::string, KorString> Prompts::textsOf(const fs::path& folder,
                                                            const std::string& language) {
    Texts texts;
    std::vector<KorString> lines;
    KorTextFile::readLines(folder / (language + ".tsv"), lines);
    for (const KorString& line : lines)
        if (!line.isEmpty() && line.view().front() != '#')
            takeLine(line.view(), texts);
    return texts;
}

bool Prompts::has(const KorString& category, int number) {
    loadOnce();
    const std::string id = idOf(category.view(), number);
    return store().translated.contains(id) || store().english.contains(id);
}

const std::string& Prompts::language() {
    loadOnce();
    return store().language;
}

std::string Prompts::chooseLanguage(const fs::path& folder) {
    KorString setting;
    const KOSettings& settings = KOSettings::getInstance();
    settings.readString(KOSettings::getKeyDSM(), kLanguageSetting, setting);
    if (hasLanguage(folder, setting.toStdString()))
        return setting.toStdString();
    if (!setting.isEmpty())
        settings.refuse(kLanguageSetting, setting);
    return systemLanguage(folder);
}

std::string Prompts::systemLanguage(const fs::path& folder) {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (!value || !*value)
            continue;
        const std::string wish = std::string(value).substr(0, 2);
        return hasLanguage(folder, wish) ? wish : "en";
    }
    return "en";
}
