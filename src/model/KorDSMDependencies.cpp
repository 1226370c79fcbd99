#include "model/KorDSMDependencies.h"

#include "operations/CurrentRows.h"
#include "operations/KorOdbcGUI.h"

namespace KorDSMDependencies {

namespace {

// A new item for the record with this key, or null when there is none.
std::unique_ptr<KorDSMDatabaseItem> itemFor(eTableType table, std::int32_t key) {
    const StructRecord* record = CurrentRows::find(table, KorOdbcKey(key));
    return record ? KorDSMFamilies::makeItem(*KorDSMFamilies::of(table), *record) : nullptr;
}

void addChildFor(KorDSMDatabaseItem& parent, eTableType table, std::int32_t key) {
    if (auto child = itemFor(table, key))
        parent.addChild(std::move(child));
}

} // namespace

void addDependents(KorDsmViewRequestItem& item) {
    const StructDetViewRequest& record = item.getRecord();
    addChildFor(item, kTableSystemAndBox, record.systemAndBoxKey);
    addChildFor(item, kTableReprMap, record.reprMapKey);
    addChildFor(item, kTableViewDimStrategy, record.dimStrategyKey);
}

void addDependents(KorDsmReprMapRuleItem& item) {
    KorArray<StructDetObjReprMapKey> entries;
    KorOdbcGUI::getDetObjReprMapEntries(KorOdbcKey(item.recordKey()), entries);
    for (const StructDetObjReprMapKey& entry : entries)
        addChildFor(item, kTableReprMapEntry, entry.key);
}

void addDependents(KorDsmReprMapItem& item) {
    const StructDetObjReprMapKey& record = item.getRecord();
    if (auto child = itemFor(kTableQualifierSet, record.qualifierSetKey))
        item.createQualifierSet(std::move(child));
    if (auto child = itemFor(kTableAppearance, record.appearanceKey))
        item.createAppearance(std::move(child));
    if (auto child = itemFor(kTableAnnotationStrategy, record.annotationStrategyKey))
        item.createAnnotationStrategy(std::move(child));
}

void addDependents(KorDsmAnnotationStrategyItem& item) {
    addChildFor(item, kTableArrangerControl, item.getRecord().arrangerControlKey);
    addChildFor(item, kTableArrangerStrategy, item.getRecord().arrangerStrategyKey);
}

void addDependents(KorDsmViewDimensioningItem& item) {
    KorArray<StructDetViewDimStrategyItem> entries;
    KorOdbcGUI::getDetViewDimStrategyItems(KorOdbcKey(item.recordKey()), entries);
    for (const StructDetViewDimStrategyItem& entry : entries)
        addChildFor(item, kTableDimRequest, entry.dimRequestKey);
}

void addDependents(KorDsmDimRequestItem& item) {
    const StructDetViewDimRequestLinear& record = item.getRecord();
    for (const std::int32_t key : {record.startPointsKey, record.innerPointsKey, record.endPointsKey})
        addChildFor(item, kTablePointSelection, key);
}

void addDependents(KorDsmPointSelectionItem& item) {
    addChildFor(item, kTableQualifierSet, item.getRecord().qualifierSetKey);
}

bool canHaveDependents(KorDSMDefines::eItemType type) {
    const KorDSMFamily* family = KorDSMFamilies::of(type);
    return family && family->addDependents;
}

void createChildren(KorDSMDatabaseItem& item) {
    if (item.isExpanded())
        return;
    if (canHaveDependents(item.type()))
        KorDSMFamilies::of(item.type())->addDependents(item);
    item.setExpanded();
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
