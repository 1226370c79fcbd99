#include "controls/KorTabPage.h"

#include "base/KorAssert.h"
#include "controls/KorAccessible.h"
#include "controls/KorLineEdit.h"
#include "controls/KorReadable.h"
#include "controls/KorTemplates.h"

#include <QApplication>
#include <QKeyEvent>

KorTabPage::KorTabPage(QWidget* parent, int templateId, const KorString& title)
    : QWidget(parent), m_title(title), m_templateId(templateId) {
    hide();
    KorReadable::keep(this);
}

KorTabPage::~KorTabPage() {
    // The derived page is gone; losing the focus now must not call its handlers.
    for (QWidget* child : findChildren<QWidget*>())
        KorAccessible::forget(child);
    for (QObject* child : findChildren<QObject*>())
        child->blockSignals(true);
}

void KorTabPage::setTitle(const KorString& title) {
    m_title = title;
    Q_EMIT captionChanged();
}

void KorTabPage::setModified(bool modified) {
    if (m_modified == modified)
        return;
    m_modified = modified;
    Q_EMIT captionChanged();
}

void KorTabPage::create() {
    if (m_created)
        return;
    m_created = true;
    KorAssert::check(KorTemplates::setUp(m_templateId, this), "the page has a template");
    OnInitDialog();
}

void KorTabPage::enter() {
    if (m_active)
        return;
    m_active = true;
    qApp->installEventFilter(this);
    OnShow(1);
    OnActivate(1);
}

void KorTabPage::leave() {
    if (!m_active)
        return;
    OnShow(0);
    OnActivate(0);
    qApp->removeEventFilter(this);
    m_active = false;
}

bool KorTabPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    // Only at the first receiver: a key that nobody takes comes by again for each widget above.
    const QWidget* focus = QApplication::focusWidget();
    return focus && watched == focus && isAncestorOf(focus) &&
           PreTranslateMessage(static_cast<QKeyEvent*>(event));
}
