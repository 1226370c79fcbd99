#include "dialogs/KorDSMDialogNewItemWithGroup.h"

#include "base/KorAssert.h"
#include "controls/KorComboBitmap.h"
#include "controls/KorControls.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "dialogs/NewNameCheck.h"
#include "session/KorDSMItemWords.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

namespace {

constexpr int kTemplate = 2308;
constexpr int kName = 2304;
constexpr int kNameLabel = 2305;
constexpr int kGroups = 2306;
constexpr int kGroupLabel = 2307;
constexpr int kReason = 2309;

constexpr int kNamePrompt = 234; // "Name", with its key

} // namespace

KorDSMDialogNewItemWithGroup::KorDSMDialogNewItemWithGroup(int itemType, const KorString& name,
                                                           const KorString& group, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_groups(KorControls::find<KorComboBitmap>(this, kGroups)) {
    auto* edit = KorControls::find<QLineEdit>(this, kName);
    m_check = new NewNameCheck(edit, KorControls::find<QLabel>(this, kReason),
                               KorControls::find<QAbstractButton>(this, 1), this);
    setCaption(1, 33740);
    setCaption(2, 33741);
    const std::optional<KorDSMFiledNaming> naming = KorDSMFiledNaming::of(itemType, name);
    if (!KorAssert::check(naming.has_value(), "false"))
        return;
    setWindowTitle(toQt(naming->title));
    setCaption(kNameLabel, kNamePrompt, "DSM");
    setCaption(kGroupLabel, naming->groupLabel);
    fillGroups(*naming, group);
    edit->setText(toQt(naming->name));
    m_check->setTaken(naming->isTaken);
    edit->selectAll();
    m_check->check();
}

void KorDSMDialogNewItemWithGroup::fillGroups(const KorDSMFiledNaming& naming, const KorString& chosen) {
    const QIcon icon = KorPictures::icon(naming.groupPicture);
    for (const KorDSMFiledNaming::Group& group : naming.groups)
        m_groups->addItem(icon, toQt(group.name), group.key);
    const int place = m_groups->findText(toQt(chosen), Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_groups->setCurrentIndex(naming.groups.empty() ? -1 : std::max(0, place));
}

KorString KorDSMDialogNewItemWithGroup::name() const {
    return m_check->name();
}

KorString KorDSMDialogNewItemWithGroup::groupName() const {
    return fromQt(m_groups->currentText());
}

int KorDSMDialogNewItemWithGroup::groupKey() const {
    return m_groups->selectedValue(0);
}
