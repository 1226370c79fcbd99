#include "session/KorDSMItemUpdate.h"

#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMDependencies.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMItemPlacing.h"
#include "model/KorDSMSectionLoader.h"
#include "operations/KorDSNManager.h"
#include "operations/KorOdbcGUI.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMTwins.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>
#include <set>

namespace {

constexpr std::size_t kMostRows = 200; // beyond that the sections are loaded anew
constexpr int kNameColumn = 1;

void collect(KorDSMDatabaseItem& item, RowRef row, std::vector<KorDSMDatabaseItem*>& found) {
    if (item.record() && item.tableType() == row.table && item.recordKey() == row.key)
        found.push_back(&item);
    for (KorDSMDatabaseItem* child : item.madeChildren())
        collect(*child, row, found);
}

// Which of some items are still there: only their addresses are known.
void collectAlive(KorDSMDatabaseItem& item, const std::set<KorDSMDatabaseItem*>& wanted,
                  std::set<KorDSMDatabaseItem*>& found) {
    if (wanted.contains(&item))
        found.insert(&item);
    for (KorDSMDatabaseItem* child : item.madeChildren())
        collectAlive(*child, wanted, found);
}

bool isFiled(const KorDSMDatabaseItem& item) {
    return item.parent() && KorDSMDefines::isGroupType(item.parent()->type());
}

// Not made anew from what is above it.
bool standsByItself(const KorDSMDatabaseItem& item) {
    return isFiled(item) || KorDSMDefines::isGroupType(item.type()) ||
           (item.parent() && !item.parent()->record());
}

// Whether an item's children follow from the columns that changed.
bool reachesChildren(const KorDSMRowChange& change) {
    return std::ranges::any_of(change.columns, [](const Column* column) {
        return column->isReference() && column->role == eReferenceRole::kUses;
    });
}

// Whether the row stands at another place among the parts of its whole.
bool changedPlace(const KorDSMRowChange& change) {
    return std::ranges::any_of(change.columns, [](const Column* column) { return column->name == "order"; });
}

const StructRecord* rowOf(RowRef row) {
    return StyleDatabases::current().here()->table(row.table).find(KorOdbcKey(row.key));
}

// The group in which a row of the family is filed; a style is filed by its master.
RowRef groupOf(const KorDSMFamily& family, RowRef row) {
    const StructRecord* record = rowOf(row);
    StructDetailMaster master;
    if (family.filedBy == kTableDetailMaster) {
        KorOdbcGUI::getDetailMaster(row.key, master);
        record = &master;
        row.table = kTableDetailMaster;
    }
    const Column* filing = record ? KorDSMFamilies::filingColumn(row.table) : nullptr;
    return filing ? RowRef{filing->target, filing->integerIn(record)} : RowRef();
}

} // namespace

KorDSMItemUpdate::Changes KorDSMItemUpdate::follow(KorDSMDataStructure& structure,
                                                   const std::vector<KorDSMRowChange>& changes) {
    KorDSMItemUpdate update(structure);
    update.m_outcome.reload = changes.size() > kMostRows;
    if (!update.m_outcome.reload)
        for (const KorDSMRowChange& change : changes)
            update.followRow(change);
    if (changes.size() > 1)
        update.forgetWhatIsGone();
    return std::move(update.m_outcome);
}

std::vector<KorDSMDatabaseItem*> KorDSMItemUpdate::itemsOf(SourceId source, RowRef row) {
    std::vector<KorDSMDatabaseItem*> found;
    for (const KorDSMDefines::eViewSections section : KorDSMDefines::kLoadingOrder)
        if (auto* addIn = KorDSMItemPath::findAddIn(*m_structure.getSection(section), source))
            collect(*addIn, row, found);
    return found;
}

void KorDSMItemUpdate::followRow(const KorDSMRowChange& change) {
    const KorDSNRequest request(change.source.dsn, change.source.index);
    if (!StyleDatabases::current().here())
        return;
    if (change.row.table == kTableDetailMaster)
        return followMaster(change);
    if (belongsToOthers(*findTable(change.row.table)))
        followPart(change);
    const StructRecord* row = rowOf(change.row);
    if (!row)
        followDeleted(change);
    else if (change.kind == KorDSMRowChange::eKind::kChanged)
        followChanged(change, *row);
    if (row)
        file(change.source, change.row);
}

void KorDSMItemUpdate::followChanged(const KorDSMRowChange& change, const StructRecord& row) {
    for (KorDSMDatabaseItem* item : itemsOf(change.source, change.row)) {
        item->updateRecord(row);
        if (change.changedColumn(kNameColumn))
            KorDSMTwins::sendName(*item);
        if (reachesChildren(change))
            dropChildren(*item);
        m_outcome.changed.push_back(item);
    }
}

