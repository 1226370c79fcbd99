#include "session/KorDSMWhereUsed.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMDependencies.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMSectionLoader.h"
#include "operations/KorDSNManager.h"
#include "services/AddInManager.h"
#include "services/Prompts.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMValueText.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace KorDSMWhereUsed {

KorString sourceName(SourceId source) {
    if (source.dsn == KorDSNDefinitions::kStandard)
        return Prompts::ups(21021);
    if (source.dsn == KorDSNDefinitions::kUser)
        return Prompts::ups(21022);
    const AddInManagerInterface& manager = AddInManagerInterface::getInstance();
    KorArray<KorAddInId> addIns;
    manager.getInstalledAddIns(addIns);
    const int number = source.index - KorDSNDefinitions::kFirstAddIn;
    if (!addIns.isValid(number))
        return KorString::number(number);
    const KorAddInInfo info = manager.getInstalledCountryAddInInfo(addIns[number]);
    return info.isValid() ? info.name : addIns[number].id;
}

namespace {

constexpr int kSeveralTimes = 1468; // "%s, %s times"

std::vector<KorDSMUsage> usagesBy(const std::vector<RowUser>& users) {
    std::vector<KorDSMUsage> usages;
    for (const RowUser& user : users) {
        // The column can be one of a part: its caption is that of the part's table.
        KorString as = KorDSMValueText::columnCaption(*user.columnTable, *user.column);
        if (user.times > 1)
            as = KorString::format(Prompts::dsm(kSeveralTimes), {as, KorString::number(user.times)});
        usages.push_back({user.source, user.row, sourceName(user.source),
                          KorDSMValueText::tableCaption(*user.table), user.name, as});
    }
    return usages;
}

} // namespace

std::vector<KorDSMUsage> usagesOf(SourceId source, RowRef row) {
    return usagesBy(usersInAllSources(StyleDatabases::current(), source, row));
}

std::vector<KorDSMUsage> usagesHere(SourceId source, RowRef row) {
    return usagesBy(usersInItsSource(StyleDatabases::current(), source, row));
}

std::vector<KorDSMUsage> usagesUpToSharing(SourceId source, RowRef row) {
    std::vector<KorDSMUsage> usages;
    std::set<RowRef> seen;
    std::set<std::pair<RowRef, std::string>> known; // thousands may use one record
    while (seen.insert(row).second) {
        std::set<RowRef> own;
        for (KorDSMUsage& user : usagesHere(source, row)) {
            own.insert(user.row);
            if (known.emplace(user.row, user.as.toStdString()).second)
                usages.push_back(std::move(user));
        }
        if (own.size() != 1)
            break;
        row = *own.begin();
    }
    return usages;
}

std::vector<KorDSMUsage> usagesOf(const KorDSMDatabaseItem& item) {
    if (!item.record())
        return {};
    return usagesOf(KorDSMItemSource::sourceOf(&item), {item.tableType(), item.recordKey()});
}

void whenSettled(std::function<void()> look) {
    KorDSMBusy::whenFree(std::move(look));
}

KorString whyIncomplete() {
    KorString reasons;
    StyleDatabases& databases = StyleDatabases::current();
    for (const SourceId id : databases.sources())
        if (const Result<> whole = databases.source(id)->complete(); !whole)
            reasons = reasons + (reasons.isEmpty() ? "" : " ") + whole.error;
    return reasons;
}

KorDsmAddInContentItem* contentOf(KorDSMDataStructure& structure, SourceId source, eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    const KorDSMSection* section = family ? KorDSMFamilies::sectionOf(*family) : nullptr;
    return section ? KorDSMItemPath::findAddIn(*structure.getSection(section->section), source) : nullptr;
}

