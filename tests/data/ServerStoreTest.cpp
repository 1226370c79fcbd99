#include "StoreEngines.h"
#include "TomorrowsSchema.h"
#include "data/StyleDatabases.h"
#include "support/LineProxy.h"

#include <array>
#include <cstring>
#include <random>

// What only a database on a server can do: be elsewhere, let people in with different rights, and be cut off.

namespace {

using View = StructDetViewRequest;
using Outcome = StyleStore::eOutcome;
using Trouble = LineProxy::eTrouble;

class ServerStore : public testing::Test {
protected:
    void SetUp() override { m_engine.make(3); }

    ServerAddress address(const std::string& connection) {
        Result<ServerAddress> parsed = ServerAddress::parse(connection, "a test");
        EXPECT_EQ(parsed.error, "");
        return parsed.value;
    }
    ~ServerStore() override { LockWait::setNow(std::move(m_now)); }
    /// By the line in which something goes wrong. Where that freezes the limit of the wait is over at once.
    std::unique_ptr<OdbcStore> openBy(const LineProxy& line) {
        LockWait::setNow([isFrozen = line.frozen(), skipped = 0]() mutable {
            skipped += isFrozen();
            return LockWait::Clock::now() + std::chrono::minutes(skipped);
        });
        OpenedServer opened = OdbcStore::open(address(DatabaseServer::connectionBy(line.folder(), m_schema)),
                                              OdbcStore::eMode::kWrite);
        EXPECT_EQ(opened.error, "");
        return std::move(opened.store);
    }
    /// A cell, a new row and a deleted one: "" where nothing of it is stored, "all" where all is.
    std::string stored() {
        auto rows = rowsOf<View>(*m_engine.open(true));
        const View* first = static_cast<View*>(rows.find(1));
        const int parts = (first->scale == 99) + (rows.find(3) == nullptr) + (rows.find(9) != nullptr);
        return parts == 0 ? "" : parts == 3 ? "all" : "a part";
    }
    Result<> changeAll(StyleStore& store) {
        auto rows = rowsOf<View>(*m_engine.open(true));
        Rows<View> added;
        added.append().key = 9;
        TableChange change = ofViews({newScale(1, static_cast<View*>(rows.find(1))->scale, 99)});
        change.deleted = {rows.find(3)};
        change.appended = {&added.at(0)};
        std::vector<StoreConflict> conflicts;
        Result<> result = applyTo(store, change, conflicts);
        EXPECT_TRUE(conflicts.empty());
        return result;
    }
    void putBack() {
        m_engine.run("DELETE FROM view_request WHERE key = 9; DELETE FROM view_request WHERE key = 3;"
                     "INSERT INTO view_request (key, name) VALUES (3, 'Front view 3');"
                     "UPDATE view_request SET scale = 11 WHERE key = 1");
    }

    DatabaseServer& m_server = DatabaseServer::instance();
    std::string m_schema = m_server.newSchema();
    OdbcEngine m_engine{m_server.connection(m_schema), true};
    LockWait::Now m_now = LockWait::setNow({});
};

} // namespace

TEST_F(ServerStore, KeepsEveryBitOfNumbersAndEveryCharacterOfTexts) {
    const double numbers[] = {-0.0, 0.1 + 0.2, 5e-324, 1.7976931348623157e308, -1.0 / 3, 123456789012345678.0,
                              1e22};
    std::string text = "'; DROP TABLE \"x\" -- \\ {fn now()} ? %s \n\r\t\u00df\u6f22\U0001F600";
    Rows<View> rows;
    for (const double number : numbers) {
        View& view = rows.append();
        view.key = 10 + rows.size();
        view.scale = number;
        view.calloutTitleTemplate = view.name = KorString(text);
        text += text; // the last ones are longer than any room for them
    }
    std::vector<StoreConflict> conflicts;
    ASSERT_EQ(applyTo(*m_engine.open(false), appending(rows), conflicts).error, "");
    std::vector<ReadProblem> ranges;
    auto read = rowsOf<View>(*m_engine.open(true), &ranges);
    for (int i = 0; i < rows.size(); ++i) {
        const auto* view = static_cast<View*>(read.find(rows.at(i).key));
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(std::memcmp(&view->scale, &rows.at(i).scale, sizeof(double)), 0) << rows.at(i).scale;
        EXPECT_EQ(*view, rows.at(i));
    }
    EXPECT_EQ(rowsOf<View>(*m_engine.open(true), &ranges).size(), 10);
}

