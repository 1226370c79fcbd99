#pragma once

#include "model/KorDSMRowChange.h"
#include "records/WriteResult.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class KorDSMCopiedRows;
enum class eNamesakes : std::uint8_t;

/// A list that is edited where it stands: what one record consists of, in its order. It knows its rows by
/// keys, which hold until the next command. The commands write to the record's own source, each as one step
/// of undo, after the question where the record is shared.
class KorDSMEditedList {
public:
    using Keys = std::vector<std::int32_t>;

    /// The list of these parts of a record. Where `parts` is the record's own table it is the list of the
    /// records in its slots.
    static std::unique_ptr<KorDSMEditedList> of(SourceId source, RowRef whole, eTableType parts);

    virtual ~KorDSMEditedList() = default;

    SourceId source() const { return m_source; }
    RowRef whole() const { return m_whole; }
    /// The table of the columns below.
    const TableSchema& table() const { return m_table; }
    /// The columns to show, in the order of their numbers.
    virtual std::vector<const Column*> cells() const = 0;
    /// Columns of the records that stand in the list, which are only shown behind those.
    virtual std::vector<const Column*> details() const { return {}; }
    /// Whether the rows have names of their own.
    virtual bool hasNames() const = 0;
    /// Whether a row can stand without a value in its first cell.
    virtual bool canBeEmpty() const = 0;
    /// Whether the rows have an order of their own; otherwise they stand as they were made.
    virtual bool isOrdered() const = 0;
    /// Why so many more rows cannot be added, in one sentence; empty when they can.
    virtual KorString whyFull(std::size_t) const { return {}; }
    /// The rows from the top down.
    virtual Keys keys() const = 0;

    /// Where the value of a row stands that belongs to one of `cells` or `details`, or to the name.
    struct Cell {
        RowRef row;
        const Column* column = nullptr;
    };
    virtual Cell cell(std::int32_t key, const Column& column) const = 0;
    CellValue value(std::int32_t key, const Column& column) const;
    /// As users read it.
    KorString text(std::int32_t key, const Column& column) const;
    /// The record that stands in the list: a part of the whole, or one that it refers to.
    virtual RowRef record(std::int32_t key) const = 0;
    /// The table of such records.
    virtual eTableType recordTable() const = 0;
    /// Its name.
    KorString name(std::int32_t key) const;

    /// What a command came to. Of a write that failed the user was told already.
    struct Outcome : WriteResult {
        Keys selected = {};                        ///< the rows to be selected now
        std::vector<KorDSMRowChange> changes = {}; ///< for the items that show the rows
        bool isTold = false;                       ///< whether the user was told of the failure
    };

    /// A new row behind the row `after`, at the end where there is no such row: with defaults, or with this
    /// value in its first cell, which it must have where a row cannot be empty.
    Outcome add(std::int32_t after, const std::optional<CellValue>& first = {});
    /// Selects the row that takes the place of the first one.
    Outcome remove(const Keys& rows);
    /// Copies of the rows behind the last of them.
    Outcome duplicate(const Keys& rows);
    /// Puts the rows, in the order that they have, before the one that stands at `place`, or at the end. No
    /// change is done without a step. Only for a list with an order.
    Outcome moveTo(const Keys& rows, int place);
    /// The same by `step` rows up (negative) or down, as far as there is room.
    Outcome moveBy(const Keys& rows, int step);
    /// Writes one column of several rows.
    Outcome set(const Keys& rows, const Column& column, const CellValue& value);

    /// The rows as text: a line for each, with its name and its cells as users read them, tabs between them.
    KorString textOf(const Keys& rows) const;
    /// New rows behind the row `after`, all or none; at the end where there is no such row. What they name
    /// comes along where the source does not have it; `namesakes` says what becomes of what it has under the
    /// same name with another content.
    Outcome paste(std::int32_t after, std::shared_ptr<KorDSMCopiedRows> copied, eNamesakes namesakes);
    /// Writes one column as copied rows have it, all or none: that of the one that was copied into all these
    /// rows, or of as many into one each.
    Outcome pasteCells(const Keys& rows, const Column& column, std::shared_ptr<KorDSMCopiedRows> copied,
                       eNamesakes namesakes);

protected:
    /// A row to be made.
    struct NewRow {
        KorString name;
        std::vector<CellValue> values; ///< one for each of `cells`; empty: defaults
    };

    KorDSMEditedList(SourceId source, RowRef whole, const TableSchema& table)
        : m_source(source), m_whole(whole), m_table(table) {}
    KorDSMEditedList(const KorDSMEditedList&) = default;

    /// What a step is called that adds to the list.
    KorString addingCaption() const;

    // They write within the step of a command. `made` gets the keys that new rows have then.
    virtual WriteResult insertRows(std::size_t place, const std::vector<NewRow>& rows, Keys& made) = 0;
    virtual WriteResult copyRows(const Keys& rows, std::size_t place, Keys& made) = 0;
    virtual WriteResult removeRows(const Keys& rows) = 0;
    /// Gives all rows of the list this order.
    virtual WriteResult arrange(const Keys& order) = 0;

private:
    /// What a command does with rows of a list: of this one, or of that of a copy of its whole.
    using Write = std::function<WriteResult(KorDSMEditedList& list, const Keys& rows, Outcome& outcome)>;
    Outcome change(const KorString& caption, const Keys& rows, const Write& write);
    void wishForCopy(const Keys& rows, const Write& write) const;
    KorString caption(int one, int many, std::size_t count) const;
    KorString changeCaption(const Keys& rows, const Column& column) const;
    WriteResult writeCells(const Keys& rows, const Column& column,
                           const std::vector<CellValue>& values) const;
    std::size_t placeBehind(std::int32_t key) const;

    SourceId m_source;
    RowRef m_whole;
    const TableSchema& m_table;
};
