#include "session/ItemCommandParts.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMFamilies.h"
#include "operations/KorOdbcGUI.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

namespace ItemCommandParts {

namespace {

constexpr int kTaken = 231;      // "There is one of this name already."
constexpr int kNameNeeded = 232; // "A name is needed."

} // namespace

KorString label(int number, const KorString& name) {
    return KorString::format(Prompts::dsm(number), {KorDSMValueText::shortName(name)});
}

KorString whyIncomplete() {
    return StyleDatabases::current().here()->complete().error;
}

KorString whyFull(eTableType table) {
    return StyleDatabases::current().here()->whyFull(table);
}

KorString whyNotNamed(const KorDSMDatabaseItem& item, const KorString& name, std::int32_t exceptKey) {
    if (KorString readOnly = KorDSMItemCommands::whyNotWritable(item); !readOnly.isEmpty())
        return readOnly;
    if (name.isEmpty())
        return Prompts::dsm(kNameNeeded);
    const StructRecord* present = StyleDatabases::current().here()->table(item.tableType()).find(name);
    return present && present->key != exceptKey ? Prompts::dsm(kTaken) : KorString();
}

KorDSMItemCommands::ListNotice noticeFor(const KorDSMDatabaseItem& item, int action) {
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    if (!family || family->listedBy.isEmpty())
        return {};
    const Column& filing = *KorDSMFamilies::filingColumn(item.tableType());
    const StructRecord* group = StyleDatabases::current()
                                    .here()
                                    ->table(filing.target)
                                    .find(KorOdbcKey(filing.integerIn(item.record())));
    return {item.type(),
            action,
            group ? group->name : KorString(),
            item.record()->name,
            {family->listedBy.begin(), family->listedBy.end()}};
}

bool needsMaster(const KorDSMDatabaseItem& item) {
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    return family && family->filedBy == kTableDetailMaster;
}

bool readMaster(const KorDSMDatabaseItem& item, StructDetailMaster& master) {
    return needsMaster(item) && KorOdbcGUI::getDetailMaster(item.recordKey(), master) == 1;
}

} // namespace ItemCommandParts
