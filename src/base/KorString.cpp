#include "base/KorString.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Takes one code point off the front; bytes that are no UTF-8 become the replacement character one by one.
char32_t takeCodePoint(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const int length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    if (length == 0 || static_cast<std::size_t>(length) > text.size()) {
        text.remove_prefix(1);
        return kReplacement;
    }
    char32_t c = length == 1 ? lead : lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[static_cast<std::size_t>(i)]);
        if ((next & 0xC0) != 0x80) {
            text.remove_prefix(1);
            return kReplacement;
        }
        c = (c << 6) | (next & 0x3F);
    }
    text.remove_prefix(static_cast<std::size_t>(length));
    return c;
}

} // namespace

KorString KorString::fromWide(std::wstring_view wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    for (const wchar_t c : wide)
        appendUtf8(utf8, static_cast<char32_t>(c));
    return KorString(utf8);
}

std::wstring KorString::toWide() const {
    std::wstring wide;
    wide.reserve(size());
    for (std::string_view rest = view(); !rest.empty();)
        wide += static_cast<wchar_t>(takeCodePoint(rest));
    return wide;
}

KorString KorString::operator+(const KorString& other) const {
    if (other.isEmpty())
        return *this;
    std::string joined;
    joined.reserve(size() + other.size());
    joined.append(view()).append(other.view());
    return KorString(joined);
}

KorString KorString::trimmed() const {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::string_view text = view();
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return KorString();
    const auto last = text.find_last_not_of(kBlanks);
    return first == 0 && last + 1 == text.size() ? *this : KorString(text.substr(first, last + 1 - first));
}

KorString KorString::lowered() const {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::string lower;
    lower.reserve(size());
    // Most names are ASCII, and lists of many thousands of them are sorted without regard to case.
    if (std::ranges::all_of(view(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        for (const char c : view())
            lower.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
        return KorString(lower);
    }
    for (std::string_view rest = view(); !rest.empty();) {
        const char32_t c = takeCodePoint(rest);
        appendUtf8(lower, static_cast<char32_t>(unicode ? towlower_l(static_cast<wint_t>(c), unicode)
                                                        : std::towlower(static_cast<wint_t>(c))));
    }
    return KorString(lower);
}

KorString KorString::replaced(const KorString& what, const KorString& with) const {
    if (what.isEmpty() || view().find(what.view()) == std::string_view::npos)
        return *this;
    std::string out;
    std::string_view rest = view();
    for (auto at = rest.find(what.view()); at != std::string_view::npos; at = rest.find(what.view())) {
        out.append(rest.substr(0, at)).append(with.view());
        rest.remove_prefix(at + what.size());
    }
    return KorString(out.append(rest));
}

KorString KorString::format(const KorString& pattern, std::initializer_list<KorString> arguments) {
    std::string out;
    auto next = arguments.begin();
    const std::string_view text = pattern.view();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char kind = text[i] == '%' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (kind == '%') {
            out += '%';
            ++i;
        } else if ((kind == 's' || kind == 'd') && next != arguments.end()) {
            out.append((next++)->view());
            ++i;
        } else {
            out += text[i];
        }
    }
    return KorString(out);
}
