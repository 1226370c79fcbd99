#include "session/KorDSMSharedRecord.h"

#include "base/KorAssert.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "services/Prompts.h"
#include "session/KorDSMProvenanceWords.h"
#include "session/KorDSMValueText.h"

namespace {

constexpr int kWarningOption = 2; // index in the options menu
constexpr int kWhole = 1361;      // "%s "%s""

} // namespace

KorDSMSharedRecord KorDSMSharedRecord::of(eTableType table, const KorOdbcKey& key) {
    KorDSMSharedRecord record;
    if (findTable(table))
        record.users = KorDSMWhereUsed::usagesUpToSharing(CurrentRows::source(), {table, key});
    const bool initialized = KorAssert::check(table != kNoTable && key.isValid(),
                                              "0 && _T(\"The messages were not initialized\")");
    if (const StructRecord* row = initialized ? CurrentRows::find(table, key) : nullptr)
        record.whole =
            KorDSMValueText::isNameGiven(*findTable(table), row->name)
                ? KorString::format(Prompts::dsm(kWhole), {KorDSMValueText::tableCaption(*findTable(table)),
                                                           KorDSMValueText::shortName(row->name)})
                : KorDSMProvenanceWords::nameOf({table, key.getKey()});
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
    record.isNamed = table != kTableQualifierSet; // which goes by the words of another page
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