TEST_F(ServerStore, EachReasonForNotOpeningHasItsSentence) {
    const std::string good = m_server.connection(m_schema);
    const auto with = [&](const std::string& what, const std::string& instead) {
        std::string text = good;
        return text.replace(text.find(what), what.size(), instead);
    };
    m_engine.run("CREATE ROLE stranger LOGIN; CREATE ROLE \"" + m_schema + "_guest\" LOGIN IN ROLE \"" +
                 m_schema + "_reader\"");
    const std::pair<std::string, const char*> cases[] = {
        {with("PostgreSQL Unicode", "Nosuch"), "driver is missing"},
        {with("Server=/", "Server=/nowhere/"), "cannot be reached"},
        {with("UID=office", "UID=nobody"), "does not let you in"},
        {with("Database=postgres", "Database=other"), "no such database"},
        {with("Schema=", "Schema=no_"), "no styles in the schema"},
        {with("UID=office", "UID=stranger"), "no right"},
    };
    for (const auto& [connection, phrase] : cases) {
        const OpenedServer opened = OdbcStore::open(address(connection), OdbcStore::eMode::kWrite);
        EXPECT_EQ(opened.store, nullptr) << phrase;
        EXPECT_TRUE(mentions(opened.error, phrase)) << opened.error;
    }
    for (const char* refused :
         {"Server=x;PWD=secret", "Server=x;pqopt={password=secret}", "Driver=x;Schema=y",
          "UID=a;PWD=secret;Server=x", "no;PWD=secret;Server=x", "PWD=secret"}) {
        EXPECT_TRUE(ServerAddress::isConnection(refused)) << refused;
        EXPECT_FALSE(mentions(ServerAddress::parse(refused, "here").error, "secret") ||
                     ServerAddress::parse(refused, "here").ok());
    }
    for (const char* file : {"styles.dsdb", "of server;1=2.dsdb", ""})
        EXPECT_FALSE(ServerAddress::isConnection(file)) << file;

    const OpenedServer guest =
        OdbcStore::open(address(with("UID=office", "UID=" + m_schema + "_guest")), OdbcStore::eMode::kWrite);
    ASSERT_NE(guest.store, nullptr) << guest.error;
    EXPECT_TRUE(mentions(guest.error, "not change it") && guest.store->isReadOnly());
    EXPECT_TRUE(mentions(guest.store->whyReadOnly(), "role of an editor"));
    EXPECT_EQ(rowsOf<View>(*guest.store).size(), 3);
    EXPECT_EQ(OdbcError::of("23505", "", false).kind, OdbcError::eKind::kKeyTaken);
    EXPECT_EQ(OdbcError::of("23502", "", false).kind, OdbcError::eKind::kOther) << "no key";
    m_engine.run("UPDATE dsdb_state SET version = 99");
    const auto newer = OdbcStore::open(address(good), OdbcStore::eMode::kWrite);
    EXPECT_TRUE(newer.store && newer.store->isReadOnly() && mentions(newer.store->whyTooNew(), "newer"));
    EXPECT_TRUE(mentions(newer.store->begin().error, "newer"));
    m_engine.run("UPDATE dsdb_state SET version = 0");
    EXPECT_TRUE(mentions(OdbcStore::open(address(good), OdbcStore::eMode::kRead).error, "server upgrade"));
}

TEST_F(ServerStore, APasswordIsAskedForAndShownNowhere) {
    m_engine.run("CREATE ROLE guarded LOGIN PASSWORD 'se''c}r' IN ROLE \"" + m_schema + "_editor\"");
    ServerAddress guarded = address(m_server.connection(m_schema, DatabaseServer::kGuarded));
    for (const auto& [given, isRight] : {std::pair("", false), {"wrong", false}, {"se'c}r", true}}) {
        guarded.password = given;
        const OpenedServer opened = OdbcStore::open(guarded, OdbcStore::eMode::kWrite);
        EXPECT_EQ(opened.ok(), isRight) << opened.error;
        EXPECT_EQ(opened.line.isRefusal(), !isRight);
        EXPECT_EQ(mentions(opened.error, "asks for your password"), *given == 0) << opened.error;
        EXPECT_TRUE(*given == 0 || !mentions(opened.error, given));
        EXPECT_TRUE(!opened.store || !opened.store->isReadOnly());
    }
}

