#pragma once

#include "base/KorString.h"

#include <string>
#include <unordered_map>

/// The sentences that the code words itself, in the program's language. The English sentence in the code is
/// the key, so that code reads as what it says, and a sentence without a translation is still a sentence.
/// Texts that are only numbers to the code are prompts instead.

/// A sentence in the program's language; itself where there is no translation. It may hold the places of
/// `KorString::format`: translate first, then fill in.
KorString translated(std::string_view english);

/// Marks a sentence of a table, which is translated where it is used.
constexpr const char* translatable(const char* english) {
    return english;
}

/// What a thing is called inside a sentence, by its category and number among the prompts, such as the rows
/// of a table; `otherwise` where the language has no word for it.
KorString term(const std::string& category, int number, const std::string& otherwise);

/// What a language has.
struct Language {
    std::unordered_map<std::string, KorString> sentences; ///< by their English
    std::unordered_map<std::string, KorString> terms;     ///< by "category number"
};

/// Makes this the program's language and returns the one before. An empty one is plain English.
Language setLanguage(Language language);
