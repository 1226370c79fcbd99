#include "dialogs/KorDSMDialogNewItemWithGroup.h"

#include "base/KorAssert.h"
#include "controls/KorComboBitmap.h"
#include "controls/KorControls.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "data/FreeName.h"
#include "dialogs/NewItemKinds.h"
#include "dialogs/NewNameCheck.h"
#include "operations/KorDetailTableDependencies.h"
#include "services/Prompts.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <set>

namespace {

constexpr int kTemplate = 2308;
constexpr int kName = 2304;
constexpr int kNameLabel = 2305;
constexpr int kGroups = 2306;
constexpr int kGroupLabel = 2307;
constexpr int kReason = 2309;

constexpr int kNamePrompt = 234;  // "Name", with its key
constexpr int kGroupPrompt = 233; // "Group", with its key

constexpr int kGroupIcon = 1162;
constexpr int kCategoryIcon = 1067;

// The table for the proposal can be another one than that of the names which exist.
KorString proposedName(eTableType table, const KorString& wanted, const KorArray<KorString>& existing) {
    KorString name = wanted;
    KorDetailTableDependencies::GetDefaultNameForRow(table, name);
    const std::set<KorString> taken(existing.begin(), existing.end());
    const KorString stem = nameWithoutNumber(name);
    const KorString base = stem.isEmpty() ? name : stem;
    for (std::int64_t number = 1; taken.contains(name); ++number) {
        name = KorString::format("%s %d", {base, KorString::number(number)});
        KorDetailTableDependencies::GetDefaultNameForRow(table, name);
    }
    return name;
}

} // namespace

KorDSMDialogNewItemWithGroup::KorDSMDialogNewItemWithGroup(int itemType, const KorString& name,
                                                           const KorString& group, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_itemType(itemType) {
    OnInitDialog(name, group);
}

void KorDSMDialogNewItemWithGroup::OnInitDialog(const KorString& name, const KorString& group) {
    auto* edit = KorControls::find<QLineEdit>(this, kName);
    m_groups = KorControls::find<KorComboBitmap>(this, kGroups);
    m_check = new NewNameCheck(edit, KorControls::find<QLabel>(this, kReason),
                               KorControls::find<QAbstractButton>(this, 1), this);
    setCaption(1, 33740);
    setCaption(2, 33741);
    const NewItemKind* kind = findNewItemKind(m_itemType);
    const NewItemGrouping* grouping = findNewItemGrouping(m_itemType);
    if (!KorAssert::check(kind && grouping, "false"))
        return;
    setTexts();
    fillGroups(group);
    KorArray<KorString> existing;
    kind->existingNames(existing);
    edit->setText(toQt(proposedName(grouping->defaultNameTable, name, existing)));
    m_check->setExistingNames(std::move(existing));
    edit->selectAll();
    m_check->check();
}

void KorDSMDialogNewItemWithGroup::setTexts() {
    setWindowTitle(toQt(Prompts::ups(findNewItemKind(m_itemType)->labelPrompt)));
    setCaption(kNameLabel, kNamePrompt, "DSM");
    if (findNewItemGrouping(m_itemType)->byCategory)
        setCaption(kGroupLabel, 33703);
    else
        setCaption(kGroupLabel, kGroupPrompt, "DSM");
}

void KorDSMDialogNewItemWithGroup::fillGroups(const KorString& chosen) {
    const NewItemGrouping& grouping = *findNewItemGrouping(m_itemType);
    KorArray<NewItemGroup> groups;
    grouping.groups(groups);
    const QIcon icon = KorPictures::icon(grouping.byCategory ? kCategoryIcon : kGroupIcon);
    for (const NewItemGroup& group : groups)
        m_groups->addItem(icon, toQt(group.name), group.key);
    m_groups->setCurrentIndex(
        groups.isEmpty()
            ? -1
            : std::max(0, m_groups->findText(toQt(chosen), Qt::MatchExactly | Qt::MatchCaseSensitive)));
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
