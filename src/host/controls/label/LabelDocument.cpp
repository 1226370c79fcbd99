#include "controls/label/LabelDocument.h"

#include "controls/KorQt.h"
#include "controls/label/DrawingColors.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

enum eProperty { kSize = QTextFormat::UserProperty + 1, kColor, kVariable };

// Smaller text could not be read, larger text would fill the field with one letter.
constexpr double kSmallestPixels = 10;
constexpr double kLargestPixels = 160;

QTextCharFormat tokenFormat(const LabelRun& run, const LabelLook& look) {
    QTextCharFormat format = LabelDocument::charFormat(run.style, look);
    format.setObjectType(LabelDocument::kToken);
    format.setProperty(kVariable, toQt(run.text));
    format.setVerticalAlignment(QTextCharFormat::AlignBottom);
    return format;
}

void insertRun(QTextCursor& cursor, const LabelRun& run, const LabelLook& look) {
    if (run.kind == LabelRun::kLineBreak)
        cursor.insertBlock(QTextBlockFormat(), LabelDocument::charFormat(run.style, look));
    else if (run.kind == LabelRun::kVariable)
        cursor.insertText(QString(QChar::ObjectReplacementCharacter), tokenFormat(run, look));
    else
        cursor.insertText(toQt(run.text).remove(QChar::ObjectReplacementCharacter),
                          LabelDocument::charFormat(run.style, look));
}

// A fragment in one format. Neighbouring variables of one name share a fragment, one character each.
void readFragment(LabelRuns& runs, QString text, const QTextCharFormat& format, const LabelStyle& style) {
    const QString variable = LabelDocument::variableOf(format);
    if (!variable.isEmpty()) {
        const LabelRun token{LabelRun::kVariable, fromQt(variable), style};
        runs.insert(runs.end(), static_cast<std::size_t>(text.size()), token);
        return;
    }
    text.remove(QChar::ObjectReplacementCharacter).replace(QChar::LineSeparator, '\n');
    LabelFormat::appendText(runs, fromQt(text).view(), style);
}

void readBlock(LabelRuns& runs, const QTextBlock& block, int from, int to, const LabelStyle& defaults) {
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const int begin = std::max(from, fragment.position());
        const int end = std::min(to, fragment.position() + fragment.length());
        const QTextCharFormat format = fragment.charFormat();
        if (begin < end)
            readFragment(runs, fragment.text().mid(begin - fragment.position(), end - begin), format,
                         LabelDocument::styleOf(format, defaults));
    }
}

} // namespace

namespace LabelDocument {

void setFont(QTextCharFormat& format, const KorString& family) {
    format.setFontFamilies({toQt(family)});
}

void setSize(QTextCharFormat& format, double size, const LabelLook& look) {
    format.setProperty(kSize, size);
    const double pixels = std::clamp(size * look.pixelsPerMillimetre, kSmallestPixels, kLargestPixels);
    format.setProperty(QTextFormat::FontPixelSize, qRound(pixels));
}

void setColor(QTextCharFormat& format, int number, const LabelLook& look) {
    format.setProperty(kColor, number);
    format.setForeground(DrawingColors::readable(number, look.background));
}

void setBold(QTextCharFormat& format, bool on) {
    format.setFontWeight(on ? QFont::Bold : QFont::Normal);
}

QTextCharFormat charFormat(const LabelStyle& style, const LabelLook& look) {
    QTextCharFormat format;
    setFont(format, style.font.isEmpty() ? look.defaults.font : style.font);
    setSize(format, style.size, look);
    setColor(format, style.color, look);
    setBold(format, style.bold);
    format.setFontItalic(style.italic);
    format.setFontUnderline(style.underline);
    return format;
}

LabelStyle styleOf(const QTextCharFormat& format, const LabelStyle& defaults) {
    LabelStyle style = defaults;
    const QStringList families = format.fontFamilies().toStringList();
    if (!families.isEmpty())
        style.font = fromQt(families.first());
    if (format.hasProperty(kSize))
        style.size = format.doubleProperty(kSize);
    if (format.hasProperty(kColor))
        style.color = format.intProperty(kColor);
    if (format.hasProperty(QTextFormat::FontWeight))
        style.bold = format.fontWeight() > QFont::Normal;
    if (format.hasProperty(QTextFormat::FontItalic))
        style.italic = format.fontItalic();
    if (format.hasProperty(QTextFormat::TextUnderlineStyle))
        style.underline = format.fontUnderline();
    return style;
}

QString variableOf(const QTextFormat& format) {
    return format.objectType() == kToken ? format.stringProperty(kVariable) : QString();
}

void insert(QTextCursor& cursor, const LabelRuns& runs, const LabelLook& look) {
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    for (const LabelRun& run : runs)
        insertRun(cursor, run, look);
    cursor.endEditBlock();
}

void fill(QTextDocument& document, const LabelRuns& runs, const LabelLook& look) {
    document.setUndoRedoEnabled(false);
    document.clear();
    QTextCursor cursor(&document);
    cursor.setBlockCharFormat(charFormat(runs.empty() ? look.defaults : runs.front().style, look));
    insert(cursor, runs, look);
    document.setUndoRedoEnabled(true);
}

LabelRuns runs(const QTextDocument& document, int from, int to, const LabelStyle& defaults) {
    LabelRuns found;
    for (QTextBlock block = document.findBlock(from); block.isValid() && block.position() <= to;
         block = block.next()) {
        if (block.position() > from)
            found.push_back({LabelRun::kLineBreak, KorString(), styleOf(block.charFormat(), defaults)});
        readBlock(found, block, from, to, defaults);
    }
    return found;
}

LabelRuns runs(const QTextDocument& document, const LabelStyle& defaults) {
    return runs(document, 0, document.characterCount() - 1, defaults);
}

} // namespace LabelDocument
