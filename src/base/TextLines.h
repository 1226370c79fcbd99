#pragma once

#include <cstdint>
#include <istream>
#include <string>

/// Reads a text file line by line, whatever it is: UTF-8 and UTF-16 with a byte order mark, UTF-8 without
/// one, and, for each line that is no UTF-8, Windows-1252; with the line breaks of any system. Never holds
/// more than one line, and gives up after a bounded amount.
class TextLines {
public:
    static constexpr std::size_t kLongestLine = 64 * 1024;
    static constexpr std::uintmax_t kMostBytes = 16 * 1024 * 1024;

    /// `stream` must be open in binary mode and outlive the reader.
    explicit TextLines(std::istream& stream);

    /// The next line as UTF-8, without its line break; what is longer than the longest line is dropped.
    /// Returns false at the end, at the limit and at a byte that no text has.
    bool next(std::string& line);

    /// Whether reading stopped before the end: there was more than the limit.
    bool stoppedAtLimit() const { return m_atLimit; }
    /// Whether reading stopped at a byte that no text has.
    bool isBinary() const { return m_binary; }

private:
    enum eEncoding { kBytes, kUtf16Little, kUtf16Big };

    int nextByte();
    int nextUnit();
    int nextCharacter();
    void append(std::string& line, int character) const;

    std::streambuf& m_buffer;
    eEncoding m_encoding = kBytes;
    std::uintmax_t m_bytes = 0;
    int m_pushedBack = -1; // a unit read ahead
    bool m_atLimit = false;
    bool m_binary = false;
};
