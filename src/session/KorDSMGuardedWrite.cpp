#include "session/KorDSMGuardedWrite.h"

#include "base/KorAssert.h"
#include "data/KorOdbcGUI.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMMessages.h"

#include <utility>

namespace {
KorDSMGuardedWrite::AskFunction g_ask;
}

KorDSMGuardedWrite::AskFunction KorDSMGuardedWrite::setAskFunction(AskFunction ask) {
    return std::exchange(g_ask, std::move(ask));
}

bool KorDSMGuardedWrite::needsConfirmation(eTableType table, const KorOdbcKey& key) {
    return KorDSMDialogFactory::getDSMDataStructure().getShowWarning() && KorOdbcGUI::canBeShared(table) &&
           KorOdbcGUI::isShared(table, key);
}

int KorDSMGuardedWrite::write(eTableType table, const KorOdbcKey& key, const std::function<int()>& writeNow) {
    int answer = kWrite;
    if (needsConfirmation(table, key))
        answer = g_ask ? g_ask(table, key) : kDecline;
    if (answer != kWrite)
        return answer;
    const int odbcResult = writeNow();
    if (!KorAssert::check(odbcResult > 0, "odbcResult > 0") || odbcResult != StyleDatabases::kWritten)
        return 0;
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    return answer;
}

int KorDSMGuardedWrite::setAttributeString(eTableType table, const KorOdbcKey& key, int field,
                                           const KorString& text, int flags) {
    return write(table, key, [&] { return KorOdbcMan::setAttribute(table, key, field, text, flags); });
}

int KorDSMGuardedWrite::setAttributeInt(eTableType table, const KorOdbcKey& key, int field, long value) {
    return write(table, key,
                 [&] { return KorOdbcMan::setAttribute(table, key, field, value, KorOdbcMan::kThisRow); });
}

int KorDSMGuardedWrite::setAttributeDouble(eTableType table, const KorOdbcKey& key, int field, double value) {
    return write(table, key,
                 [&] { return KorOdbcMan::setAttribute(table, key, field, value, KorOdbcMan::kThisRow); });
}

int KorDSMGuardedWrite::setAttributeValue(eTableType table, const KorOdbcKey& key, int field,
                                          const CellValue& value) {
    return write(table, key, [&] { return StyleDatabases::current().setCell(table, key, field, value); });
}

int KorDSMGuardedWrite::storeCurrentRecord(eTableType table) {
    return write(table, KorOdbcMan::getRecordKey(table),
                 [table] { return KorOdbcMan::storeCurrentRecord(table, KorOdbcMan::kThisRow); });
}
