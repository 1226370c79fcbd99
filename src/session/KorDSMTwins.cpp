#include "session/KorDSMTwins.h"

#include "data/StyleDatabases.h"

void KorDSMTwins::recordWritten(KorDSMDatabaseItem& item) {
    StyleSource* source = StyleDatabases::current().here();
    const StructRecord* row = source && item.record()
                                  ? source->table(item.tableType()).find(KorOdbcKey(item.recordKey()))
                                  : nullptr;
    if (!row)
        return;
    item.updateRecord(*row);
    for (KorDSMDatabaseItem* twin : item.equalItems())
        twin->updateRecord(*row);
}
