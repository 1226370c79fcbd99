#include "dialogs/NewNameCheck.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr int kTaken = 231;      // "There is one of this name already."
constexpr int kNameNeeded = 232; // "A name is needed."

} // namespace

NewNameCheck::NewNameCheck(QLineEdit* edit, QLabel* reason, QAbstractButton* ok, QObject* parent)
    : QObject(parent), m_edit(edit), m_reason(reason), m_ok(ok) {
    connect(edit, &QLineEdit::textChanged, this, &NewNameCheck::check);
}

KorString NewNameCheck::name() const {
    return fromQt(m_edit->text().trimmed());
}

bool NewNameCheck::isTaken(const KorString& name) const {
    return !name.isEmpty() && m_isTaken(name);
}

void NewNameCheck::check() {
    const KorString typed = name();
    const bool taken = isTaken(typed);
    if (m_ok)
        m_ok->setEnabled(!taken);
    QString reason;
    if (taken)
        reason = toQt(Prompts::dsm(kTaken));
    else if (typed.isEmpty())
        reason = toQt(Prompts::dsm(kNameNeeded));
    if (m_reason)
        m_reason->setText(reason);
    m_edit->setAccessibleDescription(reason);
}
