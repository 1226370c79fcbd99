#include "StoreEngines.h"
#include "support/OrdinaryUser.h"

#include <sys/stat.h>

namespace {

using enum SqliteStore::eMode;
using Scale = StructScale;
using View = StructDetViewRequest;

class StoreBadInput : public testing::Test {
protected:
    // Opening must fail with a sentence that names the file and holds the phrase, and touch nothing.
    void expectRefused(const std::string& path, const std::string& phrase) {
        const std::string before = std::filesystem::is_regular_file(path) ? bytesOf(path) : "";
        const int files = m_folder.count();
        for (const auto mode : {kRead, kWrite}) {
            const OpenedStore opened = SqliteStore::open(path, mode);
            EXPECT_EQ(opened.store, nullptr) << phrase;
            EXPECT_TRUE(mentions(opened.error, phrase) && mentions(opened.error, path)) << opened.error;
        }
        EXPECT_FALSE(integrityFindings(path).empty());
        EXPECT_EQ(std::filesystem::is_regular_file(path) ? bytesOf(path) : "", before);
        EXPECT_EQ(m_folder.count(), files);
    }
    void expectReadOnly(const std::string& path, const std::string& phrase) {
        const OpenedStore opened = SqliteStore::open(path, kWrite);
        ASSERT_NE(opened.store, nullptr);
        EXPECT_TRUE(mentions(opened.error, phrase) && mentions(opened.error, path)) << opened.error;
        EXPECT_TRUE(opened.store->isReadOnly());
        EXPECT_EQ(rowsOf<View>(*opened.store).size(), 5);
        EXPECT_FALSE(opened.store->begin());
    }
    std::unique_ptr<SqliteStore> open(const std::string& path) {
        OpenedStore opened = SqliteStore::open(path, kWrite);
        EXPECT_EQ(opened.error, "");
        return std::move(opened.store);
    }

    TempFolder m_folder;
};

/// Tables and cells that are not as declared, in any store.
class StoreBadCells : public EachStore {
protected:
    /// SQL for engines whose columns hold anything, and for those whose columns have types.
    void run(const std::string& untyped, const std::string& typed) {
        engine->run(engine->hasTypes() ? typed : untyped);
    }
};

FOR_EACH_STORE(StoreBadCells);

} // namespace

TEST_F(StoreBadInput, FilesThatAreNoStyleDatabaseAreRefused) {
    expectRefused(m_folder.file("missing.dsdb"), "does not exist");
    expectRefused(m_folder.path(), "is not a file");
    writeBytes(m_folder.file("empty.dsdb"), "");
    expectRefused(m_folder.file("empty.dsdb"), "is empty");
    writeBytes(m_folder.file("text.dsdb"), "Dear customer,");
    expectRefused(m_folder.file("text.dsdb"), "not a database");
    writeBytes(m_folder.file("long.dsdb"), std::string(5000, 'x'));
    expectRefused(m_folder.file("long.dsdb"), "not a database");
    OtherProgram(m_folder.file("photos.dsdb")).run("CREATE TABLE photo (id)");
    expectRefused(m_folder.file("photos.dsdb"), "another program");
    const std::string path = makeDatabase(m_folder.file("before.dsdb"), 1);
    OtherProgram(path).run("PRAGMA user_version = 0");
    expectRefused(path, "unknown version");
}

TEST_F(StoreBadInput, DamagedFilesAreRefused) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 2000);
    const std::string whole = bytesOf(path);
    writeBytes(path, whole.substr(0, whole.size() / 2));
    expectRefused(path, "damaged");
    std::string scratched = whole;
    scratched.replace(scratched.size() - 6000, 4000, 4000, '\x5A');
    writeBytes(path, scratched);
    expectRefused(path, "damaged");
    writeBytes(path, whole);
    EXPECT_TRUE(integrityFindings(path).empty());
}

