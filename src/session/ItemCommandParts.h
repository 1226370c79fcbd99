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

/// Text of a command in the undo menu: prompt "DSM" `number` with the name of what it was done to.
KorString label(int number, const KorString& name);

// Reasons against a command, for the user; empty when there is none. The item's source must be current.

/// For commands that conclude from what is absent.
KorString whyIncomplete();
/// For a table that did not take a row.
KorString whyFull(eTableType table);
/// `exceptKey` is the row that may have the name: the item's own, or 0.
KorString whyNotNamed(const KorDSMDatabaseItem& item, const KorString& name, std::int32_t exceptKey);

/// The notice for the pages that list records as the item's.
KorDSMItemCommands::ListNotice noticeFor(const KorDSMDatabaseItem& item, int action);

/// Whether the host knows the item's record only by a master row.
bool needsMaster(const KorDSMDatabaseItem& item);
/// Reads that row from the current source. Returns false, and leaves `master`, where there is none.
bool readMaster(const KorDSMDatabaseItem& item, StructDetailMaster& master);

} // namespace ItemCommandParts
