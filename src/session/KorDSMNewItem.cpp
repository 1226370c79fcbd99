#include "session/KorDSMNewItem.h"

#include "data/KorOdbcMan.h"
#include "data/exchange/KorDetailTableDependencies.h"
#include "model/KorDSMMessages.h"
#include "model/items/KorDsmItems.h"
#include "session/PendingGroup.h"

using namespace KorDSMDefines;

namespace {

template <typename Item>
Item* append(typename Item::Record record) {
    if (StyleDatabases::current().append(tableOf<typename Item::Record>, record) != StyleDatabases::kWritten)
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
    StyleDatabases::current().append(kTableDetailMaster, master);
    return style;
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

KorDSMDatabaseItem* KorDSMNewItem::create(eItemType type, const KorString& name, KorDSMDatabaseItem& group) {
    const PendingGroup step(name);
    KorDSMDatabaseItem* item = make(type, name, group);
    if (!item)
        return nullptr;
    group.addChild(item);
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    return item;
}
