#pragma once

#include "base/KorExport.h"
#include "operations/KorDSNManager.h"
#include "records/DimensionRecords.h"
#include "records/StyleRecords.h"
#include "records/TableDeclarations.h"
#include "records/ViewRecords.h"
#include "records/WriteResult.h"

/// Writes, commits and the current source. Operations act on the current source. Writes return exactly 1
/// on success; a result below 1 is a failure.
class KorOdbcMan {
public:
    using eTableType = ::eTableType;

    /// How far a write follows dependent rows. The editor always passes 0.
    enum eCopyDepth : int { kThisRow = 0 };

    DETAILSTYLES_API static eDSN getCurrentDSN();
    DETAILSTYLES_API static void setCurrentDSN(eDSN dsn);
    DETAILSTYLES_API static eIndex getCurrentAddIn();
    DETAILSTYLES_API static void setCurrentAddIn(eIndex index);

    /// True in a maker's installation, where every source may be edited.
    static bool isCurrentOwnerVEL();
    /// False when the current source must not be edited.
    DETAILSTYLES_API static bool getEditableStatus();

    /// Writes one column of one row of the current source. The change is pending until one of the
    /// setStatus... operations ends it. Integers also serve real columns and the other way round where no
    /// digit is lost; a value that does not fit its column fails.
    static int setAttribute(eTableType table, const KorOdbcKey& key, int column, long value, eCopyDepth);
    static int setAttribute(eTableType table, const KorOdbcKey& key, int column, double value, eCopyDepth);
    /// `flags` is kept for callers and has no meaning.
    static int setAttribute(eTableType table, const KorOdbcKey& key, int column, const KorString& value,
                            int flags);

    /// Appends the current record of the table as a new row and gives the record the new row's key. Where
    /// the record still carries the key of a row, that row's parts are copied too; `copied` is 1 when a
    /// command duplicates a record.
    static int appendNewRecord(eTableType table, int copied, eCopyDepth);
    /// Deletes a row and its parts.
    static int deleteRecord(eTableType table, const KorOdbcKey& key, eCopyDepth);
    /// Writes every column in which the current record of the table differs from its row.
    static int storeCurrentRecord(eTableType table, eCopyDepth);
    /// Key of the current record of the table: that of the new row after an append.
    static KorOdbcKey getRecordKey(eTableType table);

    /// End the pending changes of one table in every source: keep them and close, keep them and go on, or
    /// take them back, at once. The editor calls them for all 48 table types in ascending order, as one
    /// `StyleDatabases::CommitWalk`. Return 1, or 0 when something could not be kept; then its pending
    /// changes are still there and `StyleDatabases::commitReport` says why.
    static int setStatusOnOK(eTableType table, eCopyDepth);
    static int setStatusOnUpdate(eTableType table, eCopyDepth);
    static int setStatusOnCancel(eTableType table, eCopyDepth);

    /// The current record of a table: the process-wide record that `appendNewRecord` appends.
    template <typename R>
    static R& currentRecord() {
        return static_cast<R&>(currentRecord(tableOf<R>));
    }
    static StructRecord& currentRecord(eTableType table);

    static StructDetailStyle& m_structDetailStyle;
    static StructDetailMaster& m_structDetailMaster;
    static StructDetViewRequest& m_structDetViewRequest;
    static StructDetViewLengthClip& m_structDetViewLengthClip;
    static StructDetViewDimStrategyItem& m_structDetViewDimStrategyItem;
    static StructDetRequestType& m_structDetRequestType;
    static StructLinetypes& m_structLinetypes;

    /// Number of the first column after the plain ones, per table type: for detail styles the column of
    /// their first view slot.
    static const std::array<int, kNumberOfTableTypes> m_numberOfColumns;

    // Between host and editor; all are 0 at first.
    DETAILSTYLES_API static int m_DSMNewReloadInfo; ///< non-zero: the editor must load its sections anew
    DETAILSTYLES_API static int m_DSMReloadInfo;    ///< non-zero: the host must reload the style information
    DETAILSTYLES_API static int m_DSMResetDetViewRequestCache; ///< non-zero: and drop its view requests
};

/// Compacting of the detail tables: rows of auxiliary tables that nothing refers to are removed.
class KorOdbcCompactDetailsTables {
public:
    enum eCompactType : int { kUnusedParts = 0 };

    /// Set when a compact run changed something, cleared by the editor's OK.
    DETAILSTYLES_API static bool m_bCompactPerformed;

    /// Deletes the parts whose owner is gone from the source's tables (pending, as every change, in one
    /// group); of the add-ins the current one is meant. `mode` is kept for callers and has no meaning.
    /// Returns the number of rows removed, or -1 when the source is not open, may not be edited, or not all
    /// of it could be read.
    static int startCompactProcess(eDSN dsn, int mode, eCompactType type);
};