TEST_F(StoreBadInput, LockedFilesAreTold) {
    const LockWaiting hardly;
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    OtherProgram other(path);
    other.run("BEGIN EXCLUSIVE");
    expectRefused(path, "locked by another program");
    other.run("COMMIT");
    const auto store = open(path);
    other.run("BEGIN IMMEDIATE");
    EXPECT_TRUE(mentions(store->begin().error, "locked by another program"));
    other.run("COMMIT; BEGIN; SELECT * FROM view_request");
    std::vector<StoreConflict> conflicts;
    EXPECT_TRUE(mentions(applyTo(*store, ofViews({newScale(1, 11, 2)}), conflicts).error, "locked"));
    other.run("COMMIT");
    EXPECT_EQ(applyTo(*store, ofViews({newScale(1, 11, 2)}), conflicts).error, "");
}

TEST_F(StoreBadInput, AFileThatIsReplacedWhileAChangeIsStoredDoesNotHoldIt) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    const std::string newer = makeDatabase(m_folder.file("newer.dsdb"), 5);
    const auto store = open(path);
    OtherProgram reader(path);
    reader.run("BEGIN; SELECT * FROM view_request");
    const auto before = LockWait::setAsk([&](const std::string&, std::chrono::milliseconds) {
        std::filesystem::rename(newer, path);
        reader.run("COMMIT");
        return true;
    });
    std::vector<StoreConflict> conflicts;
    EXPECT_TRUE(mentions(applyTo(*store, ofViews({newScale(1, 11, 2)}), conflicts).error, "is not in it"));
    LockWait::setAsk(before);
    EXPECT_EQ(rowsOf<View>(*open(path)).at(0).scale, 11);
}

TEST_F(StoreBadInput, ALockIsWaitedForWithAWordUntilTheUserGivesUp) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    OtherProgram other(path);
    other.run("BEGIN EXCLUSIVE");
    std::vector<std::string> asked;
    const LockWaiting withAWord(std::chrono::hours(1),
                                [&](const std::string& file, std::chrono::milliseconds) {
                                    EXPECT_TRUE(LockWait::isWaiting());
                                    asked.push_back(file);
                                    return false;
                                });
    EXPECT_TRUE(mentions(SqliteStore::open(path, kRead).error, "locked by another program"));
    EXPECT_EQ(asked, std::vector{path});
    LockWait::setAsk([&](const std::string&, std::chrono::milliseconds) {
        other.run("COMMIT");
        return true;
    });
    EXPECT_NE(SqliteStore::open(path, kRead).store, nullptr);
}

TEST_F(StoreBadInput, NothingThatAFileComputesIsEverRun) {
    // Takes about forever, in one call of the engine.
    const std::string endless = "(hex(zeroblob(100000)) LIKE '%0%0%0%0%0%0%0%0%0%1')";
    const std::vector<std::string> refused = {
        "ALTER TABLE view_request ADD COLUMN c AS " + endless,
        "CREATE INDEX i ON linetype (name) WHERE name > 'a'",
        "CREATE INDEX i ON linetype (name || 'x')",
        "CREATE TABLE t (a DEFAULT " + endless + ")",
    };
    for (const std::string& statement : refused) {
        const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
        OtherProgram(path).run(statement);
        expectRefused(path, "computed");
        std::filesystem::remove(path);
    }
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    OtherProgram(path).run(
        "CREATE INDEX i ON linetype (name);"
        "CREATE TABLE t (a, CHECK (hex(zeroblob(100000)) LIKE a)); INSERT INTO t VALUES ('0%');"
        "PRAGMA ignore_check_constraints = ON;"
        "INSERT INTO t VALUES ('%0%0%0%0%0%0%0%0%0%1')");
    EXPECT_EQ(rowsOf<View>(*open(path)).size(), 5);
    EXPECT_TRUE(integrityFindings(path).empty());
}

TEST_F(StoreBadInput, WhatLiesWhereAJournalWouldBeIsLookedAtFirst) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    for (const char* suffix : {"-journal", "-wal", "-shm"}) {
        ASSERT_EQ(mkfifo((path + suffix).c_str(), 0600), 0);
        expectRefused(path, std::string("user.dsdb") + suffix);
        std::filesystem::remove(path + suffix);
        std::filesystem::create_symlink("/dev/zero", path + suffix);
        expectRefused(path, std::string("user.dsdb") + suffix);
        std::filesystem::remove(path + suffix);
    }
}

