#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

#include <map>
#include <memory>
#include <set>
#include <vector>

/// The rows that changes concern as they were before their source is read again. It names those that are
/// gone, and tells when another record came to a key.
class RowsBefore {
public:
    /// The source must outlive the object.
    explicit RowsBefore(StyleSource& source) : m_source(source) {}

    /// Takes a copy of the row as it is shown. Nothing is taken of a table that was not read.
    void remember(RowRef row);
    /// What the row, of which nothing else may be known, was called.
    void noteName(RowRef row, const KorString& name) { m_names[row] = name; }
    /// What the row, which is remembered, has stored in a cell that shows something else.
    void noteStored(RowRef row, const Column& column, const CellValue& stored);
    /// Takes a row that is not shown any more.
    void noteDeleted(const TableSchema& table, const StructRecord& stored);
    /// To be called when all is taken, and before the source is read again.
    void noteUsers();
    /// To be called when the source was read again, and nothing was changed in it yet.
    void compare();

    /// The row as it was shown, or null where it is not known.
    std::shared_ptr<const StructRecord> shown(RowRef row) const;
    /// What the row was called; empty where that is not known.
    KorString nameOf(RowRef row) const;
    /// The row as it was stored, or null where it is not known.
    const StructRecord* stored(RowRef row) const;
    /// Whether the record has ceased to be there. Neither its name nor its other values need stay the same,
    /// but where both changed something else must tell that it is no new record with an old key: that which
    /// it identifies, or what identified or used it, and still does under the old name.
    bool isGone(RowRef row) const;
    /// Whether the key of the row has come to another record.
    bool isOther(RowRef row) const { return m_others.contains(row); }

private:
    struct User {
        RowRef row;
        const Column* column = nullptr;
        KorString name;
    };
    struct Known {
        std::shared_ptr<StructRecord> shown;
        std::shared_ptr<StructRecord> stored; ///< null where it is as shown
        std::vector<User> users;

        const StructRecord* before() const { return stored ? stored.get() : shown.get(); }
    };

    bool isStillUsed(const Known& known, std::int32_t key) const;
    bool hasOtherRecord(RowRef row, const Known& known) const;

    StyleSource& m_source;
    std::map<RowRef, Known> m_rows;
    std::map<RowRef, KorString> m_names;
    std::set<RowRef> m_others;
};
