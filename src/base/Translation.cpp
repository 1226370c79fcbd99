#include "base/Translation.h"

#include <utility>

namespace {

Language& current() {
    static Language language;
    return language;
}

} // namespace

KorString translated(std::string_view english) {
    const auto found = current().sentences.find(std::string(english));
    return found == current().sentences.end() ? KorString(english) : found->second;
}

KorString term(const std::string& category, int number, const std::string& otherwise) {
    const auto found = current().terms.find(category + ' ' + std::to_string(number));
    return found == current().terms.end() ? KorString(otherwise) : found->second;
}

Language setLanguage(Language language) {
    return std::exchange(current(), std::move(language));
}
