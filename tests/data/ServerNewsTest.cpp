#include "StoreEngines.h"
#include "data/StyleDatabases.h"
#include "support/LineProxy.h"

#include <chrono>

// What comes in from others while a database on a server is open.

namespace {

using View = StructDetViewRequest;
using News = ServerNews::eState;

class ServerNewsTest : public testing::Test {
protected:
    ServerNewsTest() {
        m_engine.make(3);
        m_databases.addSource(kUser, open());
        m_databases.setCurrentSource(kUser);
        EXPECT_EQ(m_databases.source(kUser)->readAll().error, "");
    }
    /// By the line. Is looked at without pauses.
    std::unique_ptr<OdbcStore> open(const std::string& user = DatabaseServer::kUser) {
        using namespace std::chrono_literals;
        const ServerAddress address =
            ServerAddress::parse(DatabaseServer::connectionBy(m_line.folder(), m_schema, user), "a test")
                .value;
        return OdbcStore::open(address, OdbcStore::eMode::kWrite, {20s, 20s, 0ms, 0ms}).store;
    }
    void others(TableChange change) {
        std::vector<StoreConflict> conflicts;
        EXPECT_EQ(applyTo(*m_engine.open(false), std::move(change), conflicts).error, "");
    }
    double scaleOf(int key) {
        const auto* row =
            static_cast<const View*>(m_databases.here()->table(kTableViewRequest).find(KorOdbcKey(key)));
        return row ? row->scale : 0;
    }
    /// Looks until it is so.
    void lookUntil(const std::function<bool(const ServerNews&)>& isSo) {
        const auto end =
            std::chrono::steady_clock::now() + std::chrono::minutes(3); // after minutes it is never so
        while (!isSo(m_databases.glance().at(kUser))) {
            if (std::chrono::steady_clock::now() > end)
                throw std::runtime_error("what was looked for did not come");
            std::this_thread::yield(); // the server has its turn
        }
    }
    void lookUntil(News state) {
        lookUntil([&](const ServerNews& news) { return news.state == state; });
    }
    /// Looks until the server says this, and reads what there is then.
    OutsideChange readWhen(News state) {
        lookUntil(state);
        auto changes = m_databases.refreshNoticed();
        EXPECT_EQ(changes.size(), 1U);
        EXPECT_EQ(m_databases.glance().at(kUser).state, News::kSame) << "what was read is no news";
        EXPECT_TRUE(m_databases.refreshNoticed().empty());
        return changes.empty() ? OutsideChange() : std::move(changes.front());
    }

    const SourceId kUser = SourceId::user();
    DatabaseServer& m_server = DatabaseServer::instance();
    std::string m_schema = m_server.newSchema();
    OdbcEngine m_engine{m_server.connection(m_schema), true};
    LineProxy m_line{m_server.socket()};
    StyleDatabases m_databases;
};

} // namespace

TEST_F(ServerNewsTest, WhatOthersStoreComesInByItsRowsUponWhatIsPending) {
    ASSERT_EQ(m_databases.setCell(kTableViewRequest, KorOdbcKey(2), 10, 44.0), WriteResult::kWritten);
    auto rows = rowsOf<View>(*m_engine.open(true));
    Rows<View> added;
    added.append().key = 9;
    TableChange change = ofViews({newScale(1, 11, 99)});
    change.deleted = {rows.find(3)};
    change.appended = {&added.at(0)};
    others(std::move(change));
    lookUntil(News::kChanged);
    const int before = m_line.requests();
    const OutsideChange read = readWhen(News::kChanged);
    EXPECT_LE(m_line.requests() - before, 8) << "with those of two looks";
    EXPECT_EQ(read.error, "");
    EXPECT_TRUE(read.rows && read.conflicts.empty());
    EXPECT_EQ(scaleOf(1), 99);
    EXPECT_EQ(scaleOf(2), 44);
    EXPECT_EQ(scaleOf(3), 0);
    EXPECT_NE(m_databases.here()->table(kTableViewRequest).find(KorOdbcKey(9)), nullptr);
    EXPECT_TRUE(m_databases.pending().hasPending(kUser));

    others(ofViews({newScale(2, 12, 77)}));
    const OutsideChange conflicting = readWhen(News::kChanged);
    ASSERT_EQ(conflicting.conflicts.size(), 1U);
    EXPECT_EQ(conflicting.conflicts[0].by.user, DatabaseServer::kUser);
    EXPECT_EQ(conflicting.conflicts[0].by.when.size(), std::string("2026-11-26 10:42").size());
    EXPECT_EQ(scaleOf(2), 77);

    EXPECT_EQ(m_databases.setCell(kTableViewRequest, KorOdbcKey(2), 10, 45.0), WriteResult::kWritten);
    EXPECT_TRUE(m_databases.keepTable(kTableViewRequest)) << "what came in is what is stored";
    Rows<View> many;
    for (int key = 100; key < 2200; ++key)
        many.append().key = key;
    others(appending(many));
    EXPECT_TRUE(readWhen(News::kChanged).rows) << "tables of which many rows came are read whole";
    EXPECT_EQ(m_databases.here()->table(kTableViewRequest).rows().size(), 2103);
}

