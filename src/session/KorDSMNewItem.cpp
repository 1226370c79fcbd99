#include "session/KorDSMNewItem.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMFamilies.h"
#include "operations/CurrentRows.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMRecordCommands.h"

using namespace KorDSMDefines;

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
    const KorDSMRecordCommands::Outcome made =
        KorDSMRecordCommands::create(CurrentRows::source(), family.table, name, group.recordKey());
    if (!made.isStored())
        return Result<>::failure(made.error);
    return &group.addChild(
        KorDSMFamilies::makeItem(family, *CurrentRows::find(family.table, KorOdbcKey(made.row.key))));
}
