#pragma once

#include "data/StyleTable.h"
#include "data/store/StoredSince.h"
#include "records/KorDSNDefinitions.h"
#include "records/Referrer.h"

#include <array>
#include <map>
#include <optional>
#include <set>

class ReferenceIndex;

/// What rows of a source were before they were changed; null for those that were not there.
struct RowJournal {
    std::map<RowRef, std::shared_ptr<StructRecord>> before;
    bool isWhole = true; ///< false where rows were read anew

    void note(const StyleTable& table, std::int32_t key);
};

/// One style database with what has been read of it. A table is read whole, by one query, when it is first
/// touched; from then on reads are look-ups in memory and see pending changes.
class StyleSource {
public:
    StyleSource(SourceId id, std::unique_ptr<StyleStore> store);
    ~StyleSource();

    SourceId id() const { return m_id; }
    StyleStore& store() { return *m_store; }
    bool isReadOnly() const { return m_store->isReadOnly(); }

    /// The table, read on first use. A table that cannot be read is empty, and `problems` tells why: nothing
    /// must be concluded from what is absent before `complete` has been asked.
    StyleTable& table(eTableType type);
    /// Why the table is empty although the database may hold rows of it; success when it was read.
    Result<> readingOf(eTableType type);

    /// Whether the table is in memory already.
    bool isRead(const TableSchema& schema) const;

    /// Whether all tables are in memory and of one state of the database. Reads those that were not read yet
    /// or could not be read, all in one transaction. A failure is one sentence that names the file. Costs
    /// nothing once it succeeded.
    Result<> readAll();
    /// The same, and whether they hold all that is stored: no table or column is missing, no row was left
    /// out, no cell was replaced by its default, and the database is not of a newer version, which may hold
    /// what this program does not know.
    Result<> complete();
    /// Reads one table, or indexes the references to one, that nobody asked for yet, so that a later command
    /// need not. Returns whether it did: it leaves that to the command where the database cannot be read at
    /// once, was changed since, or is on a server.
    bool readAhead();
    /// Whether no row of a table that was read is left out.
    bool hasAllRows(eTableType type) const;
    /// Whether the default is shown in the place of what this cell holds.
    bool isUnreadable(KorOdbcKey key, const Column& column) const;
    /// To be told of cells that were stored: what could not be read there is replaced.
    void forgetMended(const std::vector<CellChange>& cells);
    /// Whether another program changed the database between the reading of one table and of another.
    bool isOutdated() const { return m_isOutdated; }
    void setOutdated();
    /// Whether a table could not be read.
    bool hasFailed() const { return !m_failures.empty(); }
    /// Tries the tables again that could not be read. Returns whether any of them could.
    bool readFailedAgain();

    /// Why no row, or not so many, can be appended to the table, in one sentence; empty when they can.
    std::string whyFull(eTableType type, int count = 1);

    /// Cells that refer to this row, whatever their role. Reads the tables that can refer to it.
    std::vector<Referrer> referrersOf(eTableType target, KorOdbcKey key);

    bool setCell(eTableType type, KorOdbcKey key, const Column& column, const CellValue& value);
    void insert(eTableType type, const StructRecord& record);
    void remove(eTableType type, KorOdbcKey key);

    /// Forgets all that was read, so that the next touch reads it again.
    void dropTables();
    /// The same, but reads `types` at once, in one transaction. On failure nothing is forgotten.
    Result<> readAnew(const std::set<eTableType>& types);

    /// Takes over what other programs stored, upon what is stored: nothing of what is pending may be shown.
    void take(const StoredSince& since);

    /// From now on notes what each row was before it was changed, in `journal`, which must outlive that; null
    /// ends it.
    void keepJournal(RowJournal* journal) { m_journal = journal; }

    /// What could not be read as declared, in the order in which it was met.
    const std::vector<ReadProblem>& problems() const { return m_problems; }

private:
    struct Reading;

    bool read(const TableSchema& schema, const Reading& reading);
    bool readAhead(const TableSchema& schema);
    void note(const std::string& sentence);
    void note(eTableType type, std::int32_t key);
    void takeRow(const TableSchema& table, const StructRecord& row);
    ReferenceIndex& references(eTableType target);
    // The index that the cells of this column are in, or null while nobody has asked for it.
    ReferenceIndex* builtReferences(const Column& column);
    void updateReferences(const TableSchema& table, const StructRecord& record, bool added);

    SourceId m_id;
    std::unique_ptr<StyleStore> m_store;
    std::array<std::unique_ptr<StyleTable>, kEndOfTables> m_tables;
    std::array<std::unique_ptr<ReferenceIndex>, kEndOfTables> m_references;
    std::vector<ReadProblem> m_problems;
    std::map<eTableType, std::string> m_failures; // tables that could not be read, with the reason
    std::optional<std::int64_t> m_state;          // of the database, as it was when the tables were read
    bool m_isOutdated = false;
    bool m_isAllRead = false;
    RowJournal* m_journal = nullptr;
};
