#pragma once

#include "data/store/odbc/OdbcBlock.h"
#include "data/store/odbc/OdbcError.h"
#include "data/store/odbc/OdbcLibrary.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

/// What the thread of a connection works on. It belongs to the thread while a job runs, and to the caller
/// otherwise.
struct OdbcLine {
    explicit OdbcLine(const OdbcLibrary& odbc) : library(odbc) {}
    ~OdbcLine() { disconnect(); }
    OdbcLine(const OdbcLine&) = delete;
    OdbcLine& operator=(const OdbcLine&) = delete;

    /// Does jobs until the owner leaves; then ends the connection.
    static void serve(const std::shared_ptr<OdbcLine>& line);

    /// As `OdbcConnection` says of those that it calls by these.
    OdbcError connect(const std::string& text, std::chrono::seconds limit);
    OdbcError setTransactions(bool on);
    OdbcError end(bool keep);
    OdbcError execute(const std::string& sql);
    OdbcError query(const std::string& sql);
    /// The first result of the SQL that has columns. Without rooms all columns have the same.
    OdbcError select(const std::string& sql, const std::vector<std::size_t>& rooms);
    /// Fills `block`, whichever that is by now.
    OdbcError fetch();
    void endSelect();

    const OdbcLibrary& library;
    std::mutex mutex;
    std::condition_variable changed;
    std::function<OdbcError(OdbcLine&)> job; ///< that waits or runs
    bool isLeft = false;
    bool isEnded = false; ///< after that

    OdbcError result; ///< of the last job
    std::string engine;
    std::string quote;
    std::int64_t rows = -1;
    OdbcRows found;
    OdbcBlock block;

private:
    void disconnect();
    OdbcError errorOf(SQLSMALLINT type, SQLHANDLE handle, bool isConnecting = false) const;
    OdbcError checked(SQLRETURN code) const;
    OdbcError openStatement();
    OdbcError bind();
    std::string info(SQLUSMALLINT what) const;

    SQLHENV m_environment = SQL_NULL_HENV;
    SQLHDBC m_connection = SQL_NULL_HDBC;
    SQLHSTMT m_statement = SQL_NULL_HSTMT;
    SQLULEN m_fetched = 0;
    std::vector<std::size_t> m_rooms;
    std::size_t m_rowsOfBlock = 0;
};
