#include "session/KorDSMTwins.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMMessages.h"

void KorDSMTwins::recordWritten(KorDSMDatabaseItem& item) {
    StyleSource* source = StyleDatabases::current().here();
    const StructRecord* row = source && item.record()
                                  ? source->table(item.tableType()).find(KorOdbcKey(item.recordKey()))
                                  : nullptr;
    if (!row)
        return;
    for (KorDSMDatabaseItem* shown : item.itemsOfRecord())
        shown->updateRecord(*row);
}

void KorDSMTwins::sendName(const KorDSMDatabaseItem& item) {
    DsmSetEntryText message;
    message.entry = item.entry();
    message.text = item.getDisplayName();
    KorDSMMainWindow::sendMessage(message);
}

void KorDSMTwins::showName(KorDSMDatabaseItem& item) {
    for (const KorDSMDatabaseItem* shown : item.itemsOfRecord())
        sendName(*shown);
}
