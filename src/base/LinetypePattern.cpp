#include "base/LinetypePattern.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace {

constexpr double kLargest = 1e9; // what is longer is no length of a drawing

/// Takes a pattern apart from its front. Each operation returns false when what it wants is not there.
class PatternReader {
public:
    explicit PatternReader(std::string_view text) : m_rest(text) {}

    bool isAtEnd() {
        skipBlanks();
        return m_rest.empty() || m_rest.front() == ';';
    }

    bool take(char wanted) {
        skipBlanks();
        if (m_rest.empty() || m_rest.front() != wanted)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    bool takeLetter(char& letter) {
        skipBlanks();
        if (m_rest.empty())
            return false;
        letter = m_rest.front() >= 'a' && m_rest.front() <= 'z'
                     ? static_cast<char>(m_rest.front() - 'a' + 'A')
                     : m_rest.front();
        m_rest.remove_prefix(1);
        return letter >= 'A' && letter <= 'Z';
    }

    bool takeNumber(double& number) {
        if (take('+') && !m_rest.empty() && m_rest.front() == '-')
            return false;
        skipBlanks();
        const auto [end, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), number);
        if (error != std::errc() || !std::isfinite(number) || std::abs(number) > kLargest)
            return false;
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
        return true;
    }

    /// Everything up to one of `stops`, which stays, without blanks at its ends.
    KorString takeUntil(std::string_view stops) {
        const std::size_t length = std::min(m_rest.find_first_of(stops), m_rest.size());
        KorString text = KorString(m_rest.substr(0, length)).trimmed();
        m_rest.remove_prefix(length);
        return text;
    }

    bool takeQuoted(KorString& text) {
        const std::size_t end = m_rest.find('"');
        if (end == std::string_view::npos)
            return false;
        text = KorString(m_rest.substr(0, end));
        m_rest.remove_prefix(end + 1);
        return true;
    }

private:
    void skipBlanks() {
        while (!m_rest.empty() && (m_rest.front() == ' ' || m_rest.front() == '\t'))
            m_rest.remove_prefix(1);
    }

    std::string_view m_rest;
};

bool takeAngle(PatternReader& reader, double& degrees) {
    if (!reader.takeNumber(degrees))
        return false;
    if (reader.take('r') || reader.take('R'))
        degrees *= 180.0 / std::numbers::pi;
    else if (reader.take('g') || reader.take('G'))
        degrees *= 0.9;
    else if (!reader.take('d'))
        reader.take('D');
    return true;
}

bool takeAttribute(PatternReader& reader, LinetypeElement& element) {
    char name = 0;
    if (!reader.takeLetter(name) || !reader.take('='))
        return false;
    switch (name) {
    case 'S':
        return reader.takeNumber(element.scale);
    case 'X':
        return reader.takeNumber(element.x);
    case 'Y':
        return reader.takeNumber(element.y);
    case 'R':
    case 'A':
    case 'U':
        element.rotationKind = name == 'R'   ? LinetypeElement::kAlongLine
                               : name == 'A' ? LinetypeElement::kAbsolute
                                             : LinetypeElement::kUpright;
        return takeAngle(reader, element.rotation);
    default:
        return false;
    }
}

bool takeShapeOrText(PatternReader& reader, LinetypeElement& element) {
    const bool quoted = reader.take('"');
    element.kind = quoted ? LinetypeElement::kText : LinetypeElement::kShape;
    if (quoted && !reader.takeQuoted(element.text))
        return false;
    if (!quoted)
        element.text = reader.takeUntil(",]");
    if (!reader.take(','))
        return false;
    element.font = reader.takeUntil(",]");
    while (reader.take(','))
        if (!takeAttribute(reader, element))
            return false;
    return reader.take(']') && !element.text.isEmpty();
}

bool takeElement(PatternReader& reader, LinetypeElement& element) {
    if (reader.take('['))
        return takeShapeOrText(reader, element);
    double number = 0.0;
    if (!reader.takeNumber(number))
        return false;
    element.kind = number > 0.0   ? LinetypeElement::kDash
                   : number < 0.0 ? LinetypeElement::kGap
                                  : LinetypeElement::kDot;
    element.length = std::abs(number);
    return true;
}

} // namespace

std::optional<LinetypePattern> LinetypePatterns::parse(std::string_view text) {
    PatternReader reader(text);
    LinetypePattern pattern;
    char alignment = 0;
    if (!reader.takeLetter(alignment) || alignment != 'A')
        return std::nullopt;
    while (!reader.isAtEnd() || pattern.empty()) {
        LinetypeElement element;
        if (!reader.take(',') || !takeElement(reader, element))
            return std::nullopt;
        pattern.push_back(std::move(element));
    }
    return pattern;
}

double LinetypePatterns::length(const LinetypePattern& pattern) {
    double sum = 0.0;
    for (const LinetypeElement& element : pattern)
        sum += element.length;
    return sum;
}
