#include "dialogs/KorDSMDialogWhereUsed.h"

#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "dialogs/UsageList.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <QEvent>

namespace {

constexpr int kTemplate = 2350;
constexpr int kList = 2351;
constexpr int kNothingLabel = 2352;

constexpr int kTitle = 249;   // "Where "%s" is used"
constexpr int kNothing = 250; // "Nothing uses it."
constexpr int kClose = 255;

} // namespace

KorDSMDialogWhereUsed::KorDSMDialogWhereUsed(const KorString& name, SourceId source, RowRef row,
                                             QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_source(source), m_row(row),
      m_users(new UsageList(KorControls::find<KorListCtrl>(this, kList), {}, this)) {
    setWindowTitle(toQt(KorString::format(Prompts::dsm(kTitle), {KorDSMValueText::shortName(name)})));
    setCaption(2, kClose, "DSM");
    setCaption(kNothingLabel, kNothing, "DSM");
    connect(m_users, &UsageList::chosen, this, &KorDSMDialogWhereUsed::usageChosen);
    look();
    KorControls::find(this, kList)->setFocus();
}

void KorDSMDialogWhereUsed::look() {
    m_users->setUsages(KorDSMWhereUsed::usagesOf(m_source, m_row));
    KorControls::find(this, kNothingLabel)->setVisible(m_users->count() == 0);
}

void KorDSMDialogWhereUsed::changeEvent(QEvent* event) {
    KorDSMDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        look();
}
