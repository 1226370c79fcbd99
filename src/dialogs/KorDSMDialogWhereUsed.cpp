#include "dialogs/KorDSMDialogWhereUsed.h"

#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "dialogs/UsageList.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

namespace {

constexpr int kTemplate = 2350;
constexpr int kList = 2351;
constexpr int kNothingLabel = 2352;

constexpr int kTitle = 249;   // "Where "%s" is used"
constexpr int kNothing = 250; // "Nothing uses it."
constexpr int kClose = 255;

} // namespace

KorDSMDialogWhereUsed::KorDSMDialogWhereUsed(const KorString& name, std::vector<KorDSMUsage> usages,
                                             QWidget* parent)
    : KorDSMDialog(kTemplate, parent) {
    setWindowTitle(toQt(KorString::format(Prompts::dsm(kTitle), {KorDSMValueText::shortName(name)})));
    setCaption(2, kClose, "DSM");
    setCaption(kNothingLabel, kNothing, "DSM");
    KorControls::find(this, kNothingLabel)->setVisible(usages.empty());
    auto* list = KorControls::find<KorListCtrl>(this, kList);
    connect(new UsageList(list, std::move(usages), this), &UsageList::chosen, this,
            &KorDSMDialogWhereUsed::usageChosen);
    list->setFocus();
}
