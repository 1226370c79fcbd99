#pragma once

#include "data/CellRules.h"
#include "records/RowRef.h"

/// How much a finding matters.
enum class eSeverity : std::uint8_t {
    kNote,    ///< nothing is wrong, but a user may want to tidy up
    kWarning, ///< works, but not as somebody would expect
    kError,   ///< something is lost or does not work
};

/// One thing found in a style database.
struct Finding {
    eSeverity severity = eSeverity::kNote;
    const TableSchema* table = nullptr; ///< null when the file as a whole is concerned
    std::int32_t key = 0;               ///< of the row, or 0
    KorString name = {};                ///< of the row
    const Column* column = nullptr;     ///< null when the whole row is concerned
    std::string sentence = {};          ///< for the user: names the file and the row and says what to do
};

/// Looks through one source, pending changes included: damage of the file, cells that could not be read,
/// references that point nowhere, parts without an owner, cells outside their range, run names that occur
/// twice, definitions that nothing uses or that lack something, entries that can never act, lists with gaps
/// or ties in their order, and detail styles that the host is not told of.
class ConsistencyCheck {
public:
    explicit ConsistencyCheck(StyleSource& source) : m_source(source) {}

    /// All findings: those of the file first, then table by table in the order of keys. Reads every table.
    std::vector<Finding> run();
    /// Of these rows what refers to rows that do not exist, one sentence for each cell.
    std::vector<std::string> danglingReferences(const std::vector<RowRef>& rows);

private:
    void checkFile();
    void checkTable(const TableSchema& table);
    void checkCells(const TableSchema& table, const StructRecord& row);
    bool isSure(const Column& column, eCellFault fault) const;
    void checkCell(const TableSchema& table, const StructRecord& row, const Column& column, eCellFault fault);
    /// Of the entries of a map the first whose qualifier set fits an object acts; a later one with the same
    /// set never does.
    void checkEntriesThatNeverAct();
    /// Lists whose stored order has gaps or ties.
    void checkOrders();
    /// What a record lacks before drawings can be made with it.
    void checkSlots(const TableSchema& table, const StructRecord& row);
    void checkMissing(const TableSchema& table, const StructRecord& row);
    void checkUse(const TableSchema& table, const StructRecord& row);
    bool isReferredTo(const TableSchema& table, const StructRecord& row, eReferenceRole role);
    /// Puts the sentence together: the row's kind, name and key and the database, then the arguments.
    void add(Finding finding, const KorString& pattern, const KorString& first = {},
             const KorString& second = {}, const KorString& third = {});

    StyleSource& m_source;
    std::vector<Finding> m_findings;
    bool m_isComplete = false;
};
