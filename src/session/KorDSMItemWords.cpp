#include "session/KorDSMItemWords.h"

#include "data/FreeName.h"
#include "model/KorDSMFamilies.h"
#include "operations/CurrentRows.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/StyleReads.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

using namespace KorDSMDefines;

namespace {

constexpr int kCategory = 33703;  // "UPS"
constexpr int kGroupPrompt = 233; // "Group", with its key
constexpr int kNamePrompt = 234;  // "Name", with its key

// The family of what is named: in a section new groups are.
const KorDSMFamily* namedFamily(int itemType) {
    const KorDSMSection* section = KorDSMFamilies::sectionOfType(eItemType(itemType));
    const eItemType type = section ? KorDSMFamilies::of(section->family)->group : eItemType(itemType);
    const KorDSMFamily* family = KorDSMFamilies::of(type);
    return family && family->namePrompt != 0 ? family : nullptr;
}

KorDSMNaming namingOf(const KorDSMFamily& family) {
    KorDSMNaming naming;
    const bool isNamedByTable = family.namePrompt == KorDSMFamily::kTableName;
    naming.label = isNamedByTable ? Prompts::dsm(kNamePrompt) : Prompts::ups(family.namePrompt);
    naming.title = isNamedByTable            ? KorDSMValueText::tableCaption(*findTable(family.table))
                   : family.titlePrompt != 0 ? Prompts::ups(family.titlePrompt)
                                             : naming.label;
    naming.isTaken = [table = family.table](const KorString& name) {
        return CurrentRows::find(table, name) != nullptr;
    };
    return naming;
}

// The table for the proposal can be another one than that of the names which exist.
KorString proposedName(eTableType table, const KorString& wanted,
                       const std::function<bool(const KorString&)>& isTaken) {
    KorString name = wanted;
    KorDetailTableDependencies::GetDefaultNameForRow(table, name);
    const KorString stem = nameWithoutNumber(name);
    const KorString base = stem.isEmpty() ? name : stem;
    for (std::int64_t number = 1; isTaken(name); ++number) {
        name = KorString::format("%s %d", {base, KorString::number(number)});
        KorDetailTableDependencies::GetDefaultNameForRow(table, name);
    }
    return name;
}

std::vector<KorDSMFiledNaming::Group> sortedGroups(const KorDSMFamily& family) {
    std::vector<const StructRecord*> records;
    const RowArray* rows = CurrentRows::all(family.table);
    for (int i = 0; rows && i < rows->size(); ++i)
        records.push_back(&rows->at(i));
    std::ranges::stable_sort(
        records, [&](const StructRecord* a, const StructRecord* b) { return family.isBefore(*a, *b); });
    std::vector<KorDSMFiledNaming::Group> groups;
    for (const StructRecord* record : records)
        groups.push_back({record->name, record->key});
    return groups;
}

} // namespace

KorString statusTextOf(const KorDSMDatabaseItem& item, const KorString& entryText) {
    if (isSectionType(item.type()))
        return entryText;
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    if (!family || family->statusPrompt == 0)
        return {};
    return family->statusPrompt == KorDSMFamily::kEntryText ? entryText : Prompts::ups(family->statusPrompt);
}

std::optional<KorDSMNaming> KorDSMNaming::of(int itemType, const KorString& initialName, bool proposeName) {
    const KorDSMFamily* family = namedFamily(itemType);
    if (!family)
        return std::nullopt;
    KorDSMNaming naming = namingOf(*family);
    naming.name = initialName;
    if (proposeName && (family->proposesName || naming.isTaken(initialName)))
        KorDetailTableDependencies::GetDefaultNameForRow(family->table, naming.name);
    return naming;
}

std::optional<KorDSMFiledNaming> KorDSMFiledNaming::of(int itemType, const KorString& initialName) {
    const KorDSMFamily* family = namedFamily(itemType);
    if (!family || !family->isFiled())
        return std::nullopt;
    KorDSMFiledNaming naming{namingOf(*family), {}, 0, {}};
    naming.title = naming.label;
    naming.name = proposedName(family->namedLike == kNoTable ? family->table : family->namedLike, initialName,
                               naming.isTaken);
    const KorDSMFamily& groups = *KorDSMFamilies::of(family->group);
    naming.groupLabel = groups.isCategory ? Prompts::ups(kCategory) : Prompts::dsm(kGroupPrompt);
    naming.groupPicture = iconResource(groups.icon);
    naming.groups = sortedGroups(groups);
    return naming;
}

// The children stand in the order of the columns that refer to them, of which some can be empty.
KorString roleOf(const KorDSMDatabaseItem& item) {
    const KorDSMDatabaseItem* above = item.parent();
    if (item.type() != KorDSMDefines::kPointSelection || !above || !above->record())
        return {};
    const TableSchema& table = *findTable(above->tableType());
    const auto& children = above->children();
    int place = 0;
    for (const Column& column : table.columns) {
        if (!column.isReference() || column.target != item.tableType() || place >= children.length() ||
            column.integerIn(above->record()) != children[place]->recordKey())
            continue;
        if (children[place++] == &item)
            return KorDSMValueText::columnCaption(table, column);
    }
    return {};
}
