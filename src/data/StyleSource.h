#pragma once

#include "data/KorDSNDefinitions.h"
#include "data/ReferenceIndex.h"
#include "data/StyleTable.h"
#include "data/store/StyleStore.h"

#include <array>

/// One style database with what has been read of it. A table is read whole, by one query, when it is first
/// touched; from then on reads are look-ups in memory and see pending changes.
class StyleSource {
public:
    StyleSource(SourceId id, std::unique_ptr<StyleStore> store) : m_id(id), m_store(std::move(store)) {}

    SourceId id() const { return m_id; }
    StyleStore& store() { return *m_store; }
    bool isReadOnly() const { return m_store->isReadOnly(); }

    /// The table, read on first use. A table that cannot be read is empty, and `problems` tells why.
    StyleTable& table(eTableType type);
    bool isLoaded(eTableType type) const { return m_tables[static_cast<std::size_t>(type)] != nullptr; }

    /// Cells that refer to this row, whatever their role. Reads the tables that can refer to it.
    std::vector<Referrer> referrersOf(eTableType target, KorOdbcKey key);

    bool setCell(eTableType type, KorOdbcKey key, const Column& column, const CellValue& value);
    void insert(eTableType type, const StructRecord& record);
    void remove(eTableType type, KorOdbcKey key);

    /// Forgets all that was read, so that the next touch reads it again.
    void dropTables();

    /// What could not be read as declared, in the order in which it was met.
    const std::vector<ReadProblem>& problems() const { return m_problems; }

private:
    ReferenceIndex& references(eTableType target);
    // The index that the cells of this column are in, or null while nobody has asked for it.
    ReferenceIndex* builtReferences(const Column& column);
    void updateReferences(const TableSchema& table, const StructRecord& record, bool added);

    SourceId m_id;
    std::unique_ptr<StyleStore> m_store;
    std::array<std::unique_ptr<StyleTable>, kEndOfTables> m_tables;
    std::array<std::unique_ptr<ReferenceIndex>, kEndOfTables> m_references;
    std::vector<ReadProblem> m_problems;
};
