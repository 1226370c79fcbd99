#pragma once

#include "base/Result.h"
#include "records/KorOdbcKey.h"
#include "records/RowRef.h"
#include "records/TableSchema.h"
#include "records/WriteResult.h"

#include <functional>
#include <optional>

/// The guarded write, through which every edit of one column goes: where the row is shared and the user
/// wants to be warned, it asks first; it writes; it announces the change to the main dialog. Pages, commands,
/// the command line and tests write the same way.
class KorDSMGuardedWrite {
public:
    /// Answers of the question before a shared row is written. Only `kWrite` writes.
    enum eAnswer : int { kDecline = 0, kWrite = 1, kCopy = 2 };
    using AskFunction = std::function<int(eTableType table, const KorOdbcKey& key)>;

    /// Says who is asked in the current session before a shared row is written: of those that are still there
    /// the one whose owner was added last. Without anybody to ask a shared row is not written. `owner` only
    /// names the function.
    static void addAskFunction(const void* owner, AskFunction ask);
    /// Takes the owner's function out, in any order; nothing happens when it has none.
    static void removeAskFunction(const void* owner);

    /// Write one field of the current source, after the question where the row itself is shared. Return 1
    /// when it was written, the answer when it was declined, 0 when the write failed (after the check
    /// "odbcResult > 0") or nobody can say whether the row is shared, because the source is not complete. The
    /// host report then says why. A write that replaces a cell that could not be read is asked about as if
    /// the row were shared.
    static int setAttributeString(eTableType table, const KorOdbcKey& key, int field, const KorString& text,
                                  int flags);
    static int setAttributeInt(eTableType table, const KorOdbcKey& key, int field, long value);
    static int setAttributeDouble(eTableType table, const KorOdbcKey& key, int field, double value);
    /// Stores the layer's current record of the table in the same way.
    static int storeCurrentRecord(eTableType table);

    /// The same for a value of the column's own type, with all that can come of it.
    static WriteResult setField(eTableType table, const KorOdbcKey& key, int field, const CellValue& value);
    /// As pages and commands write. A part changes the users of its whole, so the question is asked for the
    /// whole; and it is asked for whatever several records use.
    static WriteResult setAttributeValue(eTableType table, const KorOdbcKey& key, int field,
                                         const CellValue& value);
    /// Changes the parts of a row by `writeNow`, after the question where the row is shared.
    using Write = std::function<WriteResult()>;
    static WriteResult changeParts(RowRef whole, const Write& writeNow);
    /// Appends the layer's current record of the table as a new row of the current source and gives it its
    /// new key (see `StyleDatabases::append`). Nobody is asked: nothing uses a new row.
    static WriteResult appendCurrentRecord(eTableType table);

    /// Announces a write that was made without a question, or tells the user why it failed. Returns whether
    /// it is stored.
    static bool announce(const WriteResult& result);

    /// Whether one of the four functions would ask about a write to this row.
    static bool needsConfirmation(eTableType table, const KorOdbcKey& key);

private:
    /// The record about which to ask, or nothing.
    using FindShared = std::function<std::optional<RowRef>()>;
    /// What came of a write, and the answer as it was given; `kWrite` where nobody was asked.
    struct Answered {
        WriteResult result = {};
        int answer = kWrite;

        int code() const { return result.isFailed() ? 0 : answer; }
    };

    static Answered write(const Result<>& judgedBy, const FindShared& findShared, const Write& writeNow);
    /// Asks where the row itself is shared.
    static Answered writeRow(eTableType table, const KorOdbcKey& key, int field, const Write& writeNow);
    static Answered writeRow(eTableType table, const KorOdbcKey& key, int field, const CellValue& value);
};