TEST_F(ServerStore, RolesOfAnotherDatabaseAreNotTakenOverAndWhoHasThemIsTold) {
    const std::string other = m_schema + "_b";
    m_engine.run("CREATE ROLE " + other + "_maintainer; CREATE ROLE " + other + "_editor; CREATE ROLE " +
                 m_schema + "_dora LOGIN CREATEROLE IN ROLE " + other +
                 "_editor; GRANT CREATE ON DATABASE postgres TO " + m_schema + "_dora");
    const auto createAs = [&](const std::string& schema, const std::string& user,
                              std::vector<std::string>& former) {
        OdbcDatabase database(address(m_server.connection(schema, user)), {});
        Result<> result = database.connect();
        OdbcSchema made(database);
        if (result)
            result = made.create();
        former = made.formerUsers();
        return result.error;
    };
    std::vector<std::string> former;
    EXPECT_TRUE(mentions(createAs(other, m_schema + "_dora", former), "you are no maintainer there"));
    EXPECT_EQ(createAs(other, DatabaseServer::kUser, former), "");
    EXPECT_EQ(former, std::vector{m_schema + "_dora (" + other + "_editor)"});
    EXPECT_TRUE(
        mentions(createAs(std::string(53, 'x'), DatabaseServer::kUser, former), "at most 52 letters"));
}

TEST_F(ServerStore, AMaintainerBringsTheSchemaForwardOnce) {
    using Lines = Rows<TomorrowsLinetype>;
    const ServerAddress styles = m_engine.address();
    m_engine.run("CREATE ROLE \"" + m_schema + "_anna\" LOGIN IN ROLE \"" + m_schema +
                 "_editor\"; CREATE ROLE \"" + m_schema + "_keeper\" LOGIN IN ROLE \"" + m_schema +
                 "_maintainer\"");
    const auto upgradeAs = [&](const char* user, int& from) {
        OdbcDatabase database(address(m_server.connection(m_schema, m_schema + user)), {});
        Result<> result = database.connect();
        return result ? OdbcSchema(database, tomorrowsHistory()).upgrade(from) : result;
    };
    int from = 0;
    EXPECT_TRUE(mentions(upgradeAs("_anna", from).error, "Only a maintainer"));
    OdbcDatabase anna(address(m_server.connection(m_schema, m_schema + "_anna")), {});
    ASSERT_EQ(anna.connect().error, "");
    const std::string lie = "INSERT INTO " + m_schema + ".dsdb_version VALUES (99, '', '')";
    EXPECT_TRUE(mentions(anna.execute(lie).error, "no right"));
    m_engine.run("INSERT INTO dsdb_version VALUES (99, '', '')");
    EXPECT_EQ(upgradeAs("_keeper", from).error, "");
    EXPECT_EQ(from, 1);
    EXPECT_EQ(upgradeAs("_keeper", from).error, "");
    EXPECT_EQ(from, 3);
    const auto store = OdbcStore::open(address(m_server.connection(m_schema, m_schema + "_anna")),
                                       OdbcStore::eMode::kWrite, {}, tomorrowsHistory())
                           .store;
    ASSERT_NE(store, nullptr);
    std::vector<ReadProblem> problems;
    Rows<StructPlate> plates;
    ASSERT_EQ(store->readTable(tomorrowsTable(tableOf<StructPlate>), plates, problems).error, "");
    EXPECT_TRUE(problems.empty());
    ASSERT_EQ(plates.size(), 1);
    EXPECT_EQ(plates.at(0).grade, "S235");
    EXPECT_EQ(static_cast<View*>(rowsOf<View>(*store).find(1))->scale, 110) << "converted once";
    Lines line;
    line.append().key = 7;
    std::vector<StoreConflict> conflicts;
    EXPECT_EQ(applyTo(*store, {&tomorrowsTable(kTableLinetypes), {}, {&line.at(0)}, {}}, conflicts).error,
              "");
    const auto old = OdbcStore::open(styles, OdbcStore::eMode::kWrite).store;
    EXPECT_TRUE(old && old->isReadOnly());
}

