#include "dialogs/KorDSMDialogWhereUsed.h"

#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "dialogs/UsageList.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <QEvent>
#include <QLabel>
#include <QPointer>

namespace {

constexpr int kTemplate = 2350;
constexpr int kList = 2351;
constexpr int kNothingLabel = 2352;

constexpr int kTitle = 249;   // "Where "%s" is used"
constexpr int kNothing = 250; // "Nothing uses it."
constexpr int kClose = 255;
constexpr int kMore = 490; // "More records may use it: %s"

} // namespace

KorDSMDialogWhereUsed::KorDSMDialogWhereUsed(const KorString& name, SourceId source, RowRef row,
                                             QWidget* parent, eUsers users)
    : KorDSMDialog(kTemplate, parent), m_source(source), m_row(row), m_wanted(users),
      m_users(new UsageList(KorControls::find<KorListCtrl>(this, kList), {}, this)) {
    setWindowTitle(toQt(KorString::format(Prompts::dsm(kTitle), {KorDSMValueText::shortName(name)})));
    setCaption(2, kClose, "DSM");
    connect(m_users, &UsageList::chosen, this, &KorDSMDialogWhereUsed::usageChosen);
    look();
    KorControls::find(this, kList)->setFocus();
}

void KorDSMDialogWhereUsed::look() {
    m_users->setUsages(m_wanted == eUsers::kOfRecordAlone ? KorDSMWhereUsed::usagesHere(m_source, m_row)
                                                          : KorDSMWhereUsed::usagesOf(m_source, m_row),
                       m_source);
    auto* label = KorControls::find<QLabel>(this, kNothingLabel);
    const KorString& reason = m_users->whyIncomplete();
    label->setText(
        toQt(reason.isEmpty() ? Prompts::dsm(kNothing) : KorString::format(Prompts::dsm(kMore), {reason})));
    label->setWordWrap(!reason.isEmpty());
    label->setVisible(m_users->count() == 0 || !reason.isEmpty());
}

void KorDSMDialogWhereUsed::changeEvent(QEvent* event) {
    KorDSMDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        KorDSMWhereUsed::whenSettled([dialog = QPointer<KorDSMDialogWhereUsed>(this)] {
            if (dialog)
                dialog->look();
        });
}
