#include "base/TextLines.h"

#include "base/KorString.h"
#include "base/Utf8.h"

#include <string_view>
#include <utility>

namespace {

constexpr int kEnd = -1;
constexpr wchar_t kReplacement = 0xFFFD;

// What Windows-1252 has at 0x80 to 0x9F.
constexpr wchar_t kWindows1252[32] = {
    0x20AC,       kReplacement, 0x201A, 0x0192, 0x201E, 0x2026,       0x2020, 0x2021,
    0x02C6,       0x2030,       0x0160, 0x2039, 0x0152, kReplacement, 0x017D, kReplacement,
    kReplacement, 0x2018,       0x2019, 0x201C, 0x201D, 0x2022,       0x2013, 0x2014,
    0x02DC,       0x2122,       0x0161, 0x203A, 0x0153, kReplacement, 0x017E, 0x0178,
};

std::string fromWindows1252(std::string_view bytes) {
    std::wstring wide;
    wide.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        wide += code >= 0x80 && code < 0xA0 ? kWindows1252[code - 0x80] : static_cast<wchar_t>(code);
    }
    return KorString::fromWide(wide).toStdString();
}

bool isHighSurrogate(int unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(int unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

TextLines::TextLines(std::istream& stream) : m_buffer(*stream.rdbuf()) {
    const int first = nextByte();
    const int second = nextByte();
    if (first == 0xFF && second == 0xFE)
        m_encoding = kUtf16Little;
    else if (first == 0xFE && second == 0xFF)
        m_encoding = kUtf16Big;
    else if (first != 0xEF || second != 0xBB || nextByte() != 0xBF)
        m_buffer.pubseekpos(0);
}

int TextLines::nextByte() {
    if (m_bytes == kMostBytes) {
        m_atLimit = m_atLimit || m_buffer.sgetc() != kEnd;
        return kEnd;
    }
    ++m_bytes;
    return m_buffer.sbumpc();
}

int TextLines::nextUnit() {
    if (m_pushedBack != kEnd)
        return std::exchange(m_pushedBack, kEnd);
    const int first = nextByte();
    if (m_encoding == kBytes || first == kEnd)
        return first;
    const int second = nextByte();
    if (second == kEnd)
        return kEnd;
    return m_encoding == kUtf16Little ? first | second << 8 : first << 8 | second;
}

int TextLines::nextCharacter() {
    const int unit = nextUnit();
    if (m_encoding == kBytes || unit < 0xD800 || unit >= 0xE000)
        return unit;
    const int low = isHighSurrogate(unit) ? nextUnit() : kEnd;
    if (isLowSurrogate(low))
        return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    m_pushedBack = low;
    return kReplacement;
}

void TextLines::append(std::string& line, int character) const {
    if (line.size() >= kLongestLine)
        return;
    if (m_encoding == kBytes || character < 0x80)
        line += static_cast<char>(character);
    else
        line += KorString::fromWide(std::wstring(1, static_cast<wchar_t>(character))).view();
}

bool TextLines::next(std::string& line) {
    line.clear();
    int character = m_binary ? kEnd : nextCharacter();
    const bool any = character != kEnd;
    for (; character != kEnd && character != '\n' && character != '\r'; character = nextCharacter()) {
        if (character == 0) {
            m_binary = true;
            return false;
        }
        append(line, character);
    }
    if (character == '\r') {
        const int following = nextUnit();
        if (following != '\n')
            m_pushedBack = following;
    }
    if (m_encoding == kBytes && !isCleanUtf8(line))
        line = fromWindows1252(line);
    return any;
}