// A long text must cost no room for as long ones in all rows, and what there is no room for ends nothing.
TEST_F(ServerStore, RowsAreFetchedByTheRoomThatTheyTake) {
    OdbcDatabase database(address(m_server.connection(m_schema)), {});
    ASSERT_EQ(database.connect().error, "");
    const auto rowsAtOnce = [&](std::size_t room) {
        const std::string sql = "SELECT g FROM generate_series(1, 600) g";
        EXPECT_FALSE(database.connection.select(sql, {room}));
        const OdbcError error = database.connection.fetch();
        database.connection.endSelect();
        return error ? 0 : database.connection.block().size();
    };
    EXPECT_EQ(rowsAtOnce(256), 512U);
    EXPECT_EQ(rowsAtOnce(1 << 20), 4U);
    EXPECT_EQ(rowsAtOnce(1 << 23), 1U);
    EXPECT_EQ(rowsAtOnce(std::size_t{1} << 61), 0U);
    EXPECT_EQ(rowsAtOnce(256), 512U) << "the line is good";
}

// At each request of a commit, and whether or not the server can be reached again at once.
TEST_F(ServerStore, ABrokenLineIsNeverTakenForTheOtherOutcome) {
    int unknown = 0;
    int kept = 0;
    constexpr std::pair<Trouble, bool> kTroubles[] = {
        {Trouble::kCutBefore, false}, {Trouble::kCutBefore, true},    {Trouble::kCutAfter, false},
        {Trouble::kCutAfter, true},   {Trouble::kFreezeBefore, true}, {Trouble::kFreezeAfter, false}};
    for (const auto& [trouble, stays] : kTroubles)
        for (int request = 1; !HasFailure(); ++request) {
            SCOPED_TRACE(testing::Message() << int(trouble) << stays << " at request " << request);
            LineProxy line(m_server.socket());
            const auto store = openBy(line);
            line.strikeAt(request, trouble, stays);
            const Result<> result = changeAll(*store);
            if (!line.hasStruck()) {
                ASSERT_EQ(result.error, "");
                ASSERT_GT(request, 3);
                putBack();
                break;
            }
            const bool isUnknown = store->outcome() == Outcome::kUnknown;
            EXPECT_EQ(isUnknown, mentions(result.error, "not known"));
            EXPECT_TRUE(!isUnknown || store->isReadOnly());
            line.mend();
            ASSERT_EQ(store->reopen().error, "");
            EXPECT_FALSE(store->isReadOnly());
            const bool isStored = isUnknown ? store->outcome() == Outcome::kStored : result.ok();
            EXPECT_EQ(stored(), isStored ? "all" : "");
            unknown += isUnknown;
            kept += isStored;
            if (isStored)
                putBack();
            else
                EXPECT_EQ(changeAll(*store).error, "") << "the line is good again";
            putBack();
        }
    EXPECT_GT(unknown, 2);
    EXPECT_GT(kept, 2);
}

// At each request by which it is found out what became of a commit, the line breaks a second time.
TEST_F(ServerStore, AnOutcomeThatWasLostTwiceIsFoundOutAllTheSame) {
    for (const auto trouble : {Trouble::kCutBefore, Trouble::kCutAfter}) {
        LineProxy line(m_server.socket());
        const auto store = openBy(line);
        int commit = -line.requests();
        ASSERT_EQ(changeAll(*store).error, "");
        commit += line.requests();
        putBack();
        for (int second = 1; !HasFailure(); ++second) {
            SCOPED_TRACE(testing::Message() << int(trouble) << " and at request " << second);
            ASSERT_EQ(store->reopen().error, "");
            line.strikeAt(commit, trouble, true);
            static_cast<void>(changeAll(*store));
            ASSERT_EQ(store->outcome(), Outcome::kUnknown);
            line.mend();
            line.strikeAt(second, Trouble::kCutAfter, true);
            static_cast<void>(store->reopen());
            const bool hasStruck = line.hasStruck();
            line.mend();
            ASSERT_EQ(store->reopen().error, "");
            EXPECT_EQ(store->outcome(),
                      trouble == Trouble::kCutAfter ? Outcome::kStored : Outcome::kNotStored);
            EXPECT_EQ(stored(), store->outcome() == Outcome::kStored ? "all" : "");
            putBack();
            if (!hasStruck) {
                EXPECT_GT(second, 4);
                break;
            }
        }
    }
}