TEST_F(StoreBadInput, AdviceToRestoreSaysWhatToDoWithTheJournal) {
    const std::string path = m_folder.file("user.dsdb");
    writeBytes(path, "");
    EXPECT_FALSE(mentions(SqliteStore::open(path, kRead).error, "journal"));
    EXPECT_FALSE(mentions(SqliteStore::open(path, kRead).error, "delete"));
    writeBytes(path + "-journal", "left over");
    expectRefused(path, "user.dsdb-journal\" away before");
    for (int fault = 0; fault <= static_cast<int>(eStoreFault::kOther); ++fault) {
        const std::string sentence = faultSentence(static_cast<eStoreFault>(fault), path, "detail");
        EXPECT_EQ(mentions(sentence, "restore"), mentions(sentence, "user.dsdb-journal\" away before"))
            << sentence;
    }
}

TEST_F(StoreBadInput, AReadErrorIsNeverCalledDamage) {
    const std::string path = m_folder.file("user.dsdb");
    for (int detail = 0; detail < 40; ++detail)
        for (const int code : {SQLITE_IOERR, SQLITE_BUSY, SQLITE_LOCKED, SQLITE_NOMEM, SQLITE_CANTOPEN,
                               SQLITE_PERM, SQLITE_AUTH, SQLITE_INTERRUPT, SQLITE_FULL, SQLITE_READONLY}) {
            const std::string sentence = faultSentence(faultOfCode(code | detail << 8, 0), path);
            EXPECT_FALSE(mentions(sentence, "restore") || mentions(sentence, "damage")) << code << sentence;
        }
    for (const int error : {EIO, EMFILE, ENFILE, EACCES, EPERM, ENAMETOOLONG, ENOMEM})
        EXPECT_FALSE(mentions(faultSentence(faultOfOpening(error), path), "restore")) << error;
}

TEST_F(StoreBadInput, WhatIsNotAMatterOfPermissionIsNotCalledSo) {
    const std::string path = m_folder.file("user.dsdb");
    writeBytes(path, "S");
    expectRefused(path, "not a database");
    std::string deep = m_folder.path();
    while (deep.size() < 600)
        deep += "/" + std::string(60, 'd');
    std::filesystem::create_directories(deep);
    writeBytes(deep + "/user.dsdb", std::string(1024, 'x'));
    expectRefused(deep + "/user.dsdb", "too long");
    EXPECT_TRUE(mentions(SqliteStore::create(deep + "/new.dsdb").error, "too long"));
    EXPECT_TRUE(mentions(faultSentence(faultOfOpening(EMFILE), path), "too many files"));
}

TEST_F(StoreBadInput, WhatMayNotBeWrittenIsReadWithoutATrace) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    const auto allow = [](const std::filesystem::path& what, unsigned mode) {
        std::filesystem::permissions(what, std::filesystem::perms(mode));
    };
    allow(m_folder.path(), 0755);
    allow(path, 0444);
    {
        const OrdinaryUser user;
        expectReadOnly(path, "may not be written");
    }
    allow(path, 0666);
    allow(m_folder.path(), 0555);
    {
        const OrdinaryUser user;
        expectReadOnly(path, "folder");
        EXPECT_TRUE(mentions(SqliteStore::create(m_folder.file("new.dsdb")).error, "cannot be written"));
        EXPECT_NE(SqliteStore::open(path, kRead).store, nullptr);
        EXPECT_EQ(m_folder.count(), 1);
    }
    allow(path, 0000);
    {
        const OrdinaryUser user;
        EXPECT_TRUE(mentions(SqliteStore::open(path, kRead).error, "may not be read"));
    }
    allow(m_folder.path(), 0755);
    EXPECT_TRUE(mentions(SqliteStore::create(m_folder.file("none/new.dsdb")).error, "does not exist"));
}

