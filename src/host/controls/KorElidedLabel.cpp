#include "controls/KorElidedLabel.h"

#include <QEvent>
#include <QLayout>
#include <QResizeEvent>

#include <algorithm>

namespace {

constexpr int kLeastLetters = 12;

QString firstLine(const QString& text) {
    return text.section(u'\n', 0, 0);
}

} // namespace

KorElidedLabel::KorElidedLabel(Qt::TextElideMode mode, QWidget* parent) : QLabel(parent), m_mode(mode) {
    setTextFormat(Qt::PlainText);
}

void KorElidedLabel::setWhole(const QString& text, const QString& more) {
    const bool isOther = text != m_whole;
    m_whole = text;
    setToolTip(more.isEmpty() ? text : text + u'\n' + more);
    setAccessibleName(text);
    setAccessibleDescription(more);
    if (isOther)
        takeRoom();
    fit();
}

// At once, so that what has room is never seen cut.
void KorElidedLabel::takeRoom() {
    updateGeometry();
    if (parentWidget() && parentWidget()->layout())
        parentWidget()->layout()->activate();
}

void KorElidedLabel::fit() {
    const QMargins around = contentsMargins();
    const int room = width() - around.left() - around.right() - 2 * margin();
    setText(fontMetrics().elidedText(firstLine(m_whole), m_mode, room));
}

QSize KorElidedLabel::sizeFor(int textWidth) const {
    const QMargins around = contentsMargins();
    return {textWidth + around.left() + around.right() + 2 * margin(), QLabel::sizeHint().height()};
}

QSize KorElidedLabel::sizeHint() const {
    return sizeFor(fontMetrics().horizontalAdvance(firstLine(m_whole)) + 1);
}

QSize KorElidedLabel::minimumSizeHint() const {
    return sizeFor(std::min(fontMetrics().horizontalAdvance(firstLine(m_whole)) + 1,
                            kLeastLetters * fontMetrics().averageCharWidth()));
}

void KorElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fit();
}

void KorElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}