void KorDSMItemUpdate::followDeleted(const KorDSMRowChange& change) {
    std::set<KorDSMDatabaseItem*> parents; // one record can be used by another several times
    for (KorDSMDatabaseItem* item : itemsOf(change.source, change.row)) {
        if (standsByItself(*item))
            takeOut(*item);
        else if (item->parent())
            parents.insert(item->parent());
    }
    for (KorDSMDatabaseItem* parent : parents)
        dropChildren(*parent);
}

// What a master says is where its style is filed.
void KorDSMItemUpdate::followMaster(const KorDSMRowChange& change) {
    if (const auto* master = static_cast<const StructDetailMaster*>(rowOf(change.row)))
        file(change.source, {kTableDetailStyle, master->styleKey});
}

// The items of a whole show its parts, or what those refer to, as children.
void KorDSMItemUpdate::followPart(const KorDSMRowChange& change) {
    const bool changed = change.kind == KorDSMRowChange::eKind::kChanged;
    const StructRecord* part = changed ? rowOf(change.row) : change.record.get();
    if (!part || (changed && !changedPlace(change) && !itemsOf(change.source, change.row).empty()))
        return;
    for (const Column& column : findTable(change.row.table)->columns)
        if (column.isReference() && column.role == eReferenceRole::kPartOf)
            for (KorDSMDatabaseItem* whole : itemsOf(change.source, {column.target, column.integerIn(part)}))
                dropChildren(*whole);
}

// Puts the row's item where the row is filed, where that is loaded.
void KorDSMItemUpdate::file(SourceId source, RowRef row) {
    const KorDSMFamily* family = KorDSMFamilies::of(row.table);
    const StructRecord* record = family ? rowOf(row) : nullptr;
    if (!record)
        return;
    if (family->isFiled()) {
        if (KorDSMDatabaseItem* group =
                KorDSMWhereUsed::findGroup(m_structure, source, groupOf(*family, row)))
            fileUnder(*group, source, row);
        return;
    }
    KorDsmAddInContentItem* content = KorDSMWhereUsed::contentOf(m_structure, source, row.table);
    if (!content || KorDSMItemPlacing::findChild(*content, row))
        return;
    m_outcome.added.push_back(&KorDSMItemPlacing::place(*content, *family, *record));
    fileMembers(source, row);
}

// What was filed under a group that is there again.
void KorDSMItemUpdate::fileMembers(SourceId source, RowRef group) {
    for (const Referrer& member :
         StyleDatabases::current().here()->referrersOf(group.table, KorOdbcKey(group.key))) {
        if (member.column->role != eReferenceRole::kFiledUnder)
            continue;
        RowRef row{member.table->type, member.key};
        if (row.table == kTableDetailMaster)
            row = {kTableDetailStyle, static_cast<const StructDetailMaster*>(rowOf(row))->styleKey};
        file(source, row);
    }
}

void KorDSMItemUpdate::fileUnder(KorDSMDatabaseItem& group, SourceId source, RowRef row) {
    if (KorDSMItemPlacing::findChild(group, row))
        return;
    for (KorDSMDatabaseItem* item : itemsOf(source, row))
        if (isFiled(*item)) {
            KorDSMItemPlacing::file(group, item->parent()->releaseChild(*item));
            m_outcome.moved.push_back(item);
            return;
        }
    m_outcome.added.push_back(&KorDSMItemPlacing::file(
        group, KorDSMFamilies::makeItem(*KorDSMFamilies::of(row.table), *rowOf(row))));
}

void KorDSMItemUpdate::takeOut(KorDSMDatabaseItem& item) {
    m_outcome.removed.push_back(item.parent()->releaseChild(item));
}

// The children are made anew when the entry is opened; those of a style are always there.
void KorDSMItemUpdate::dropChildren(KorDSMDatabaseItem& item) {
    auto* style = dynamic_cast<KorDsmDetailStyleItem*>(&item);
    if (!item.record() || (!style && !KorDSMDependencies::canHaveDependents(item.type())))
        return;
    item.dropDependents();
    if (!style)
        return;
    KorDSMSectionLoader::loadDetailStylesDependencies(style);
    style->setExpanded();
    m_outcome.added.insert(m_outcome.added.end(), style->children().begin(), style->children().end());
}

// A later row can have taken away what an earlier one brought.
void KorDSMItemUpdate::forgetWhatIsGone() {
    std::set<KorDSMDatabaseItem*> wanted;
    for (const auto* items : {&m_outcome.added, &m_outcome.moved, &m_outcome.changed})
        wanted.insert(items->begin(), items->end());
    std::set<KorDSMDatabaseItem*> alive;
    for (const KorDSMDefines::eViewSections section : KorDSMDefines::kLoadingOrder)
        collectAlive(*m_structure.getSection(section), wanted, alive);
    for (auto* items : {&m_outcome.added, &m_outcome.moved, &m_outcome.changed}) {
        std::set<KorDSMDatabaseItem*> seen;
        std::erase_if(*items, [&](KorDSMDatabaseItem* item) {
            return !alive.contains(item) || !seen.insert(item).second;
        });
    }
}