TEST_F(StoreBadInput, WriteAheadModeIsLeftByWritingAndNotByReading) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    OtherProgram(path).run("PRAGMA journal_mode = WAL");
    const std::string before = bytesOf(path);
    EXPECT_TRUE(mentions(SqliteStore::open(path, kRead).error, "write-ahead"));
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_EQ(m_folder.count(), 1);
    EXPECT_EQ(rowsOf<View>(*open(path)).size(), 5);
    EXPECT_EQ(bytesOf(path), before) << "reading converts nothing";
    EXPECT_EQ(m_folder.count(), 1);
    std::vector<StoreConflict> conflicts;
    {
        const auto store = open(path);
        EXPECT_EQ(applyTo(*store, ofViews({newScale(1, 11, 2)}), conflicts).error, "");
        EXPECT_FALSE(store->changedOutside());
    }
    EXPECT_NE(SqliteStore::open(path, kRead).store, nullptr);
    EXPECT_EQ(m_folder.count(), 1);
}

TEST_F(StoreBadInput, ALogThatIsLeftBesideAFileIsNotMergedIntoIt) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    std::string log;
    {
        OtherProgram other(path);
        other.run("PRAGMA journal_mode = WAL; DELETE FROM view_request");
        log = bytesOf(path + "-wal");
    }
    writeBytes(path + "-wal", log);
    expectRefused(path, "user.dsdb-wal\"");
    std::filesystem::remove(path + "-wal");
    std::filesystem::remove(path);
    makeDatabase(path, 5);
    const auto before = open(path);
    writeBytes(path + "-wal", log);
    expectRefused(path, "user.dsdb-wal\"");
    std::int64_t state = 0;
    EXPECT_TRUE(mentions(before->beginRead(state).error, "user.dsdb-wal\""));
    EXPECT_TRUE(mentions(before->begin().error, "user.dsdb-wal\""));
    EXPECT_EQ(bytesOf(path + "-wal"), log);
    EXPECT_TRUE(mentions(faultSentence(eStoreFault::kEmpty, path), "Move \"" + path + "-wal\" away"));
}

TEST_F(StoreBadInput, TriggersInAFileDoNothing) {
    const std::string path = makeDatabase(m_folder.file("user.dsdb"), 5);
    OtherProgram(path).run(
        "CREATE TRIGGER t AFTER UPDATE ON view_request BEGIN DELETE FROM view_request; END");
    const auto store = open(path);
    std::vector<StoreConflict> conflicts;
    EXPECT_EQ(applyTo(*store, ofViews({newScale(1, 11, 2)}), conflicts).error, "");
    EXPECT_EQ(rowsOf<View>(*store).size(), 5);
}

