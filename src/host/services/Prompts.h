#pragma once

#include "base/KorString.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

/// The prompt store: every text that users see, by category and number, in the language of the program.
///
/// A file `<language>.tsv` holds one text a line: category, number and text, separated by tabs; "\n", "\t"
/// and "\\" stand for a line break, a tab and a backslash. Lines that begin with '#' are notes. Beside it
/// `<language>.sentences.tsv` holds the sentences that the code words itself: the English one, a tab, and
/// what it is in the language. English needs none.
class Prompts {
public:
    /// The text; where the language lacks it the English one, else "category number". A missing text is
    /// reported once.
    static KorString getPrompt(const KorString& category, int number);

    // The texts of the three categories: those that the host shares with other modules, those of its windows,
    // and this module's own.
    static KorString ups(int number) { return getPrompt("UPS", number); }
    static KorString gui(int number) { return getPrompt("GUI", number); }
    static KorString dsm(int number) { return getPrompt("DSM", number); }
    /// The form of the module's own text that goes with this many: a text has forms with '|' between them, by
    /// the rule that the language's file names as "RULE 1" (see PluralForms).
    static KorString counted(int number, std::int64_t many);

    /// Reads the texts of a language, and those in English, from a folder; forgets everything read before,
    /// and makes the language that of `translated` and `term`. Lines that are no prompts, or repeat one, are
    /// reported with file and line. Returns false when the language's file cannot be read.
    static bool load(const std::filesystem::path& folder, const std::string& language);

    /// The languages that the folder has texts of, in the order of their codes.
    static std::vector<std::string> languages(const std::filesystem::path& folder);
    /// All texts of one of them, by "category number"; what is wrong with them is not told. Loads nothing.
    static std::unordered_map<std::string, KorString> textsOf(const std::filesystem::path& folder,
                                                              const std::string& language);

    /// Whether the store has the text.
    static bool has(const KorString& category, int number);
    static const std::string& language();

    /// The setting that names the language, under the manager's key; empty, or absent: that of the system.
    static constexpr const char* kLanguageSetting = "Language";
    /// The language to use: that of the setting, else that of the system; only languages that the folder has.
    static std::string chooseLanguage(const std::filesystem::path& folder);
    /// That of the environment (LC_ALL, LC_MESSAGES, LANG) where the folder has it, else "en".
    static std::string systemLanguage(const std::filesystem::path& folder);
};
