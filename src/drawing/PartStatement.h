#pragma once

#include "base/Result.h"
#include "picture/Geometry.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One line of a part file: KEYWORD, then words, then NAME=VALUE. Values with blanks stand in double quotes;
/// a "#" outside of quotes begins a comment. What is taken is remembered, so that nothing is passed over in
/// silence.
class PartStatement {
public:
    /// Reads a line. `error` says what is wrong with it, if anything.
    static PartStatement read(std::string_view line, std::string& error);

    const std::string& keyword() const { return m_keyword; }
    const std::vector<std::string>& words() const { return m_words; }

    bool has(const std::string& name) const { return m_values.contains(name); }
    /// The text; empty where it is not given.
    std::string text(const std::string& name);
    /// A number; `otherwise` where it is not given. What is no number is a fault of the statement.
    double number(const std::string& name, double otherwise);
    /// A number that must be given and be above 0.
    double size(const std::string& name);
    /// A point "x,y,z"; `otherwise` where it is not given.
    Vec3 point(const std::string& name, const Vec3& otherwise = {});
    /// Points with ";" between.
    std::vector<Vec3> points(const std::string& name);
    /// Numbers with "," between.
    std::vector<double> numbers(const std::string& name);
    /// Texts with "," between, without the blanks around them.
    std::vector<std::string> list(const std::string& name);

    /// Notes what is wrong with the statement; the first thing counts.
    void fault(const std::string& sentence);
    /// What is wrong, or which value nobody has taken; empty where all is well.
    std::string findings() const;

private:
    std::string m_keyword;
    std::vector<std::string> m_words;
    std::map<std::string, std::string> m_values;
    std::map<std::string, bool> m_taken;
    std::string m_fault;
};

/// The parts between separators, without blanks at their ends.
std::vector<std::string> splitText(std::string_view text, char separator);
/// The number that the whole text is, with a point as decimal mark, whatever the locale.
std::optional<double> numberIn(std::string_view text);