TEST_F(ServerNewsTest, WhereTheTablesOfChangesCannotTellEverythingIsReadAgain) {
    constexpr std::pair<const char*, bool> kCases[] = {
        {"UPDATE view_request SET scale = 5 WHERE key = 1; UPDATE dsdb_state SET last_change = last_change + "
         "1",
         false},
        {"DELETE FROM dsdb_change", false},
        {"DELETE FROM dsdb_commit", false},
        {"UPDATE view_request SET scale = scale", true},
    };
    double scale = 11;
    for (const auto& [sql, isTold] : kCases) {
        if (std::string(sql).find("last_change") == std::string::npos)
            others(ofViews({newScale(1, std::exchange(scale, scale + 1), scale + 1)}));
        else
            scale = 5;
        m_engine.run(sql);
        const OutsideChange read = readWhen(News::kChanged);
        EXPECT_EQ(read.rows.has_value(), isTold) << sql;
        EXPECT_EQ(scaleOf(1), scale) << sql;
    }
}

TEST_F(ServerNewsTest, WhatCouldNotBeReadIsTriedAgain) {
    m_engine.run("CREATE ROLE \"" + m_schema + "_anna\" LOGIN IN ROLE \"" + m_schema + "_editor\"");
    m_databases.addSource(kUser, open(m_schema + "_anna"));
    ASSERT_EQ(m_databases.source(kUser)->readAll().error, "");
    for (double scale = 11; const bool isPending : {true, false}) {
        if (isPending)
            m_databases.setCell(kTableViewRequest, KorOdbcKey(3), 10, 44.0);
        others(ofViews({newScale(1, scale, scale + 1)}));
        m_engine.run("DELETE FROM dsdb_change; ALTER TABLE view_request ENABLE ROW LEVEL SECURITY; "
                     "CREATE POLICY broken ON view_request USING (1 / (key - key) > 0)");
        lookUntil(News::kChanged);
        EXPECT_TRUE(mentions(m_databases.refreshNoticed().at(0).error, "refused something"));
        others(ofViews({newScale(2, scale + 1, 22)}));
        m_engine.run(
            "DROP POLICY broken ON view_request; ALTER TABLE view_request DISABLE ROW LEVEL SECURITY");
        EXPECT_EQ(scaleOf(1), scale) << "what was read is shown";
        EXPECT_EQ(readWhen(News::kChanged).error, "");
        EXPECT_EQ(scaleOf(1), ++scale) << "what the failed reading missed came too";
        EXPECT_EQ(scaleOf(2), 22);
        others(ofViews({newScale(2, 22, scale + 1)}));
        EXPECT_TRUE(readWhen(News::kChanged).rows);
        m_databases.dropTable(kTableViewRequest);
    }
}

TEST_F(ServerNewsTest, TheLastAuthorOfARowIsTold) {
    StoredSince since;
    since.authors = {{{kTableViewRequest, 1}, {"anna", "", 4}}, {{kTableViewRequest, 0}, {"bert", "", 5}}};
    EXPECT_EQ(since.authorOf({kTableViewRequest, 1}).user, "bert") << "who wrote many rows later";
    since.authors[{kTableViewRequest, 1}].number = 6;
    EXPECT_EQ(since.authorOf({kTableViewRequest, 1}).user, "anna");
    EXPECT_EQ(since.authorOf({kTableLengthClip, 1}).user, "");
}

