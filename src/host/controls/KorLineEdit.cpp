#include "controls/KorLineEdit.h"

#include "controls/KorAccessible.h"

#include <QKeyEvent>

#include <utility>

KorLineEdit::KorLineEdit(QWidget* parent) : QLineEdit(parent) {}

KorLineEdit::~KorLineEdit() {
    KorAccessible::forget(this);
    disconnect();
}

void KorLineEdit::commit() {
    if (!isEdited()) {
        if (std::exchange(m_refused, false))
            Q_EMIT restored();
        return;
    }
    if (!hasAcceptableInput())
        return restore();
    m_refused = false;
    m_lastTaken = m_committedText;
    m_committedText = text(); // first: a listener may ask a question, which takes the focus away
    Q_EMIT committed(m_committedText);
}

void KorLineEdit::restore() {
    m_refused = false;
    QLineEdit::setText(m_committedText);
    Q_EMIT restored();
}

void KorLineEdit::refuse() {
    m_committedText = m_lastTaken;
    m_refused = true;
}

bool KorLineEdit::isEdited() const {
    return text() != m_committedText;
}

void KorLineEdit::setText(const QString& newText) {
    m_refused = false;
    m_committedText = newText;
    QLineEdit::setText(newText);
    m_committedText = text(); // the field can shorten it
    if (!hasFocus())
        setCursorPosition(0); // a long text is read from its beginning
}

// A white field would look as if one could write into it.
void KorLineEdit::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() != QEvent::ReadOnlyChange && event->type() != QEvent::PaletteChange)
        return;
    const QColor window = palette().color(QPalette::Window);
    if (isReadOnly() == m_onWindow && (!m_onWindow || palette().color(QPalette::Base) == window))
        return;
    m_onWindow = isReadOnly();
    QPalette own;
    if (m_onWindow)
        own.setColor(QPalette::Base, window);
    setPalette(own);
}

bool KorLineEdit::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride)
        return QLineEdit::event(event);
    const auto* key = static_cast<QKeyEvent*>(event);
    // Otherwise Escape would go to the dialog's shortcut while a text is half typed.
    if (isEdited() && key->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    // Once the text counts, undo is that of the window.
    if (!isEdited() && (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo))) {
        event->ignore();
        return false;
    }
    return QLineEdit::event(event);
}

void KorLineEdit::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool escape = event->key() == Qt::Key_Escape;
    if (!enter && !(escape && isEdited()))
        return QLineEdit::keyPressEvent(event);
    event->accept();
    if (escape)
        restore();
    else
        commit();
    selectAll();
}

void KorLineEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // A menu gives the focus back, and so does another window; a field that is being hidden or destroyed
    // must not start a write.
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason && isVisible())
        commit();
}
