#include "session/KorDSMSharedRecord.h"

#include "base/KorAssert.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

namespace {

constexpr int kWarningOption = 2; // index in the options menu

} // namespace

KorDSMSharedRecord KorDSMSharedRecord::of(eTableType table, const KorOdbcKey& key) {
    KorDSMSharedRecord record;
    if (findTable(table))
        record.users = KorDSMWhereUsed::usagesUpToSharing(CurrentRows::source(), {table, key});
    const bool initialized = KorAssert::check(table != kNoTable && key.isValid(),
                                              "0 && _T(\"The messages were not initialized\")");
    const KorDSMFamily* family = initialized ? KorDSMFamilies::of(table) : nullptr;
    const bool isNamedByTable =
        initialized && (!family || family->confirmationPrompt == KorDSMFamily::kTableName);
    if (!isNamedByTable && (!family || family->confirmationPrompt == 0)) {
        record.kind = "item";
        return record;
    }
    record.kind = isNamedByTable ? KorDSMValueText::tableCaption(*findTable(table))
                                 : Prompts::ups(family->confirmationPrompt);
    if (const StructRecord* row = CurrentRows::find(table, key))
        record.name = row->getRunBezeichnung();
    return record;
}

bool KorDSMSharedRecord::warningIsOn() {
    return KorDSMDialogFactory::getDSMDataStructure().getShowWarning();
}

void KorDSMSharedRecord::switchWarning(bool on) {
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(on);
    DsmSetOptionCheck message;
    message.index = kWarningOption;
    message.value = on;
    KorDSMMainWindow::sendMessage(message);
}
