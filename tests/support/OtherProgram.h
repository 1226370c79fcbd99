#pragma once

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <string>

/// Another program at work on a database file.
class OtherProgram {
public:
    explicit OtherProgram(const std::string& path) { sqlite3_open(path.c_str(), &m_db); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    ~OtherProgram() { sqlite3_close_v2(m_db); }
    void run(const std::string& sql) { EXPECT_TRUE(tries(sql)) << sqlite3_errmsg(m_db) << " in " << sql; }
    /// The same where the database may be in use. Returns whether all was done.
    bool tries(const std::string& sql) {
        return sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }

private:
    sqlite3* m_db = nullptr;
};