TEST_F(StoreBadInput, ANewFileAppearsWholeOrNotAtAll) {
    const std::string path = makeDatabase(m_folder.file("export.dsdb"), 5);
    const auto fails = [](StyleStore&) { return Result<>::failure("no rows"); };
    EXPECT_EQ(SqliteStore::createWith(path, fails).error, "no rows");
    EXPECT_EQ(rowsOf<View>(*open(path)).size(), 5);
    EXPECT_TRUE(mentions(SqliteStore::create(path).error, "exists already"));
    {
        const auto inUse = open(path);
        EXPECT_TRUE(mentions(SqliteStore::createWith(path, {}).error, "is open in this program"));
    }
    EXPECT_TRUE(mentions(SqliteStore::createWith(path, {}, false).error, "exists already"));
    const auto makesIt = [&](const std::string& rival) {
        return [rival](StyleStore&) {
            writeBytes(rival, "mine");
            return Result<>();
        };
    };
    const std::string rival = m_folder.file("rival.dsdb");
    EXPECT_TRUE(mentions(SqliteStore::createWith(rival, makesIt(rival), false).error, "exists already"));
    EXPECT_EQ(bytesOf(rival), "mine");
    std::filesystem::remove(rival);
    for (const char* suffix : {"-journal", "-wal", "-shm"})
        EXPECT_TRUE(mentions(SqliteStore::createWith(path + suffix, {}).error, "is a name under which"));
    {
        OtherProgram other(path);
        other.run("BEGIN IMMEDIATE; UPDATE view_request SET scale = 1");
        EXPECT_TRUE(mentions(SqliteStore::createWith(path, {}).error, "locked by another program"));
        EXPECT_FALSE(mentions(faultSentence(eStoreFault::kDamaged, path), "-journal"));
    }
    writeBytes(path + "-journal", "left over");
    EXPECT_TRUE(mentions(SqliteStore::createWith(path, {}).error, "interrupted change"));
    EXPECT_TRUE(mentions(SqliteStore::createWith(path, {}).error, "move it away"));
    std::filesystem::remove(path + "-journal");
    for (const char* target : {"nowhere", "loop.dsdb"}) {
        std::filesystem::create_symlink(target, m_folder.file("loop.dsdb"));
        EXPECT_TRUE(mentions(SqliteStore::createWith(m_folder.file("loop.dsdb"), {}).error, "is not a file"));
        EXPECT_TRUE(std::filesystem::is_symlink(m_folder.file("loop.dsdb")));
        std::filesystem::remove(m_folder.file("loop.dsdb"));
    }
    std::filesystem::create_symlink(path, m_folder.file("link.dsdb"));
    EXPECT_EQ(SqliteStore::createWith(m_folder.file("link.dsdb"), {}).error, "");
    EXPECT_TRUE(std::filesystem::is_symlink(m_folder.file("link.dsdb")));
    EXPECT_EQ(rowsOf<View>(*open(path)).size(), 0);
    EXPECT_EQ(m_folder.count(), 2);
}

TEST_P(StoreBadCells, MissingTablesAndColumnsAreToldAndNotWritten) {
    engine->make(5);
    engine->run("DROP TABLE linetype; CREATE VIEW linetype AS SELECT 1 AS key, 'x' AS name;"
                "ALTER TABLE view_request DROP COLUMN scale");
    const auto store = open();
    std::vector<ReadProblem> problems;
    EXPECT_EQ(rowsOf<StructLinetypes>(*store, &problems).size(), 0);
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_TRUE(mentions(problems[0].sentence, "no table \"linetype\"") &&
                mentions(problems[0].sentence, store->name()));
    const auto views = rowsOf<View>(*store, &problems);
    EXPECT_EQ(views.at(4).scale, View().scale);
    EXPECT_EQ(views.at(4).name, KorString("Front view 5"));
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_TRUE(mentions(problems[0].sentence, "no column \"scale\""));

    std::vector<StoreConflict> conflicts;
    EXPECT_TRUE(mentions(applyTo(*store, ofViews({newScale(1, 0, 1)}), conflicts).error, "no column"));
    Rows<StructLinetypes> line;
    line.append().key = 1;
    EXPECT_TRUE(mentions(applyTo(*store, appending(line), conflicts).error, "no table"));
    Rows<View> added;
    added.append().key = 6;
    EXPECT_EQ(applyTo(*store, appending(added), conflicts).error, "");
    added.at(0).key = 7;
    added.at(0).scale += 1;
    EXPECT_TRUE(mentions(applyTo(*store, appending(added), conflicts).error, "no column"));
}

