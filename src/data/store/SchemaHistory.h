#pragma once

#include "data/store/StoredColumns.h"

#include <functional>

/// What the SQL of tables and columns is made of.
struct SchemaWords {
    std::function<std::string(const std::string&)> table = &quotedIdentifier;
    std::function<std::string(const std::string&)> column = &quotedIdentifier;
    const char* textType = "TEXT";
    const char* realType = "REAL";
};

/// One version of the schema.
struct SchemaVersion {
    int number = 1;
    std::string purpose; ///< what it is for, in a few words
    /// SQL that converts what an earlier version stored; run when what the version adds is there.
    std::vector<std::string> statements = {};
};

/// How databases grow: the versions of the schema in their order, and the tables and columns that each of
/// them added. What a version adds follows from the declarations; what it converts is written out.
class SchemaHistory {
public:
    static constexpr std::int32_t kApplicationId = 0x44534442; ///< "DSDB" in the header of every database

    /// `versions` count up by one; `tables` must outlive the history.
    SchemaHistory(const std::vector<TableSchema>& tables, std::vector<SchemaVersion> versions);
    /// That of this program.
    static const SchemaHistory& own();

    const std::vector<TableSchema>& tables() const { return m_tables; }
    const std::vector<SchemaVersion>& versions() const { return m_versions; }
    int oldest() const { return m_versions.front().number; }
    int current() const { return m_versions.back().number; }

    /// The SQL that makes all tables of the current version.
    std::vector<std::string> creation(const SchemaWords& words = {}) const;
    /// The SQL that adds what is of this version to a database with these columns, as far as it is not there.
    std::vector<std::string> additions(int version, const StoredColumns& stored,
                                       const SchemaWords& words = {}) const;

private:
    const std::vector<TableSchema>& m_tables;
    std::vector<SchemaVersion> m_versions;
};
