#include "model/KorDSMDependencies.h"

#include "operations/CurrentRows.h"
#include "operations/KorOdbcGUI.h"

namespace KorDSMDependencies {

namespace {

// A new item for the record with this key, or null when there is none.
template <typename Item>
Item* itemFor(std::int32_t key) {
    typename Item::Record record;
    if (StyleReads::read(KorOdbcKey(key), record) != 1)
        return nullptr;
    auto* item = new Item;
    item->initRecord(record);
    if constexpr (requires { item->m_AnnotationType; })
        KorOdbcGUI::getDetAnnotationType(KorOdbcKey(record.annotationTypeKey), item->m_AnnotationType);
    return item;
}

template <typename Item>
void addChildFor(KorDSMDatabaseItem& parent, std::int32_t key) {
    if (Item* child = itemFor<Item>(key))
        parent.addChild(child);
}

void expand(KorDsmViewRequestItem& item) {
    const StructDetViewRequest& record = item.getRecord();
    addChildFor<KorDsmSystemAndBoxItem>(item, record.systemAndBoxKey);
    addChildFor<KorDsmReprMapRuleItem>(item, record.reprMapKey);
    addChildFor<KorDsmViewDimensioningItem>(item, record.dimStrategyKey);
}

void expand(KorDsmReprMapRuleItem& item) {
    KorArray<StructDetObjReprMapKey> entries;
    KorOdbcGUI::getDetObjReprMapEntries(KorOdbcKey(item.recordKey()), entries);
    for (const StructDetObjReprMapKey& entry : entries)
        addChildFor<KorDsmReprMapItem>(item, entry.key);
}

void expand(KorDsmReprMapItem& item) {
    const StructDetObjReprMapKey& record = item.getRecord();
    if (auto* child = itemFor<KorDsmQualifierSetItem>(record.qualifierSetKey))
        item.createQualifierSet(child);
    if (auto* child = itemFor<KorDsmAppearanceItem>(record.appearanceKey))
        item.createAppearance(child);
    if (auto* child = itemFor<KorDsmAnnotationStrategyItem>(record.annotationStrategyKey))
        item.createAnnotationStrategy(child);
}

void addArrangement(KorDSMDatabaseItem& parent, const StructRecord& record, bool isStrategy) {
    auto* child = new KorDsmAnnotationArrangementItem;
    child->m_bStandsForStrategy = isStrategy;
    child->updateRecord(record);
    parent.addChild(child);
}

void expand(KorDsmAnnotationStrategyItem& item) {
    StructDetArrangerControl control;
    if (KorOdbcGUI::getDetArrangerControl(KorOdbcKey(item.getRecord().arrangerControlKey), control) == 1)
        addArrangement(item, control, false);
    StructDetArrangerStrategy strategy;
    if (KorOdbcGUI::getDetArrangerStrategy(KorOdbcKey(item.getRecord().arrangerStrategyKey), strategy) == 1)
        addArrangement(item, strategy, true);
}

void expand(KorDsmViewDimensioningItem& item) {
    KorArray<StructDetViewDimStrategyItem> entries;
    KorOdbcGUI::getDetViewDimStrategyItems(KorOdbcKey(item.recordKey()), entries);
    for (const StructDetViewDimStrategyItem& entry : entries)
        addChildFor<KorDsmDimRequestItem>(item, entry.dimRequestKey);
}

void expand(KorDsmDimRequestItem& item) {
    const StructDetViewDimRequestLinear& record = item.getRecord();
    for (const std::int32_t key : {record.startPointsKey, record.innerPointsKey, record.endPointsKey})
        addChildFor<KorDsmPointSelectionItem>(item, key);
}

void expand(KorDsmPointSelectionItem& item) {
    addChildFor<KorDsmQualifierSetItem>(item, item.getRecord().qualifierSetKey);
}

// Expands `item` when it is of one of these classes.
template <typename... Items>
bool expandAs(KorDSMDatabaseItem& item) {
    const auto attempt = [&]<typename Item>(Item* typed) {
        if (typed)
            expand(*typed);
        return typed != nullptr;
    };
    return (attempt(dynamic_cast<Items*>(&item)) || ...);
}

} // namespace

bool canHaveDependents(KorDSMDefines::eItemType type) {
    switch (type) {
    case KorDSMDefines::kViewRequest:
    case KorDSMDefines::kReprMapRule:
    case KorDSMDefines::kReprMap:
    case KorDSMDefines::kAnnotationStrategy:
    case KorDSMDefines::kViewDimensioning:
    case KorDSMDefines::kDimRequest:
    case KorDSMDefines::kPointSelection:
        return true;
    default:
        return false;
    }
}

void createChildren(KorDSMDatabaseItem& item) {
    if (item.m_bExpanded)
        return;
    expandAs<KorDsmViewRequestItem, KorDsmReprMapRuleItem, KorDsmReprMapItem, KorDsmAnnotationStrategyItem,
             KorDsmViewDimensioningItem, KorDsmDimRequestItem, KorDsmPointSelectionItem>(item);
    item.m_bExpanded = true;
}

bool refreshRecord(KorDSMDatabaseItem& item) {
    if (!item.record() || !CurrentRows::all(item.tableType()))
        return true;
    const StructRecord* row = CurrentRows::find(item.tableType(), KorOdbcKey(item.recordKey()));
    if (row)
        item.updateRecord(*row);
    return row != nullptr;
}

} // namespace KorDSMDependencies
