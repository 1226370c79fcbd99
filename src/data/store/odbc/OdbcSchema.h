#pragma once

#include "data/store/odbc/OdbcDatabase.h"

/// The schema of styles in a database on a server: making it, bringing it forward, and telling what it is.
class OdbcSchema {
public:
    explicit OdbcSchema(OdbcDatabase& database, const SchemaHistory& history = SchemaHistory::own())
        : m_database(database), m_history(history) {}

    /// What the state of a database says.
    struct State {
        int version = 0;
        std::int64_t lastChange = 0;
    };
    /// Reads it. Fails where there are no styles, or those of another program.
    Result<> read(State& state);
    /// SQL that selects the number of the last change.
    std::string lastChangeSql() const;

    /// Makes a schema with empty tables and three roles, all or nothing. Fails where there are styles
    /// already.
    Result<> create();
    /// Brings an earlier version to the current one, in one transaction in which nobody else can. `from`
    /// becomes the version that it had.
    Result<> upgrade(int& from);

private:
    Result<> makeAll();
    Result<> bringForward(int& from);
    Result<> addVersion(int number);
    Result<> noteVersion(int number);
    std::vector<std::string> ownTables() const;

    OdbcDatabase& m_database;
    const SchemaHistory& m_history;
};
