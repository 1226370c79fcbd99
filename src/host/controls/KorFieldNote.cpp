#include "controls/KorFieldNote.h"

#include "controls/KorStyle.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace {

class NoteLabel : public QLabel {
public:
    NoteLabel() {
        setWordWrap(true);
        setTextFormat(Qt::PlainText);
        setTextInteractionFlags(Qt::TextSelectableByMouse);
        KorStyle::setNoteColor(*this, true);
    }
};

/// Holds a control and its note.
class NoteBox : public QWidget {
public:
    explicit NoteBox(QWidget* parent) : QWidget(parent) {
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(2);
    }
    void take(QWidget* control) {
        setSizePolicy(control->sizePolicy());
        // Buttons in one row stay on one line when one of them gets a note.
        const Qt::Alignment alignment = control->maximumWidth() < QWIDGETSIZE_MAX ? Qt::AlignLeft
                                        : qobject_cast<QAbstractButton*>(control) ? Qt::AlignTop
                                                                                  : Qt::Alignment();
        const bool hidden = control->testAttribute(Qt::WA_WState_ExplicitShowHide) && control->isHidden();
        static_cast<QVBoxLayout*>(layout())->addWidget(control, 0, alignment);
        setHidden(hidden);
        control->installEventFilter(this);
    }
    void setNote(const QString& text) {
        if (!m_note)
            layout()->addWidget(m_note = new NoteLabel);
        m_note->setText(text);
        m_note->setVisible(!text.isEmpty());
    }

protected:
    // A hidden control leaves no gap.
    bool eventFilter(QObject* control, QEvent* event) override {
        if (event->type() == QEvent::HideToParent || event->type() == QEvent::ShowToParent)
            setHidden(event->type() == QEvent::HideToParent);
        return QWidget::eventFilter(control, event);
    }

private:
    NoteLabel* m_note = nullptr;
};

NoteBox* boxOf(const QWidget* control) {
    return dynamic_cast<NoteBox*>(control->parentWidget());
}

constexpr char kNote[] = "fieldNote";

} // namespace

void KorFieldNote::prepare(QWidget* control) {
    QWidget* parent = control->parentWidget();
    if (boxOf(control) || !parent || !parent->layout())
        return;
    auto* box = new NoteBox(parent);
    QLayoutItem* place = parent->layout()->replaceWidget(control, box);
    if (place)
        box->take(control);
    else
        delete box;
    delete place;
}

void KorFieldNote::show(QWidget* control, const QString& text) {
    if (textOf(control) == text)
        return;
    control->setProperty(kNote, text);
    control->setAccessibleDescription(text);
    if (NoteBox* box = boxOf(control))
        box->setNote(text);
}

QString KorFieldNote::textOf(const QWidget* control) {
    return control->property(kNote).toString();
}

QWidget* KorFieldNote::first(const QWidget* root) {
    const auto controls = root->findChildren<QWidget*>();
    const auto found =
        std::ranges::find_if(controls, [](const QWidget* control) { return !textOf(control).isEmpty(); });
    return found == controls.end() ? nullptr : *found;
}

void KorFieldNote::clear(QWidget* root) {
    for (QWidget* control : root->findChildren<QWidget*>())
        show(control, {});
}
