#include "app/ManualText.h"

#include "base/Translation.h"

#include <utility>

ManualText::ManualText(const std::string& title, int section, const KorString& name, const KorString& what) {
    m_text = ".TH " + title + " " + std::to_string(section) + " " + DETAILSTYLES_RELEASED +
             " \"detailstyles " + DETAILSTYLES_VERSION + "\"\n";
    this->section(translated("NAME"));
    m_text += escaped(name.view()) + " \\- " + escaped(what.view()) + "\n";
}

std::string ManualText::escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        const bool startsLine = escaped.empty() || escaped.back() == '\n';
        if (startsLine && (c == '.' || c == '\''))
            escaped += "\\&";
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c;
    }
    return escaped;
}

void ManualText::section(const KorString& heading) {
    m_text += ".SH " + escaped(heading.view()) + "\n";
    m_isBelowHeading = true;
}

void ManualText::subsection(const std::string& heading) {
    m_text += ".SS " + escaped(heading) + "\n";
    m_isBelowHeading = true;
}

// A heading begins one itself.
void ManualText::beginParagraph() {
    if (!std::exchange(m_isBelowHeading, false))
        m_text += ".PP\n";
}

void ManualText::paragraph(const KorString& text) {
    beginParagraph();
    m_text += escaped(text.view()) + "\n";
}

void ManualText::entry(const std::string& term, const KorString& text) {
    m_isBelowHeading = false;
    m_text += ".TP\n\\fB" + escaped(term) + "\\fR\n" + escaped(text.view()) + "\n";
}

void ManualText::example(const std::string& lines) {
    beginParagraph();
    m_text += ".nf\n.RS\n" + escaped(lines) + "\n.RE\n.fi\n";
}
