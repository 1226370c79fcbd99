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

// A record of the family with the defaults, filed under the group.
std::shared_ptr<StructRecord> recordOf(const KorDSMFamily& family, const KorString& name,
                                       std::int32_t groupKey) {
    std::shared_ptr<StructRecord> record = CurrentRows::all(family.table)->copyOf(nullptr);
    record->name = name;
    if (const Column* filing = KorDSMFamilies::filingColumn(family.table))
        filing->integerIn(record.get()) = groupKey;
    return record;
}

WriteResult appendMaster(const KorDSMDatabaseItem& style, const StructDetBaseCategory& category) {
    StructDetailMaster master;
    master.name = style.record()->name;
    master.styleKey = style.recordKey();
    master.categoryKey = category.key;
    master.detailKey = category.number;
    master.number = 1;
    master.number = freeMasterNumber(*StyleDatabases::current().here(), master);
    return StyleDatabases::current().append(kTableDetailMaster, master);
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

Result<KorDSMDatabaseItem*> KorDSMNewItem::create(eItemType type, const KorString& name,
                                                  KorDSMDatabaseItem& group) {
    const KorDSMFamily& family = *KorDSMFamilies::of(type);
    PendingGroup step(name);
    const std::shared_ptr<StructRecord> record = recordOf(family, name, group.recordKey());
    WriteResult written = StyleDatabases::current().append(family.table, *record);
    std::unique_ptr<KorDSMDatabaseItem> made = KorDSMFamilies::makeItem(family, *record);
    if (written.isStored() && ItemCommandParts::needsMaster(*made))
        written = appendMaster(*made, static_cast<const StructDetBaseCategory&>(*group.record()));
    if (written.isFailed()) {
        step.takeBack();
        return Result<>::failure(written.error);
    }
    KorDSMDatabaseItem& item = group.addChild(std::move(made));
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    return &item;
}
