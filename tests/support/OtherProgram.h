#pragma once

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <string>

/// Another program at work on a database file.
class OtherProgram {
public:
    explicit OtherProgram(const std::string& path) { sqlite3_open(path.c_str(), &m_db); }
    ~OtherProgram() { sqlite3_close_v2(m_db); }
    void run(const std::string& sql) {
        char* error = nullptr;
        sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, &error);
        EXPECT_EQ(error, nullptr) << error << " in " << sql;
        sqlite3_free(error);
    }

private:
    sqlite3* m_db = nullptr;
};
