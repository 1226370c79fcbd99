#include "session/KorDSMNewItem.h"

#include "data/StyleDatabases.h"
#include "data/exchange/MasterNumbers.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "session/ItemCommandParts.h"
#include "session/PendingGroup.h"

using namespace KorDSMDefines;

namespace {

// A row of the family with the defaults, filed under the group; null where it was not written.
std::unique_ptr<KorDSMDatabaseItem> append(const KorDSMFamily& family, const KorString& name,
                                           std::int32_t groupKey) {
    const std::shared_ptr<StructRecord> record = CurrentRows::all(family.table)->copyOf(nullptr);
    record->name = name;
    if (const Column* filing = KorDSMFamilies::filingColumn(family.table))
        filing->integerIn(record.get()) = groupKey;
    if (StyleDatabases::current().append(family.table, *record) != WriteResult::kWritten)
        return nullptr;
    return KorDSMFamilies::makeItem(family, *record);
}

bool appendMaster(const KorDSMDatabaseItem& style, const StructDetBaseCategory& category) {
    StructDetailMaster master;
    master.name = style.record()->name;
    master.styleKey = style.recordKey();
    master.categoryKey = category.key;
    master.detailKey = category.number;
    master.number = 1;
    master.number = freeMasterNumber(*StyleDatabases::current().here(), master);
    return StyleDatabases::current().append(kTableDetailMaster, master) == WriteResult::kWritten;
}

std::unique_ptr<KorDSMDatabaseItem> make(const KorDSMFamily& family, const KorString& name,
                                         const KorDSMDatabaseItem& group) {
    auto item = append(family, name, group.recordKey());
    if (!item || !ItemCommandParts::needsMaster(*item) ||
        appendMaster(*item, static_cast<const StructDetBaseCategory&>(*group.record())))
        return item;
    return nullptr;
}

} // namespace

eItemType KorDSMNewItem::typeAt(const KorDSMDatabaseItem& item) {
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    if (family && family->isGroup())
        family = KorDSMFamilies::filedUnder(*family);
    return family && family->isFiled() ? family->type : kNoType;
}

KorString KorDSMNewItem::groupNameAt(const KorDSMDatabaseItem& item) {
    for (const KorDSMDatabaseItem* near : {&item, static_cast<const KorDSMDatabaseItem*>(item.parent())})
        if (near && isGroupType(near->type()))
            return near->getDisplayName();
    StyleSource* source = StyleDatabases::current().source(KorDSMItemSource::sourceOf(&item));
    const Column* filing = item.record() && source ? KorDSMFamilies::filingColumn(item.tableType()) : nullptr;
    const StructRecord* group =
        filing ? source->table(filing->target).find(KorOdbcKey(filing->integerIn(item.record()))) : nullptr;
    return group ? group->name : KorString();
}

KorDSMDatabaseItem* KorDSMNewItem::findGroup(KorDSMDataStructure& structure, eItemType type, SourceId source,
                                             std::int32_t key) {
    const KorDSMFamily& groups = *KorDSMFamilies::of(KorDSMFamilies::of(type)->group);
    return KorDSMWhereUsed::findItem(structure, source, {groups.table, key});
}

KorDSMDatabaseItem* KorDSMNewItem::create(eItemType type, const KorString& name, KorDSMDatabaseItem& group) {
    PendingGroup step(name);
    std::unique_ptr<KorDSMDatabaseItem> made = make(*KorDSMFamilies::of(type), name, group);
    if (!made) {
        step.takeBack();
        return nullptr;
    }
    KorDSMDatabaseItem& item = group.addChild(std::move(made));
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    return &item;
}

KorString KorDSMNewItem::whyNotMade(eItemType type) {
    const KorDSMFamily& family = *KorDSMFamilies::of(type);
    const KorString reason = ItemCommandParts::whyFull(family.table);
    const bool needsAnother = reason.isEmpty() && family.filedBy != kNoTable;
    return needsAnother ? ItemCommandParts::whyFull(family.filedBy) : reason;
}
