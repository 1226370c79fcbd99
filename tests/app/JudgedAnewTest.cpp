#include "app/CommandHere.h"

#include <sqlite3.h>

#include <fstream>

// Another program that stores something before each reading of a command that writes, and so takes away what
// the command has judged by.

namespace {

class JudgedAnewTest : public CommandHereTest {
protected:
    void SetUp() override {
        CommandHereTest::SetUp();
        sql("standard.dsdb", "UPDATE detail_style SET description = 'of the file'");
        std::filesystem::copy(data() / "standard.dsdb", folder() / "in.dsdb");
        sql("user.dsdb", "INSERT INTO drawing_settings (key, name) VALUES (21, 'Third');"
                         "INSERT INTO view_request_category (key, name, view_request, category) "
                         "VALUES (31, 'Part', 99, 1)");
        useUserAlone();
    }

    /// A number that a query on a database yields.
    class Query {
    public:
        explicit Query(const std::string& file) { sqlite3_open(file.c_str(), &m_db); }
        ~Query() { sqlite3_close_v2(m_db); }
        int operator()(const std::string& sql) {
            sqlite3_stmt* statement = nullptr;
            EXPECT_EQ(sqlite3_prepare_v2(m_db, sql.c_str(), -1, &statement, nullptr), SQLITE_OK) << sql;
            EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
            const int value = sqlite3_column_int(statement, 0);
            sqlite3_finalize(statement);
            return value;
        }
        bool run(const std::string& sql) {
            return sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
        }

    private:
        sqlite3* m_db = nullptr;
    };

    /// Runs the command with the writer at each place in turn. `stored` counts what the command stores: where
    /// the writer came before that, `expected` of it are there at last, and the command says `word`.
    void sweep(const std::vector<std::string>& words, const std::string& writer, const std::string& stored,
               int expected, const std::string& word) {
        const std::string user = data() / "user.dsdb";
        const std::string seen = folder() / "seen.dsdb";
        int came = 0;
        bool struck = true;
        for (int place = 1; struck && !HasFailure(); ++place) {
            Query other(user);
            bool wasFirst = false;
            Outcome outcome;
            {
                const FaultVfs vfs(place, [&] { wasFirst = other(stored) == 0 && other.run(writer); });
                outcome = runHere(words, &vfs);
            }
            struck = outcome.struck;
            if (!wasFirst)
                continue;
            ++came;
            std::ofstream(seen, std::ios::binary) << outcome.files.at(user);
            const std::string told = outcome.said + outcome.complained;
            EXPECT_EQ(Query(seen)(stored), expected) << place << told;
            EXPECT_NE(told.find(word), std::string::npos) << place << told;
        }
        EXPECT_GT(came, 3);
    }
};

} // namespace

TEST_F(JudgedAnewTest, ANameThatWasTakenMeanwhileIsNotTakenTwice) {
    sweep({"set", "view-request", "Section", "name", "ZED"},
          "INSERT INTO view_request (key, name) VALUES (50, 'ZED')",
          "SELECT count(*) FROM view_request WHERE name = 'ZED' AND key < 50", 0, "ZED");
    sweep({"import", (folder() / "in.dsdb").string()},
          "INSERT INTO detail_style (key, name, description) VALUES (50, 'Beam 1', 'theirs')",
          "SELECT count(*) FROM detail_style WHERE name = 'Beam 1' AND description = 'of the file'", 0,
          "Beam 2");
}

TEST_F(JudgedAnewTest, ARecordThatCameToBeSharedIsNotChangedUnasked) {
    sweep({"set", "view-request", "Section", "scale", "1/7"},
          "UPDATE detail_style SET view_3 = (SELECT key FROM view_request WHERE name = 'Section')",
          "SELECT count(*) FROM view_request WHERE abs(scale - 1.0 / 7) < 0.001", 0, "--shared");
}

TEST_F(JudgedAnewTest, ARecordThatWasDeletedMeanwhileIsNotReferredTo) {
    sweep({"set", "detail-style", "Beam", "drawing_settings", "Third"}, "DELETE FROM drawing_settings",
          "SELECT count(*) FROM detail_style WHERE drawing_settings = 21", 0, "Third");
}

TEST_F(JudgedAnewTest, APartThatGotItsOwnerMeanwhileIsNotRemoved) {
    sweep({"compact"}, "INSERT INTO view_request (key, name) VALUES (99, 'Owner')",
          "SELECT 1 - count(*) FROM view_request_category WHERE key = 31", 0, "nothing to remove");
}
