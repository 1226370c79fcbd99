#include "session/KorDSMNewItem.h"

#include "data/StyleDatabases.h"
#include "data/exchange/MasterNumbers.h"
#include "model/KorDSMMessages.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/KorOdbcMan.h"
#include "session/KorDSMItemKinds.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMWhereUsed.h"
#include "session/PendingGroup.h"

using namespace KorDSMDefines;

namespace {

template <typename Item>
Item* append(typename Item::Record record) {
    if (StyleDatabases::current().append(tableOf<typename Item::Record>, record) != WriteResult::kWritten)
        return nullptr;
    auto* item = new Item;
    item->initRecord(record);
    return item;
}

template <typename Item>
KorDSMDatabaseItem* filed(const KorString& name, std::int32_t groupKey) {
    typename Item::Record record;
    record.name = name;
    record.groupKey = groupKey;
    return append<Item>(record);
}

KorDSMDatabaseItem* newStyle(const KorString& name, const StructDetBaseCategory& category) {
    StructDetailStyle record;
    record.name = name;
    KorDsmDetailStyleItem* style = append<KorDsmDetailStyleItem>(record);
    if (!style)
        return nullptr;
    StructDetailMaster master;
    master.name = name;
    master.styleKey = style->recordKey();
    master.categoryKey = category.key;
    master.detailKey = category.number;
    master.number = 1;
    master.number = freeMasterNumber(*StyleDatabases::current().here(), master);
    if (StyleDatabases::current().append(kTableDetailMaster, master) == WriteResult::kWritten)
        return style;
    delete style;
    return nullptr;
}

KorDSMDatabaseItem* make(eItemType type, const KorString& name, const KorDSMDatabaseItem& group) {
    switch (type) {
    case kDetailStyle:
        return newStyle(name, static_cast<const StructDetBaseCategory&>(*group.record()));
    case kAnnotationStrategy:
        return filed<KorDsmAnnotationStrategyItem>(name, group.recordKey());
    case kDimRequest:
        return filed<KorDsmDimRequestItem>(name, group.recordKey());
    case kQualifierSet:
        return filed<KorDsmQualifierSetItem>(name, group.recordKey());
    default:
        return nullptr;
    }
}

// Where rows come in when one of these is made.
constexpr std::pair<eItemType, eTableType> kTables[] = {
    {kDetailStyle, kTableDetailStyle},
    {kDetailStyle, kTableDetailMaster},
    {kAnnotationStrategy, kTableAnnotationStrategy},
    {kDimRequest, kTableDimRequest},
    {kQualifierSet, kTableQualifierSet},
};

} // namespace

eItemType KorDSMNewItem::typeAt(const KorDSMDatabaseItem& item) {
    switch (item.m_Type) {
    case kDetailStyle:
    case kDetailStyleCategory:
        return kDetailStyle;
    case kAnnotationStrategy:
    case kAnnotationGroup:
        return kAnnotationStrategy;
    case kDimRequest:
    case kDimRequestGroup:
        return kDimRequest;
    case kQualifierSet:
    case kQualifierSetGroup:
        return kQualifierSet;
    default:
        return kNoType;
    }
}

KorString KorDSMNewItem::groupNameAt(const KorDSMDatabaseItem& item) {
    for (const KorDSMDatabaseItem* near : {&item, static_cast<const KorDSMDatabaseItem*>(item.m_pParent)})
        if (near && isGroupType(near->m_Type))
            return near->getDisplayName();
    StyleSource* source = StyleDatabases::current().source(KorDSMItemSource::sourceOf(&item));
    const Column* filing = item.record() && source ? filingColumn(item.tableType()) : nullptr;
    const StructRecord* group =
        filing ? source->table(filing->target).find(KorOdbcKey(filing->integerIn(item.record()))) : nullptr;
    return group ? group->name : KorString();
}

KorDSMDatabaseItem* KorDSMNewItem::findGroup(KorDSMDataStructure& structure, eItemType type, SourceId source,
                                             std::int32_t key) {
    for (const auto& [made, table] : kTables)
        if (const Column* filing = made == type ? filingColumn(table) : nullptr)
            return KorDSMWhereUsed::findItem(structure, source, {filing->target, key});
    return nullptr;
}

KorDSMDatabaseItem* KorDSMNewItem::create(eItemType type, const KorString& name, KorDSMDatabaseItem& group) {
    PendingGroup step(name);
    KorDSMDatabaseItem* item = make(type, name, group);
    if (!item) {
        step.takeBack();
        return nullptr;
    }
    group.addChild(item);
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    return item;
}

KorString KorDSMNewItem::whyNotMade(eItemType type) {
    StyleSource& source = *StyleDatabases::current().here();
    for (const auto& [made, table] : kTables)
        if (const std::string reason = made == type ? source.whyFull(table) : ""; !reason.empty())
            return KorString(reason);
    return {};
}
