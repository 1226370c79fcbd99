#include "session/KorDSMHandOver.h"

#include "operations/KorOdbcGUI.h"
#include "operations/KorOdbcMan.h"
#include "services/AddInManager.h"
#include "services/KorExchangeUtilities.h"

bool KorDSMHandOver::put(const KorDSMDatabaseItem* item) {
    int status = 0;
    KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue(kQueue, status, 0);
    for (const char* result : {"RESULT1", "RESULT2", "RESULT3", "RESULT4"})
        queue.remove(result);
    const KorDSMDatabaseItem* style = item ? item->ancestor(KorDSMDefines::kDetailStyle) : nullptr;
    StructDetailMaster master;
    if (!style || KorOdbcGUI::getDetailMaster(style->recordKey(), master) != 1)
        return false;
    queue.push("RESULT1", master.detailKey);
    queue.push("RESULT2", master.number);
    switch (KorOdbcMan::getCurrentDSN()) {
    case KorDSNDefinitions::kStandard:
        queue.push("RESULT3", KorString("Standard"));
        break;
    case KorDSNDefinitions::kUser:
        queue.push("RESULT3", KorString("User"));
        break;
    default: {
        const int number = KorOdbcMan::getCurrentAddIn() - KorDSNDefinitions::kFirstAddIn;
        KorArray<KorAddInId> addIns;
        AddInManagerInterface::getInstance().getInstalledAddIns(addIns);
        if (addIns.isValid(number)) {
            const auto info =
                AddInManagerInterface::getInstance().getInstalledCountryAddInInfo(addIns[number]);
            queue.push("RESULT3", info.isValid() ? info.name : addIns[number].id);
        }
        queue.push("RESULT4", number);
        break;
    }
    }
    return true;
}
