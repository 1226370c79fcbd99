#pragma once

#include "data/store/StyleStore.h"
#include "data/store/odbc/OdbcConnection.h"
#include "data/store/odbc/OdbcDialect.h"
#include "data/store/odbc/OdbcFault.h"
#include "data/store/odbc/ServerAddress.h"

#include <map>
#include <optional>

/// A database on a server with what is known about it: what opening, reading and writing share.
class OdbcDatabase {
public:
    OdbcDatabase(ServerAddress where, OdbcLimits limits)
        : address(std::move(where)), connection(address.name, limits) {}

    const ServerAddress address;
    OdbcConnection connection;
    std::unique_ptr<OdbcDialect> dialect; ///< null before the first connection
    OdbcError opened;                     ///< what came of the last one

    /// The cells that were read as something else than they hold, with what they hold, none for NULL: a write
    /// that mends one must find it unchanged.
    std::map<std::pair<const Column*, std::int32_t>, std::optional<std::string>> unreadable;

    const std::string& name() const { return address.name; }
    Result<> failure(const OdbcError& error) const { return serverFault(error, name()); }
    Result<> fault(eServerFault fault, const std::string& detail = {}) const {
        return serverFault(fault, name(), detail);
    }

    /// Opens a connection, in the place of the one before, and finds out whether it can be trusted.
    Result<> connect();
    /// Runs SQL that yields nothing of interest.
    Result<> execute(const std::string& sql) { return failure(connection.execute(sql)); }
    /// The same of several statements, one after the other, until one fails.
    Result<> execute(const std::vector<std::string>& statements);
    /// The first cell of the first row; none where there is none.
    Result<> queryInteger(const std::string& sql, std::optional<std::int64_t>& value);

    /// The layout of `table`, valid until `forgetLayouts`.
    Result<> layoutOf(const TableSchema& table, const TableLayout*& layout);
    /// Which tables and columns there are.
    Result<> readColumns(StoredColumns& columns);
    /// For when another program may have changed the tables.
    void forgetLayouts() {
        m_layouts.clear();
        m_columns.reset();
    }

private:
    std::optional<StoredColumns> m_columns;
    std::map<const TableSchema*, TableLayout> m_layouts;
};
