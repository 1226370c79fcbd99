#pragma once

#include "operations/KorDSNManager.h"
#include "records/RowRef.h"
#include "records/StyleRecords.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemSource.h"

/// What the item commands share.
namespace ItemCommandParts {

/// Makes an item's source current for its lifetime.
class SourceRequest {
public:
    explicit SourceRequest(const KorDSMDatabaseItem& item)
        : SourceRequest(KorDSMItemSource::sourceOf(&item)) {}

private:
    explicit SourceRequest(SourceId source) : m_request(source.dsn, source.index) {}

    KorDSNRequest m_request;
};

inline RowRef rowOf(const KorDSMDatabaseItem& item) {
    return {item.tableType(), item.recordKey()};
}

/// Text of a command in the undo menu: prompt "DSM" `number` with the name of what it was done to.
KorString label(int number, const KorString& name);

// Reasons against a command, for the user; empty when there is none. The item's source must be current.

/// For commands that conclude from what is absent.
KorString whyIncomplete();

/// The notice for the pages that list records as the item's.
KorDSMItemCommands::ListNotice noticeFor(const KorDSMDatabaseItem& item, int action);

/// Whether the host knows records of the table only by master rows.
bool needsMaster(eTableType table);
/// Reads that of a record of the current source. Returns false, and leaves `master`, where there is none.
bool readMaster(RowRef row, StructDetailMaster& master);

} // namespace ItemCommandParts