TEST_F(ServerStore, WhatTurnsOutToBeStoredIsNotPendingAnyMoreAndTheRestStays) {
    for (const auto trouble : {Trouble::kCutBefore, Trouble::kCutAfter}) {
        LineProxy line(m_server.socket());
        StyleDatabases databases;
        const SourceId user = SourceId::user();
        databases.addSource(user, openBy(line));
        databases.setCurrentSource(user);
        ASSERT_EQ(databases.setCell(kTableViewRequest, KorOdbcKey(1), 10, 44.0), WriteResult::kWritten);
        for (int request = 1; databases.pending().hasPending(user); ++request) {
            line.strikeAt(request, trouble, true);
            databases.keepTable(kTableViewRequest);
            EXPECT_TRUE(line.hasStruck());
            EXPECT_TRUE(databases.pending().hasPending(user)) << "until it is known";
            const bool isUnknown = databases.source(user)->store().outcome() == Outcome::kUnknown;
            EXPECT_NE(databases.isEditable(user), isUnknown);
            EXPECT_EQ(mentions(databases.whyNotEditable(user), "not known yet"), isUnknown);
            EXPECT_EQ(databases.unknownOutcomes().empty(), !isUnknown);
            EXPECT_EQ(databases.canUndo(), !isUnknown);
            EXPECT_TRUE(!isUnknown || databases.undo().empty());
            EXPECT_NE(databases.refreshChanged().at(0).error, "") << "there is no server";
            EXPECT_EQ(static_cast<const View*>(databases.here()->table(kTableViewRequest).find(KorOdbcKey(1)))
                          ->scale,
                      44.0);
            line.mend();
            const auto changes = databases.refreshChanged();
            ASSERT_EQ(changes.at(0).error, "");
            EXPECT_TRUE(databases.isEditable(user));
            const double now = static_cast<View*>(rowsOf<View>(*m_engine.open(true)).find(1))->scale;
            EXPECT_EQ(databases.pending().hasPending(user), now != 44.0);
            EXPECT_EQ(changes[0].wasStored, isUnknown && now == 44.0);
            if (isUnknown && now != 44.0)
                break;
        }
        m_engine.run("UPDATE view_request SET scale = 11 WHERE key = 1");
    }
}

// What each editor believes may be old; what is stored follows from the order of the commits alone.
TEST_F(ServerStore, EditorsWhoseLinesBreakAtRandomStoreWhatAnOrderOfTheirCommitsStores) {
    std::mt19937 random(7);
    const auto below = [&](unsigned count) { return static_cast<int>(random() % count); };
    std::map<int, double> stored = {{1, 11}, {2, 12}, {3, 13}};
    std::array<std::map<int, double>, 2> believed = {stored, stored};
    LineProxy lines[] = {LineProxy(m_server.socket()), LineProxy(m_server.socket())};
    const std::unique_ptr<OdbcStore> stores[] = {openBy(lines[0]), openBy(lines[1])};
    std::map<std::string, int> met;
    for (int step = 0; step < 120 && !HasFailure(); ++step) {
        const auto who = static_cast<std::size_t>(below(2));
        const int key = 1 + below(3);
        const std::map<int, double> wanted = {{key, below(1000)}, {1 + key % 3, below(1000)}};
        TableChange change = ofViews({});
        bool isOld = false;
        for (const auto& [each, value] : wanted) {
            change.cells.push_back(newScale(each, believed[who][each], value));
            isOld = isOld || believed[who][each] != stored[each];
        }
        if (below(4) == 0)
            lines[who].strikeAt(1 + below(7), below(2) ? Trouble::kCutBefore : Trouble::kCutAfter,
                                below(2) == 0);
        std::vector<StoreConflict> conflicts;
        bool isStored = applyTo(*stores[who], change, conflicts).ok() && conflicts.empty();
        const bool hasStruck = lines[who].hasStruck();
        lines[who].mend();
        ASSERT_EQ(stores[who]->reopen().error, "");
        isStored = isStored || stores[who]->outcome() == Outcome::kStored;
        EXPECT_FALSE(isStored && isOld) << "an update was lost";
        EXPECT_TRUE(isStored || isOld || hasStruck) << "nothing was in the way";
        ++met[isStored ? "stored" : hasStruck ? "broken" : "conflicting"];
        if (isStored)
            for (const auto& [each, value] : wanted)
                stored[each] = believed[who][each] = value;
        else if (below(2))
            for (auto rows = rowsOf<View>(*stores[who]); const auto& [each, value] : stored)
                believed[who][each] = static_cast<View*>(rows.find(each))->scale;
    }
    const auto rows = rowsOf<View>(*m_engine.open(true));
    for (const auto& [key, value] : stored)
        EXPECT_EQ(static_cast<const View*>(rows.find(key))->scale, value) << key;
    for (const char* outcome : {"stored", "broken", "conflicting"})
        EXPECT_GT(met[outcome], 5) << outcome;
}
