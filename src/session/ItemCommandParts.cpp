#include "session/ItemCommandParts.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMFamilies.h"
#include "operations/KorOdbcGUI.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

namespace ItemCommandParts {

KorString label(int number, const KorString& name) {
    return KorString::format(Prompts::dsm(number), {KorDSMValueText::shortName(name)});
}

KorString whyIncomplete() {
    return StyleDatabases::current().here()->complete().error;
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

bool needsMaster(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->filedBy == kTableDetailMaster;
}

bool readMaster(RowRef row, StructDetailMaster& master) {
    return needsMaster(row.table) && KorOdbcGUI::getDetailMaster(row.key, master) == 1;
}

} // namespace ItemCommandParts
