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
    /// already, and where the role of its maintainers is there, for a schema of the same name in another
    /// database of the server, and the user does not have it.
    Result<> create();
    /// Who had one of the roles already when the schema was made, each with the role: "anna (styles_editor)".
    const std::vector<std::string>& formerUsers() const { return m_formerUsers; }
    /// Brings an earlier version to the current one, in one transaction in which nobody else can. `from`
    /// becomes the version that it had.
    Result<> upgrade(int& from);

private:
    Result<> makeAll();
    Result<> lookForRoles(std::vector<std::string>& existing);
    Result<> bringForward(int& from);
    Result<> addVersion(int number);
    Result<> noteVersion(int number);
    std::vector<std::string> ownTables() const;

    OdbcDatabase& m_database;
    const SchemaHistory& m_history;
    std::vector<std::string> m_formerUsers;
};
