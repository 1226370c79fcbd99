#pragma once

#include "model/KorDSMRowChange.h"
#include "records/WriteResult.h"

#include <string_view>
#include <vector>

/// A list that is edited where it stands: the parts of one record, in their order. What it shows of them
/// comes from the declaration of their table: all columns but the name, the reference to the whole, and the
/// order. The commands write to the record's own source, each as one step of undo, after the question where
/// the record is shared. After each of them an order is 1, 2, ... without gap or tie.
class KorDSMPartList {
public:
    using Keys = std::vector<std::int32_t>;

    /// `parts` has a column by which its rows are parts of rows of the whole's table.
    KorDSMPartList(SourceId source, RowRef whole, eTableType parts);

    /// The tables whose rows are listed as parts of rows of this table.
    static std::vector<eTableType> listedParts(eTableType whole);

    RowRef whole() const { return m_whole; }
    const TableSchema& table() const { return m_table; }
    /// The columns to show, in the order of their numbers.
    std::vector<const Column*> cells() const;
    /// Whether the rows have an order of their own; otherwise they stand as they were made.
    bool isOrdered() const { return m_order != nullptr; }
    /// The rows from the top down; of equal orders the older row first.
    Keys keys() const;
    const StructRecord* row(std::int32_t key) const;

    /// What a command came to. Of a write that failed the user was told already.
    struct Outcome : WriteResult {
        Keys selected = {};                        ///< the rows to be selected now
        std::vector<KorDSMRowChange> changes = {}; ///< for the items that show the rows
        bool isTold = false;                       ///< whether the user was told of the failure
    };

    /// A new row with defaults behind the row `after`; at the end where there is no such row.
    Outcome add(std::int32_t after);
    /// Selects the row that takes the place of the first one.
    Outcome remove(const Keys& rows);
    /// Copies of the rows behind the last of them.
    Outcome duplicate(const Keys& rows);
    /// Puts the rows, in the order that they have, before the one that stands at `place`, or at the end. No
    /// change is done without a step. Only for a list with an order.
    Outcome moveTo(const Keys& rows, int place);
    /// The same by `step` rows up (negative) or down, as far as there is room.
    Outcome moveBy(const Keys& rows, int step);
    /// The rows as text: a line for each, with its name and its cells as users read them, tabs between them.
    KorString textOf(const Keys& rows) const;
    /// New rows from such a text behind the row `after`, all or none; at the end where there is no such row.
    /// What a cell names must be in the list's source.
    Outcome paste(std::int32_t after, const KorString& text);
    /// Writes one column of several rows.
    Outcome set(const Keys& rows, const Column& column, const CellValue& value);

private:
    /// Does `write` as one step of undo with this caption; `write` returns a write result.
    template <typename Write>
    Outcome change(const KorString& caption, Write write);
    KorString caption(int one, int many, std::size_t count) const;
    WriteResult number(const Keys& rows);
    Keys without(const Keys& rows) const;
    WriteResult append(StructRecord& record);
    std::shared_ptr<StructRecord> read(std::string_view line, std::string& error) const;

    SourceId m_source;
    RowRef m_whole;
    const TableSchema& m_table;
    const Column* m_owner = nullptr;
    const Column* m_order = nullptr;
};
