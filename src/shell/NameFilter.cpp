#include "shell/NameFilter.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "shell/SectionViews.h"
#include "shell/WhenFree.h"

#include <QEvent>
#include <QLineEdit>

namespace {

constexpr int kPlaceholder = 264;
constexpr int kRest = 150; // ms; whoever only passes by with Tab does not wait for the names to be collected

} // namespace

NameFilter::NameFilter(QLineEdit& field, SectionViews& sections) : m_field(field), m_sections(sections) {
    m_field.setPlaceholderText(toQt(Prompts::dsm(kPlaceholder)));
    m_field.setAccessibleName(m_field.placeholderText());
    m_field.installEventFilter(this);
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRest);
    connect(&m_rest, &QTimer::timeout, this, waiting(this, &NameFilter::prepare));
    connect(&m_field, &QLineEdit::textChanged, this, waiting(this, &NameFilter::apply));
}

bool NameFilter::isSet() const {
    return !m_field.text().isEmpty();
}

KorString NameFilter::text() const {
    return fromQt(m_field.text());
}

bool NameFilter::hasFocus() const {
    return m_field.hasFocus();
}

void NameFilter::focus() {
    m_field.setFocus(Qt::ShortcutFocusReason);
}

bool NameFilter::clear() {
    if (!isSet())
        return false;
    m_field.clear();
    apply(); // at once, also where others have to wait
    return true;
}

int NameFilter::cursor() const {
    return m_field.cursorPosition();
}

void NameFilter::putBack(const KorString& typed, int cursor) {
    m_field.setText(toQt(typed));
    m_field.setCursorPosition(cursor);
}

void NameFilter::refresh() {
    m_sections.namesChanged();
    if (isSet())
        apply();
}

KorTreeHandle NameFilter::firstMatch() {
    return isSet() ? m_sections.currentTree().firstMatch() : nullptr;
}

bool NameFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        m_rest.start();
    else if (event->type() == QEvent::FocusOut)
        m_rest.stop();
    return QObject::eventFilter(watched, event);
}

void NameFilter::prepare() {
    const SectionViews::Quiet quiet(m_sections);
    m_sections.currentTree().prepareFilter();
}

void NameFilter::apply() {
    bool found = false;
    {
        const SectionViews::Quiet quiet(m_sections);
        found = m_sections.currentTree().setFilter(text());
    }
    Q_EMIT applied(found);
}
