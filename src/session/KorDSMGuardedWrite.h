#pragma once

#include "operations/KorOdbcMan.h"
#include "records/RowRef.h"

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
    /// "odbcResult > 0" where the layer reports below 1) or nobody can say whether the row is shared, because
    /// the source is not complete; the host report then says why. A write that replaces a cell that could not
    /// be read is asked about as if the row were shared.
    static int setAttributeString(eTableType table, const KorOdbcKey& key, int field, const KorString& text,
                                  int flags);
    static int setAttributeInt(eTableType table, const KorOdbcKey& key, int field, long value);
    static int setAttributeDouble(eTableType table, const KorOdbcKey& key, int field, double value);
    /// The same for a value of the column's own type, as pages and the command line write it. A part changes
    /// the users of its whole, so the question is asked for the whole; and it is asked for appearances too.
    static int setAttributeValue(eTableType table, const KorOdbcKey& key, int field, const CellValue& value);
    /// Changes the parts of a row by `writeNow`, which returns a write result, after the question where the
    /// row is shared.
    static int changeParts(RowRef whole, const std::function<int()>& writeNow);
    /// Stores the layer's current record of the table.
    static int storeCurrentRecord(eTableType table);

    /// Whether one of the four functions would ask about a write to this row.
    static bool needsConfirmation(eTableType table, const KorOdbcKey& key);

private:
    /// The record about which to ask, or nothing.
    using FindShared = std::function<std::optional<RowRef>()>;

    /// The answer for a row that several others use.
    static int ask(RowRef shared);
    static int write(bool canJudge, const FindShared& findShared, const std::function<int()>& writeNow);
    /// Asks where the row itself is shared.
    static int writeRow(eTableType table, const KorOdbcKey& key, int field,
                        const std::function<int()>& writeNow);
};