namespace {

bool shows(const KorDSMDatabaseItem& item, RowRef row) {
    return item.record() && item.tableType() == row.table && item.recordKey() == row.key;
}

KorDSMDatabaseItem* childThatShows(const KorDSMDatabaseItem& parent, RowRef row) {
    for (KorDSMDatabaseItem* child : parent.children())
        if (shows(*child, row))
            return child;
    return nullptr;
}

// Among the groups below the add-in and what is filed under them.
KorDSMDatabaseItem* findFiled(const KorDsmAddInContentItem& addIn, RowRef row) {
    if (KorDSMDatabaseItem* group = childThatShows(addIn, row))
        return group;
    for (KorDSMDatabaseItem* group : addIn.children())
        if (KorDSMDatabaseItem* item = childThatShows(*group, row))
            return item;
    return nullptr;
}

bool hasItems(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->make;
}

// An entry of a view dimensioning has no item of its own: its dimension requests hang on the whole.
RowRef itemRow(StyleSource& source, RowRef row) {
    if (row.table != kTableDimStrategyItem)
        return row;
    const auto* item =
        static_cast<const StructDetViewDimStrategyItem*>(source.table(row.table).find(KorOdbcKey(row.key)));
    return {kTableViewDimStrategy, item->strategyKey};
}

// The rows whose items can have one for `row` among their children: its whole and its users. A row that
// is shown as a part itself has its own item, so its whole does not stand for it.
std::vector<RowRef> rowsAbove(StyleSource& source, RowRef row) {
    std::vector<RowRef> above;
    const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
    for (const Column& column : findTable(row.table)->columns)
        if (record && (column.isReference()) &&
            (column.role == eReferenceRole::kPartOf || column.role == eReferenceRole::kIdentifies))
            above.push_back({column.target, column.integerIn(record)});
    for (const Referrer& referrer : source.referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kUses)
            above.push_back(itemRow(source, {referrer.table->type, referrer.key}));
    return above;
}

// The row, or the rows nearest above it, that have items of their own, until one of them is taken.
template <typename Take>
void forEachEditedRow(StyleSource& source, RowRef row, Take take) {
    std::set<RowRef> known;
    for (std::vector<RowRef> level{row}; !level.empty();) {
        std::vector<RowRef> above;
        for (const RowRef candidate : level) {
            const bool isShown = hasItems(candidate.table);
            if (isShown && take(candidate))
                return;
            if (!isShown && known.insert(candidate).second)
                std::ranges::copy(rowsAbove(source, candidate), std::back_inserter(above));
        }
        level = std::move(above);
    }
}

// What stands nearest to the top comes first.
KorDSMDatabaseItem* nearestBelow(KorDSMDatabaseItem& top, RowRef row) {
    constexpr std::size_t kMost = 5000; // records that use each other in a circle have no end
    std::vector<KorDSMDatabaseItem*> items = {&top};
    for (std::size_t i = 0; i < items.size() && items.size() < kMost; ++i) {
        if (shows(*items[i], row))
            return items[i];
        KorDSMDependencies::createChildren(*items[i]);
        const auto& children = items[i]->children();
        items.insert(items.end(), children.begin(), children.end());
    }
    return nullptr;
}

// Climbs from a row to what uses it until it meets one that is filed, and comes back down through the items.
class ItemSearch {
public:
    ItemSearch(KorDSMDataStructure& structure, StyleSource& source)
        : m_structure(structure), m_source(source) {}

    KorDSMDatabaseItem* find(RowRef row) {
        if (!m_seen.insert(row).second)
            return nullptr;
        if (KorDsmAddInContentItem* content = contentOf(m_structure, m_source.id(), row.table)) {
            KorDSMSectionLoader::expandAddInContent(*content);
            return findFiled(*content, row);
        }
        for (const RowRef above : rowsAbove(m_source, row))
            if (KorDSMDatabaseItem* item = find(above)) {
                KorDSMDependencies::createChildren(*item);
                if (KorDSMDatabaseItem* child = childThatShows(*item, row))
                    return child;
            }
        return nullptr;
    }

private:
    KorDSMDataStructure& m_structure;
    StyleSource& m_source;
    std::set<RowRef> m_seen;
};

} // namespace

KorDSMDatabaseItem* findItem(KorDSMDataStructure& structure, SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || !findTable(row.table))
        return nullptr;
    const KorDSNRequest request(id.dsn, id.index);
    return ItemSearch(structure, *source).find(row);
}

KorDSMDatabaseItem* findGroup(KorDSMDataStructure& structure, SourceId source, RowRef group) {
    KorDsmAddInContentItem* content = contentOf(structure, source, group.table);
    return content && content->isExpanded() ? childThatShows(*content, group) : nullptr;
}

KorDSMDatabaseItem* findLoaded(KorDSMDataStructure& structure, SourceId source, RowRef row) {
    const KorDsmAddInContentItem* content = contentOf(structure, source, row.table);
    return content ? findFiled(*content, row) : nullptr;
}

KorDSMDatabaseItem* findEditor(KorDSMDataStructure& structure, SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    KorDSMDatabaseItem* found = nullptr;
    if (source && findTable(row.table))
        forEachEditedRow(*source, row,
                         [&](RowRef edited) { return (found = findItem(structure, id, edited)) != nullptr; });
    return found;
}

KorDSMDatabaseItem* findEditorBelow(KorDSMDatabaseItem& top, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(KorDSMItemSource::sourceOf(&top));
    KorDSMDatabaseItem* found = nullptr;
    if (source && findTable(row.table))
        forEachEditedRow(*source, row,
                         [&](RowRef edited) { return (found = nearestBelow(top, edited)) != nullptr; });
    return found;
}

bool isEditor(const KorDSMDatabaseItem& item, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(KorDSMItemSource::sourceOf(&item));
    bool found = false;
    if (source && findTable(row.table))
        forEachEditedRow(*source, row, [&](RowRef edited) { return found = shows(item, edited); });
    return found;
}

} // namespace KorDSMWhereUsed