TEST_P(StoreBadCells, CellsThatDoNotFitAreToldAndCanBeMended) {
    engine->make(0);
    run("DROP TABLE scale; CREATE TABLE scale (key, name, factor, unit_type, \"group\");"
        "INSERT INTO scale VALUES (1, '1:10', 'ten', 1, 1), (1, 'again', 1, 1, 1),"
        "(-3, 'negative', 1, 1, 1), ('x', 'no key', 1, 1, 1), (5000000000, 'far', 1, 1, 1),"
        "(2, CAST(x'41FF' AS TEXT), 20, 1.5, 99999999999), (3, x'41', 9e999, 1, NULL),"
        "(4, 'Größe', 3, 7, -1)",
        "ALTER TABLE scale DROP CONSTRAINT scale_pkey, ALTER key TYPE bigint, ALTER factor TYPE text,"
        "ALTER unit_type TYPE numeric, ALTER \"group\" TYPE bigint, ALTER \"group\" DROP NOT NULL;"
        "INSERT INTO scale VALUES (1, '1:10', 'ten', 1, 1), (-3, 'negative', '1', 1, 1), (5000000000, 'far', "
        "'1', 1, 1), (2, 'B', '20', 1.5, 99999999999),"
        "(3, 'C', '9e999', 1, NULL), (4, 'Größe', '3', 7, -1)");
    auto store = open();
    std::vector<ReadProblem> problems;
    auto rows = rowsOf<Scale>(*store, &problems);
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows.at(0).factor, Scale().factor);
    EXPECT_EQ(rows.at(1).factor, 20);
    EXPECT_EQ(rows.at(1).unitType, Scale().unitType);
    EXPECT_EQ(rows.at(3).factor, 3);
    EXPECT_EQ(rows.at(3).unitType, 7);
    ASSERT_EQ(problems.size(), GetParam() == std::string("file") ? 12u : engine->hasTypes() ? 8u : 11u);
    for (const ReadProblem& problem : problems)
        EXPECT_TRUE(mentions(problem.sentence, store->name()) && mentions(problem.sentence, "scale"))
            << problem.sentence;
    EXPECT_EQ(std::ranges::count(problems, true, &ReadProblem::kept), 1);

    const TableSchema& table = schemaOf<Scale>();
    const Column* factor = table.column("factor");
    const TableChange mend{&table, {{1, factor, Scale().factor, 10.0}}, {}, {}};
    std::vector<StoreConflict> conflicts;
    engine->run("UPDATE scale SET factor = 'nine' WHERE name = '1:10'");
    EXPECT_TRUE(applyTo(*store, mend, conflicts));
    ASSERT_EQ(conflicts.size(), 1u);
    EXPECT_EQ(conflicts[0].stored, "\"nine\"");
    rowsOf<Scale>(*store, &problems);
    conflicts.clear();
    EXPECT_EQ(applyTo(*store, mend, conflicts).error, "");
    EXPECT_TRUE(conflicts.empty());
    EXPECT_EQ(applyTo(*store, {&table, {{1, factor, 10.0, 11.0}}, {}, {}}, conflicts).error, "");
    EXPECT_TRUE(conflicts.empty());
    EXPECT_EQ(rowsOf<Scale>(*store, &problems).at(0).factor, 11);
}

TEST_P(StoreBadCells, AThousandBadCellsMakeAFewSentences) {
    engine->make(1000);
    run("UPDATE view_request SET compass = 'north'",
        "ALTER TABLE view_request ALTER compass DROP DEFAULT, ALTER compass TYPE text USING 'north'");
    std::vector<ReadProblem> problems;
    EXPECT_EQ(rowsOf<View>(*open(), &problems).size(), 1000);
    EXPECT_LT(problems.size(), 30u);
    EXPECT_TRUE(mentions(problems.back().sentence, std::to_string(1000 - (problems.size() - 1)) + " more"));
}

TEST_P(StoreBadCells, RangesAreToldInFiguresThatPeopleRead) {
    engine->make(0);
    engine->run("INSERT INTO length_clip(\"key\", name, interval) VALUES (1, 'Far', 1e21), "
                "(2, 'Near', 0.00001); INSERT INTO detail_style(\"key\", name, "
                "title_position) VALUES (1, 'Odd', 9)");
    const auto store = open();
    std::vector<ReadProblem> problems;
    rowsOf<StructDetViewLengthClip>(*store, &problems);
    ASSERT_EQ(problems.size(), 2u);
    for (const char* phrase : {"holds 1000000000000000000000 in", "at most 100000000;"})
        EXPECT_TRUE(mentions(problems[0].sentence, phrase)) << problems[0].sentence;
    for (const char* phrase : {"holds 0.00001 in", "at least 1;"})
        EXPECT_TRUE(mentions(problems[1].sentence, phrase)) << problems[1].sentence;
    rowsOf<StructDetailStyle>(*store, &problems);
    EXPECT_TRUE(mentions(problems.at(0).sentence, "from 0 to 7;")) << problems.at(0).sentence;
}
