#include "session/KorDSMPlace.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMDependencies.h"
#include "operations/KorDSNManager.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMUnusedRecords.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>

using namespace KorDSMDefines;

namespace {

RowRef rowOf(const KorDSMDatabaseItem& item) {
    return item.record() ? RowRef{item.tableType(), item.recordKey()} : RowRef();
}

// A group, or a record in its group: where such a row stands can be looked up.
bool isFiled(const KorDSMDatabaseItem& item) {
    return isGroupType(item.type()) || (item.parent() && isGroupType(item.parent()->type()));
}

// What has not been read is believed to be there.
bool mayExist(StyleSource& source, RowRef row) {
    const TableSchema* table = findTable(row.table);
    return !table || !source.isRead(*table) || source.table(row.table).find(KorOdbcKey(row.key));
}

} // namespace

KorDSMPlace::Step KorDSMPlace::stepTo(const KorDSMDatabaseItem& item) {
    Step step{item.type(), rowOf(item), 0};
    for (const KorDSMDatabaseItem* sibling : item.parent()->children()) {
        if (sibling == &item)
            break;
        step.occurrence += sibling->type() == step.type && rowOf(*sibling) == step.row;
    }
    return step;
}

KorDSMDatabaseItem* KorDSMPlace::follow(const KorDSMDatabaseItem& item, const Step& step) {
    KorDSMDatabaseItem* last = nullptr;
    int left = step.occurrence;
    for (KorDSMDatabaseItem* child : item.children())
        if (child->type() == step.type && rowOf(*child) == step.row) {
            last = child;
            if (left-- == 0)
                break;
        }
    return last;
}

KorDSMPlace::KorDSMPlace(const KorDSMDatabaseItem& item) : m_source(KorDSMItemSource::sourceOf(&item)) {
    const KorDSMDatabaseItem* step = &item;
    while (step->parent() && !isFiled(*step) && step->type() != kAddInContent &&
           step->type() != kDatabaseContent) {
        m_steps.push_back(stepTo(*step));
        step = step->parent();
    }
    std::ranges::reverse(m_steps);
    if (isFiled(*step))
        m_filed = rowOf(*step);
    else
        m_node = step->type();
    while (step->parent())
        step = step->parent();
    if (const auto* home = dynamic_cast<const KorDsmSectionItem*>(step))
        m_section = home->section();
}

bool KorDSMPlace::isStillThere(KorDSMDataStructure& structure) const {
    StyleSource* source = StyleDatabases::current().source(m_source);
    if (!source || !KorDSMItemPath::findAddIn(*structure.getSection(m_section), m_source))
        return false;
    if (!mayExist(*source, m_filed))
        return false;
    // What has not been made yet is believed to be there while its row is.
    const KorDSMDatabaseItem* item = KorDSMWhereUsed::findLoaded(structure, m_source, m_filed);
    for (const Step& step : m_steps) {
        const bool isMade = item && (item->isExpanded() || KorDSMFamilies::bringsChildren(item->type()));
        item = item ? follow(*item, step) : nullptr;
        if (!item && (isMade || !mayExist(*source, step.row)))
            return false;
    }
    return true;
}

KorDSMDatabaseItem* KorDSMPlace::find(KorDSMDataStructure& structure) const {
    if (!isStillThere(structure))
        return nullptr;
    if (m_node != kNoType && m_steps.empty()) {
        KorDSMDatabaseItem* addIn = KorDSMItemPath::findAddIn(*structure.getSection(m_section), m_source);
        return m_node == kDatabaseContent ? addIn->parent() : addIn;
    }
    auto step = m_steps.begin();
    KorDSMDatabaseItem* item =
        KorDSMWhereUsed::findItem(structure, m_source, m_node == kNoType ? m_filed : (step++)->row);
    if (!item && m_node != kNoType) // something may use it by now
        item = KorDSMUnusedRecords::itemOf(structure, m_source, m_steps.front().row);
    const KorDSNRequest request(m_source.dsn, m_source.index);
    for (; item && step != m_steps.end(); ++step) {
        KorDSMDependencies::createChildren(*item);
        item = follow(*item, *step);
    }
    return item;
}

void KorDSMPlace::renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys) {
    if (source != m_source)
        return;
    const auto follow = [&](RowRef& row) {
        if (const auto it = newKeys.find(row); it != newKeys.end())
            row.key = it->second;
    };
    follow(m_filed);
    for (Step& step : m_steps)
        follow(step.row);
}
