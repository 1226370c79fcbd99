#pragma once

#include "operations/KorOdbcMan.h"
#include "operations/StyleReads.h"
#include "records/RowRef.h"

/// What a record of the current source depends on, for commands that copy records, and what such copies are
/// called.
class KorDetailTableDependencies {
public:
    /// Fills `record` from the row `key` and gathers all rows that it depends on. Return 1, or 0 when there
    /// is no such row; then the record is untouched and nothing is gathered.
    int GetDependencies(StructDetObjQualifierSet& record, const KorOdbcKey& key) {
        return gather(record, key);
    }
    int GetDependencies(StructDetViewDimRequestLinear& record, const KorOdbcKey& key) {
        return gather(record, key);
    }
    int GetDependencies(StructDetObjAnnotationStrategy& record, const KorOdbcKey& key) {
        return gather(record, key);
    }
    /// Gathers all rows that a detail style depends on, with its master. Returns 1, or 0 without such a
    /// style.
    int GetDependenciesByDetailKey(const KorOdbcKey& key) { return gatherRows({kTableDetailStyle, key}); }

    /// Writes `record` into the row `key`, or appends it where `key` is no row and gives it its new key. An
    /// appended record that still carries the key of another row gets copies of that row's parts. Return 1,
    /// or a code below 1 of `WriteResult`.
    int Save(StructDetObjQualifierSet& record, const KorOdbcKey& key) { return store(record, key); }
    int Save(StructDetViewDimRequestLinear& record, const KorOdbcKey& key) { return store(record, key); }
    int Save(StructDetObjAnnotationStrategy& record, const KorOdbcKey& key) { return store(record, key); }
    /// The same for a master row. Where another row has its pair of numbers already, it gets the first free
    /// number above its own.
    int Save(StructDetailMaster& record, const KorOdbcKey& key);

    /// The gathered rows, each once: the record itself first.
    const std::vector<RowRef>& rows() const { return m_rows; }
    /// Makes one of the gathered rows (from 0) the current one. Returns 1, or 0 when there is no such row.
    int SetRowNr(int row);
    /// The current gathered row; `kNoTable` without one.
    RowRef currentRow() const;

    /// To be called before a deep copy, an export or an import begins: nobody has cancelled it yet.
    static void ResetDeepCopyInfo() { m_bDeepCopyCanceledByUser = false; }
    /// Set from outside (by the progress display) to end a deep copy, an export or an import; what it did so
    /// far is taken back.
    inline static bool m_bDeepCopyCanceledByUser = false;

    /// Proposes a free name for a new row of the current source: made from `name` where that is given, else
    /// from what the table's rows are called, with the first free number behind it. Returns 1, or 0 without a
    /// source or table; then `name` is untouched.
    static int GetDefaultNameForRow(eTableType table, KorString& name);

private:
    int gatherRows(RowRef row);

    template <typename R>
    int gather(R& record, const KorOdbcKey& key) {
        return gatherRows({tableOf<R>, key}) == 1 ? StyleReads::read(key, record) : 0;
    }

    template <typename R>
    int store(R& record, const KorOdbcKey& key) {
        return storeRow(tableOf<R>, record, key);
    }
    static int storeRow(eTableType table, StructRecord& record, const KorOdbcKey& key);

    std::vector<RowRef> m_rows;
    std::size_t m_rowNumber = 0;
};
