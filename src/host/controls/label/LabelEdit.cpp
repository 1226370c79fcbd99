#include "controls/label/LabelEdit.h"

#include "controls/KorQt.h"
#include "controls/KorReadable.h"
#include "controls/label/DrawingColors.h"

#include <QAbstractTextDocumentLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>

namespace {

const QString kMimeType = QStringLiteral("application/x-detailstyles-label");

// No real style: against it every attribute is written out, so that a copy looks the same in a field with
// other defaults.
const LabelStyle kNoDefaults{KorString(), 0, -1, false, false, false};

} // namespace

LabelEdit::LabelEdit(QWidget* parent) : QTextEdit(parent), m_token(new LabelToken(this)) {
    setTabChangesFocus(true);
    // A title is never wrapped in the drawing: a wrapped line would look like a line break.
    setLineWrapMode(NoWrap);
    document()->setDocumentMargin(8);
    document()->documentLayout()->registerHandler(LabelDocument::kToken, m_token);
}

void LabelEdit::setTexts(const LabelDesignerTexts& texts) {
    m_texts = texts;
    m_token->setTexts(texts);
    setAccessibleName(texts.field);
    setPlaceholderText(texts.empty);
}

void LabelEdit::setLook(const LabelLook& look, bool textOnly) {
    m_look = look;
    m_textOnly = textOnly;
    const QColor foreground = DrawingColors::foreground(look.background);
    QPalette colors;
    colors.setColor(QPalette::Base, look.background);
    colors.setColor(QPalette::Text, foreground);
    colors.setColor(QPalette::PlaceholderText, KorReadable::mixed(look.background, foreground, 0.5));
    setPalette(colors);
}

void LabelEdit::setEditable(bool editable) {
    setTextInteractionFlags(editable ? Qt::TextEditorInteraction
                                     : Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void LabelEdit::fill(const LabelRuns& runs) {
    LabelDocument::fill(*document(), runs, m_look);
    moveCursor(QTextCursor::Start);
}

void LabelEdit::insertVariable(const QString& name) {
    QTextCursor cursor = textCursor();
    LabelDocument::insert(cursor, {{LabelRun::kVariable, fromQt(name), currentStyle()}}, m_look);
    setTextCursor(cursor);
    ensureCursorVisible();
}

QString LabelEdit::words(const LabelRuns& runs) const {
    QString text;
    for (const LabelRun& run : runs) {
        const QString part = toQt(run.text);
        text += run.kind == LabelRun::kLineBreak  ? QStringLiteral("\n")
                : run.kind == LabelRun::kVariable ? m_texts.variable(part)
                                                  : part;
    }
    return text;
}

QMimeData* LabelEdit::createMimeDataFromSelection() const {
    const QTextCursor cursor = textCursor();
    const LabelRuns selected =
        LabelDocument::runs(*document(), cursor.selectionStart(), cursor.selectionEnd(), m_look.defaults);
    auto* copy = new QMimeData;
    copy->setData(kMimeType, QByteArray(LabelFormat::write(selected, kNoDefaults).c_str()));
    copy->setText(words(selected));
    return copy;
}

bool LabelEdit::isLabel(const QMimeData* source) const {
    return !m_textOnly && source->hasFormat(kMimeType);
}

bool LabelEdit::canInsertFromMimeData(const QMimeData* source) const {
    return isLabel(source) || source->hasText();
}

void LabelEdit::insertFromMimeData(const QMimeData* source) {
    if (isReadOnly() || !canInsertFromMimeData(source))
        return;
    LabelRuns runs;
    if (isLabel(source))
        runs = LabelFormat::parse(KorString(source->data(kMimeType).toStdString()), kNoDefaults).runs;
    else
        LabelFormat::appendText(runs, fromQt(source->text()).view(), currentStyle());
    QTextCursor cursor = textCursor();
    LabelDocument::insert(cursor, runs, m_look);
    setTextCursor(cursor);
    ensureCursorVisible();
}

void LabelEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier)
        Q_EMIT variableMenuRequested(viewport()->mapToGlobal(cursorRect().bottomLeft()));
    else
        QTextEdit::keyPressEvent(event);
}

void LabelEdit::mouseReleaseEvent(QMouseEvent* event) {
    QTextEdit::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && !textCursor().hasSelection())
        selectTokenAt(event->position().toPoint());
}

// A click into a variable selects it: there is no place inside of it where a cursor could stand.
void LabelEdit::selectTokenAt(const QPoint& point) {
    const QPointF inDocument = point + QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
    if (LabelDocument::variableOf(document()->documentLayout()->formatAt(inDocument)).isEmpty())
        return;
    QTextCursor cursor = cursorForPosition(point);
    const bool leftHalf = cursorRect(cursor).center().x() < point.x();
    cursor.movePosition(leftHalf ? QTextCursor::NextCharacter : QTextCursor::PreviousCharacter,
                        QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

bool LabelEdit::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QTextEdit::viewportEvent(event);
    Q_EMIT tooltipWanted(static_cast<QHelpEvent*>(event)->globalPos());
    return true;
}