TEST_F(ServerNewsTest, WhatWasStoredWithoutAWordConflictsByTheRowsAndHoldsNothingElseUp) {
    using enum OutsideConflict::eKind;
    for (const auto& [sql, kind] : {std::pair("UPDATE view_request SET scale = 5 WHERE key = 1", kCell),
                                    std::pair("DELETE FROM view_request WHERE key = 1", kGone)}) {
        m_databases.setCell(kTableViewRequest, KorOdbcKey(1), 10, 7.0);
        m_databases.setCell(kTableViewRequest, KorOdbcKey(2), 10, scaleOf(2) + 1);
        View mine;
        mine.name = sql;
        m_databases.append(kTableViewRequest, mine);
        m_engine.run(sql +
                     std::string("; INSERT INTO view_request SELECT (jsonb_populate_record(v, "
                                 "jsonb_build_object('key', ") +
                     std::to_string(mine.key) + ", 'name', 'Theirs'))).* FROM view_request v WHERE key = 3");
        EXPECT_TRUE(m_databases.refreshChanged().empty());
        EXPECT_FALSE(m_databases.keepTable(kTableViewRequest));
        const std::vector<OutsideChange> read = m_databases.refreshChanged();
        ASSERT_EQ(read.size(), 1U) << sql;
        ASSERT_EQ(read[0].conflicts.size(), 1U) << sql;
        EXPECT_EQ(read[0].conflicts[0].kind, kind);
        EXPECT_EQ(read[0].newKeys.at({kTableViewRequest, mine.key}), mine.key + 1);
        EXPECT_TRUE(m_databases.keepTable(kTableViewRequest)) << "nothing else was in the way";
        EXPECT_TRUE(m_databases.refreshChanged().empty());
    }
}

TEST_F(ServerNewsTest, WhereStylesAreGoneStoringFailsForThatAndNotForALostLine) {
    m_databases.setCell(kTableViewRequest, KorOdbcKey(1), 10, 7.0);
    m_engine.run("ALTER SCHEMA " + m_schema + " RENAME TO away");
    const std::vector<OutsideChange> read = m_databases.refreshChanged();
    ASSERT_EQ(read.size(), 1U);
    EXPECT_FALSE(m_databases.keepTable(kTableViewRequest));
    EXPECT_EQ(m_databases.commitReport().front().error, read[0].error);
    EXPECT_TRUE(mentions(read[0].error, "is missing")) << read[0].error;
    m_engine.run("ALTER SCHEMA away RENAME TO " + m_schema);
    EXPECT_TRUE(readWhen(News::kBack).conflicts.empty());
    EXPECT_TRUE(m_databases.keepTable(kTableViewRequest));
}

TEST_F(ServerNewsTest, ABrokenLineComesBackByItselfAndBringsWhatWasMissed) {
    m_line.strikeAt(1, LineProxy::eTrouble::kCutBefore, true);
    lookUntil(News::kLost);
    EXPECT_TRUE(m_databases.refreshNoticed().empty());
    EXPECT_EQ(scaleOf(1), 11) << "what was read can be looked at";
    others(ofViews({newScale(1, 11, 99)}));
    m_line.mend();
    EXPECT_TRUE(readWhen(News::kBack).rows);
    EXPECT_EQ(scaleOf(1), 99);
    EXPECT_TRUE(m_databases.source(kUser)->complete().ok());
}

TEST_F(ServerNewsTest, OthersAndTheRowsThatTheyAreChangingAreTold) {
    StyleDatabases others;
    others.addSource(kUser, open());
    others.setCurrentSource(kUser);
    this->others(ofViews({newScale(1, 11, 99)}));
    readWhen(News::kChanged);
    const auto waitFor = [&](const std::vector<Colleague>& expected) {
        lookUntil([&](const ServerNews& news) {
            others.glance();
            return news.colleagues == expected;
        });
    };
    others.setCell(kTableViewRequest, KorOdbcKey(2), 10, 44.0);
    waitFor({{DatabaseServer::kUser, {{kTableViewRequest, 2}}}});
    others.dropTable(kTableViewRequest);
    waitFor({{DatabaseServer::kUser, {}}});
    others.closeSource(kUser);
    waitFor({});
}
