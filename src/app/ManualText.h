#pragma once

#include "base/KorString.h"

#include <string>
#include <string_view>

/// A page of the manual as it is written, in the format of man.
class ManualText {
public:
    /// `title` in capitals; `what` it is, in a few words, behind the name of the page itself.
    ManualText(const std::string& title, int section, const KorString& name, const KorString& what);

    void section(const KorString& heading);
    void subsection(const std::string& heading);
    void paragraph(const KorString& text);
    /// A term in bold, and what is said of it, indented.
    void entry(const std::string& term, const KorString& text);
    /// Lines as they are.
    void example(const std::string& lines);

    std::string text() const { return m_text; }

    /// Text in which nothing is taken for an instruction.
    static std::string escaped(std::string_view text);

private:
    void beginParagraph();

    std::string m_text;
    bool m_isBelowHeading = false;
};
