#include "StoreTestSupport.h"
#include "TomorrowsSchema.h"
#include "data/StyleDatabases.h"
#include "data/check/ConsistencyCheck.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "support/FaultVfs.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"

#include <csignal>

#include <sys/wait.h>

// Databases of earlier and of later versions of the schema. Of each released one a small file is kept.

namespace {

using enum SqliteStore::eMode;
using View = StructDetViewRequest;

std::string released(int version) {
    return bytesOf(std::string(SOURCE_DIR "/tests/data/versions/") + std::to_string(version) + ".dsdb");
}

std::int64_t numberIn(const std::string& path, const std::string& sql) {
    SqliteConnection connection;
    std::int64_t number = -1;
    EXPECT_EQ(connection.open(path, true), SQLITE_OK);
    EXPECT_EQ(connection.queryInteger(sql, number), SQLITE_OK) << sql;
    return number;
}

/// The columns of all tables with what is said of them.
std::vector<std::string> layoutOf(const std::string& path) {
    SqliteConnection connection;
    std::vector<std::string> columns;
    EXPECT_EQ(connection.open(path, true), SQLITE_OK);
    EXPECT_EQ(connection.queryTexts("SELECT t.name || '.' || c.name || ' ' || c.type || c.pk || "
                                    "c.\"notnull\" || ifnull(c.dflt_value, '') AS line "
                                    "FROM sqlite_master t, pragma_table_info(t.name) c ORDER BY line",
                                    columns),
              SQLITE_OK);
    return columns;
}

// The scale of the first view, as version 3 has it: 2 in the file that is kept.
TableChange newScaleOf(double stored, double wanted) {
    return ofViews({newScale(1, stored, wanted)});
}

class VersionTest : public testing::Test {
protected:
    void SetUp() override { writeBytes(m_path, m_old); }

    std::unique_ptr<SqliteStore> open(SqliteStore::eMode mode = kWrite) {
        OpenedStore opened = SqliteStore::open(m_path, mode, SqliteStore::eCheck::kFull, tomorrowsHistory());
        EXPECT_EQ(opened.error, "");
        return std::move(opened.store);
    }
    static Result<> change(SqliteStore& store, double stored, double wanted) {
        std::vector<StoreConflict> conflicts;
        Result<> result = applyTo(store, newScaleOf(stored, wanted), conflicts);
        EXPECT_TRUE(conflicts.empty());
        return result;
    }
    static double scale(StyleStore& store) { return rowsOf<View>(store).at(0).scale; }
    std::string backup(const std::string& number = "") const {
        return m_folder.file("styles.v1-backup" + number + ".dsdb");
    }
    // Of the old file nothing but itself is there, as it was.
    void expectUntouched() const {
        EXPECT_TRUE(bytesOf(m_path) == m_old);
        EXPECT_EQ(m_folder.count(), 1);
    }
    void expectMigrated() const {
        EXPECT_EQ(numberIn(m_path, "PRAGMA user_version"), 3);
        EXPECT_TRUE(bytesOf(backup()) == m_old);
        EXPECT_EQ(m_folder.count(), 2);
    }

    TempFolder m_folder;
    const std::string m_old = released(1);
    std::string m_path = m_folder.file("styles.dsdb");
};

} // namespace

// Fails where a table or a column is declared without a version of its own, and where nobody keeps a file.
TEST_F(VersionTest, EachReleasedVersionIsReadAndBecomesWhatANewDatabaseIs) {
    const SchemaHistory& history = SchemaHistory::own();
    const std::string fresh = m_folder.file("fresh.dsdb");
    ASSERT_EQ(SqliteStore::create(fresh).error, "");
    for (const SchemaVersion& version : history.versions()) {
        const std::string kept = released(version.number);
        ASSERT_FALSE(kept.empty()) << version.number;
        writeBytes(m_path, kept);
        ASSERT_EQ(numberIn(m_path, "PRAGMA user_version"), version.number);
        StyleDatabases databases;
        databases.setOwnerMode(true);
        ASSERT_EQ(databases.openFile(SourceId::standard(), m_path, true).error, "");
        StyleSource* source = databases.source(SourceId::standard());
        EXPECT_EQ(source->complete().error, "");
        const auto sentences = ConsistencyCheck(*source).run();
        EXPECT_TRUE(std::ranges::none_of(sentences, [](const Finding& finding) {
            return finding.severity == eSeverity::kError;
        })) << version.number;
        databases.closeSource(SourceId::standard());
        EXPECT_TRUE(bytesOf(m_path) == kept);

        ASSERT_EQ(databases.openFile(SourceId::standard(), m_path, false).error, "");
        StructDetBaseCategory category;
        category.name = "Added";
        EXPECT_EQ(databases.append(kTableBaseCategory, category), WriteResult::kWritten);
        EXPECT_EQ(databases.keepTable(kTableBaseCategory), 1) << databases.commitReport().front().error;
        databases.closeSource(SourceId::standard());
        EXPECT_EQ(numberIn(m_path, "PRAGMA user_version"), history.current());
        EXPECT_EQ(layoutOf(m_path), layoutOf(fresh)) << version.number;
        const std::string copy = "styles.v" + std::to_string(version.number) + "-backup.dsdb";
        EXPECT_EQ(bytesOf(m_folder.file(copy)) == kept, version.number != history.current());
    }
}

TEST_F(VersionTest, AFileOfAnEarlierVersionIsReadAsTheCurrentOneAndNotTouched) {
    const auto store = open(kRead);
    std::vector<ReadProblem> problems;
    Rows<TomorrowsLinetype> lines;
    ASSERT_EQ(store->readTable(tomorrowsTable(kTableLinetypes), lines, problems).error, "");
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines.at(0).width, 0.5);
    EXPECT_EQ(lines.at(0).note, "thick");
    EXPECT_EQ(lines.at(2).width, 0.35);
    EXPECT_EQ(lines.at(2).note, "it's new");
    EXPECT_EQ(lines.at(2).name, "HIDDEN_FINE");
    Rows<StructPlate> plates;
    ASSERT_EQ(store->readTable(tomorrowsTable(tableOf<StructPlate>), plates, problems).error, "");
    ASSERT_EQ(plates.size(), 1);
    EXPECT_EQ(plates.at(0).thickness, 12.5);
    EXPECT_EQ(plates.at(0).grade, "S235");
    EXPECT_EQ(scale(*store), 2);
    EXPECT_TRUE(problems.empty()) << problems.front().sentence;
    EXPECT_FALSE(store->changedOutside());
    expectUntouched();
}

TEST_F(VersionTest, WhatIsReadOfAnEarlierVersionIsOneStateAndFollowsOtherPrograms) {
    for (const auto mode : {kRead, kWrite}) {
        SetUp();
        OtherProgram other(m_path);
        const auto store = open(mode);
        std::int64_t before = 0;
        std::int64_t after = 0;
        ASSERT_EQ(store->beginRead(before).error, "");
        EXPECT_EQ(scale(*store), 2);
        EXPECT_FALSE(other.tries("PRAGMA busy_timeout = 0; UPDATE view_request SET scale = 0.5"));
        store->endRead();
        other.run("UPDATE view_request SET scale = 0.5");
        EXPECT_TRUE(store->changedOutside());
        ASSERT_EQ(store->beginRead(after).error, "");
        EXPECT_NE(before, after);
        EXPECT_EQ(scale(*store), 5);
        store->endRead();
        OpenedStore theirs =
            SqliteStore::open(m_path, kWrite, SqliteStore::eCheck::kNone, tomorrowsHistory());
        EXPECT_EQ(change(*theirs.store, 5, 9).error, "");
        EXPECT_EQ(scale(*store), 9) << "another program brought the file to the current version";
        EXPECT_EQ(store->begin().ok(), mode == kWrite);
        EXPECT_EQ(scale(*store), 9);
        store->rollback();
        std::filesystem::remove(backup());
    }
}

TEST_F(VersionTest, TheFirstChangeMigratesTheFileInItsTransactionAndKeepsOneBackup) {
    const auto store = open();
    EXPECT_EQ(scale(*store), 2);
    std::vector<StoreConflict> conflicts;
    ASSERT_EQ(store->begin().error, "");
    ASSERT_EQ(store->apply(newScaleOf(2, 7), conflicts).error, "");
    EXPECT_EQ(scale(*store), 7);
    store->rollback();
    EXPECT_EQ(scale(*store), 2);
    EXPECT_EQ(applyTo(*store, newScaleOf(0.2, 7), conflicts).error, "");
    ASSERT_EQ(conflicts.size(), 1U) << "what is compared is what was read";
    EXPECT_EQ(conflicts[0].stored, "2");
    expectUntouched();

    EXPECT_EQ(change(*store, 2, 7).error, "");
    EXPECT_FALSE(store->changedOutside());
    EXPECT_EQ(change(*store, 7, 8).error, "");
    EXPECT_EQ(scale(*store), 8);
    EXPECT_TRUE(store->integrityFindings().empty());
    expectMigrated();
    const std::string fresh = m_folder.file("fresh.dsdb");
    ASSERT_EQ(SqliteStore::createWith(fresh, {}, false, tomorrowsHistory()).error, "");
    EXPECT_EQ(layoutOf(m_path), layoutOf(fresh));
    EXPECT_EQ(numberIn(m_path, "SELECT count(*) FROM plate"), 1);
    EXPECT_EQ(scale(*open(kRead)), 8);
}

TEST_F(VersionTest, ACellThatCannotBeReadIsMendedByTheFirstChange) {
    OtherProgram(m_path).run("UPDATE linetype SET linetype_id = 'x' WHERE \"key\" = 2");
    const auto store = open();
    std::vector<ReadProblem> problems;
    rowsOf<StructLinetypes>(*store, &problems);
    EXPECT_EQ(problems.size(), 1U);
    const TableSchema& table = schemaOf<StructLinetypes>();
    const TableChange mend{
        &table, {{2, table.column("linetype_id"), std::int64_t{0}, std::int64_t{5}}}, {}, {}};
    std::vector<StoreConflict> conflicts;
    EXPECT_EQ(applyTo(*store, mend, conflicts).error, "");
    EXPECT_TRUE(conflicts.empty());
    EXPECT_EQ(rowsOf<StructLinetypes>(*store).at(1).lineTypeId, 5);
}

TEST_F(VersionTest, ABackupReplacesNothingAndIsNotMadeTwice) {
    writeBytes(backup(), "somebody's own");
    writeBytes(backup("-2"), m_old);
    std::filesystem::permissions(m_path,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_EQ(change(*open(), 2, 7).error, "");
    EXPECT_EQ(bytesOf(backup()), "somebody's own");
    EXPECT_EQ(m_folder.count(), 3) << "the second is what was to be kept";
    writeBytes(m_path, m_old);
    writeBytes(backup("-2"), m_old + "x");
    EXPECT_EQ(change(*open(), 2, 7).error, "");
    EXPECT_TRUE(bytesOf(backup("-3")) == m_old);
    EXPECT_EQ(std::filesystem::status(backup("-3")).permissions(),
              std::filesystem::status(m_path).permissions());
}

TEST_F(VersionTest, AFileInWriteAheadModeIsReadAndMigrated) {
    OtherProgram(m_path).run("PRAGMA journal_mode = WAL");
    const auto store = open();
    EXPECT_EQ(scale(*store), 2);
    EXPECT_EQ(change(*store, 2, 7).error, "");
    EXPECT_EQ(scale(*store), 7);
    EXPECT_EQ(numberIn(backup(), "PRAGMA user_version"), 1);
    EXPECT_EQ(m_folder.count(), 2);
}

TEST_F(VersionTest, AKilledMigrationLeavesTheOldFileOrTheNewOne) {
    int operation = 0;
    for (bool finished = false; !finished && !HasFailure();) {
        SetUp();
        std::filesystem::remove(backup());
        const pid_t child = fork();
        if (child == 0) {
            const FaultVfs faults(operation + 1, FaultVfs::eFault::kKill);
            _exit(change(*open(), 2, 7) ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        finished = !WIFSIGNALED(status);
        ASSERT_TRUE(!finished || WEXITSTATUS(status) == 0);
        ++operation;
        const bool isNew = scale(*open()) == 7;
        EXPECT_EQ(numberIn(m_path, "PRAGMA user_version"), isNew ? 3 : 1);
        EXPECT_TRUE(isNew || bytesOf(m_path) == m_old) << operation;
        EXPECT_TRUE(isNew || change(*open(), 2, 7).ok());
        EXPECT_TRUE(open()->integrityFindings().empty());
        expectMigrated();
    }
    EXPECT_GT(operation, 20);
}

TEST_F(VersionTest, AFaultAnywhereIsToldAndLeavesTheOldFileAndNoWrongBackup) {
    for (const auto& [fault, words] : {std::pair(FaultVfs::eFault::kDiskFull, "disk is full"),
                                       {FaultVfs::eFault::kReadError, "could not be read"}}) {
        int failed = 0;
        bool struck = true;
        for (int operation = 1; struck && !HasFailure(); ++operation) {
            SetUp();
            std::filesystem::remove(backup());
            bool done = false;
            {
                const FaultVfs faults(operation, fault);
                const OpenedStore opened =
                    SqliteStore::open(m_path, kWrite, SqliteStore::eCheck::kNone, tomorrowsHistory());
                const Result<> result = opened.store ? change(*opened.store, 2, 7) : Result<>{opened.error};
                struck = FaultVfs::hasStruck();
                done = result.ok();
                EXPECT_TRUE(done || mentions(result.error, words)) << result.error;
            }
            failed += !done;
            EXPECT_EQ(scale(*open()), done ? 7 : 2);
            EXPECT_TRUE(done || bytesOf(m_path) == m_old);
            EXPECT_EQ(m_folder.count(), fileIdentity(backup()) ? 2 : 1);
            EXPECT_TRUE(!fileIdentity(backup()) || bytesOf(backup()) == m_old);
        }
        EXPECT_GT(failed, 20);
        expectMigrated();
    }
}

TEST_F(VersionTest, ABackupThatCannotBeWrittenRefusesTheChange) {
    auto store = open();
    {
        const FullDisk full;
        EXPECT_TRUE(mentions(store->begin().error, "disk is full"));
    }
    using std::filesystem::perms;
    std::filesystem::permissions(m_folder.path(), perms(0755));
    std::filesystem::permissions(m_path, perms(0666));
    store.reset();
    {
        const OrdinaryUser user;
        EXPECT_TRUE(SqliteStore::open(m_path, kWrite, SqliteStore::eCheck::kNone, tomorrowsHistory())
                        .store->isReadOnly());
    }
    std::filesystem::permissions(m_folder.path(), perms(0777));
    {
        const OrdinaryUser user;
        store = open();
    }
    std::filesystem::permissions(m_folder.path(), perms(0555));
    {
        const OrdinaryUser user;
        const std::string error = store->begin().error;
        EXPECT_TRUE(mentions(error, "folder") && mentions(error, m_path)) << error;
        EXPECT_EQ(scale(*store), 2);
    }
    std::filesystem::permissions(m_folder.path(), perms(0755));
    store.reset();
    expectUntouched();
    EXPECT_EQ(change(*open(), 2, 7).error, "");
    expectMigrated();
}

TEST_F(VersionTest, WhatCannotBeMigratedIsToldReadAsNothingAndNotWritten) {
    OtherProgram other(m_path);
    other.run("ALTER TABLE linetype ADD COLUMN width REAL; DROP TABLE hatch_settings");
    EXPECT_EQ(scale(*open()), 2) << "what is there already is no hindrance, nor what is missing";
    other.run("ALTER TABLE view_request RENAME TO views");
    const std::string before = bytesOf(m_path);
    StyleDatabases databases;
    databases.addSource(SourceId::user(), open());
    StyleSource& source = *databases.source(SourceId::user());
    EXPECT_EQ(source.table(kTableScale).rows().size(), 0);
    for (const std::string& error : {source.complete().error, source.store().begin().error}) {
        EXPECT_TRUE(mentions(error, "cannot be brought to the present one") &&
                    mentions(error, "scales in tenths: no such table"))
            << error;
    }
    EXPECT_EQ(source.problems().size(), 1U);
    databases.closeSource(SourceId::user());
    EXPECT_TRUE(bytesOf(m_path) == before);
    EXPECT_EQ(m_folder.count(), 1);
}

TEST_F(VersionTest, ANewerFileIsReadButNotChangedAndNotTakenForWhole) {
    writeBytes(m_path, released(SchemaHistory::own().current()));
    OtherProgram other(m_path);
    other.run("ALTER TABLE linetype ADD COLUMN brightness REAL; CREATE TABLE plate (key); "
              "PRAGMA user_version = 99");
    const std::string before = bytesOf(m_path);
    StyleDatabases databases;
    ASSERT_EQ(databases.openFile(SourceId::user(), m_path, false).error, "");
    StyleSource& source = *databases.source(SourceId::user());
    EXPECT_EQ(source.table(kTableLinetypes).rows().size(), 3);
    EXPECT_EQ(source.table(kTableDetailStyle).rows().size(), 1);
    ASSERT_EQ(source.problems().size(), 1U);
    EXPECT_TRUE(mentions(source.problems()[0].sentence, "newer version of the program (version 99)"));
    EXPECT_TRUE(mentions(source.complete().error, source.problems()[0].sentence));
    EXPECT_EQ(source.store().begin().error, source.problems()[0].sentence);
    EXPECT_EQ(databases.whyTooNew(SourceId::user()), source.problems()[0].sentence);
    databases.setCurrentSource(SourceId::user());
    EXPECT_EQ(databases.setCell(kTableLinetypes, KorOdbcKey(1), 1, KorString("x")),
              WriteResult::kReadOnlySource);
    databases.closeSource(SourceId::user());
    other.run("ALTER TABLE linetype DROP COLUMN file_path");
    EXPECT_TRUE(databases.openFile(SourceId::user(), m_path, false));
    EXPECT_EQ(databases.source(SourceId::user())->table(kTableLinetypes).rows().size(), 3);
    EXPECT_TRUE(mentions(databases.source(SourceId::user())->problems().back().sentence, "no column"));
    databases.closeSource(SourceId::user());
    other.run("ALTER TABLE linetype ADD COLUMN file_path TEXT NOT NULL DEFAULT ''");

    StyleDatabases others;
    const std::string user = m_folder.file("user.dsdb");
    ASSERT_EQ(SqliteStore::create(user).error, "");
    EXPECT_TRUE(others.openFile(SourceId::user(), user, false));
    EXPECT_EQ(KorODBCDetailStyleExports::openFile(KorString(m_path)), KorODBCDetailStyleExports::kFileFailed);
    KorString reason;
    EXPECT_EQ(KorODBCDetailStyleExports::GetErrorMessage(reason, KorODBCDetailStyleExports::kFileFailed), 1);
    EXPECT_TRUE(mentions(reason.toStdString(), "version 99")) << reason.c_str();
    EXPECT_TRUE(others.pending().isEmpty());
}

TEST_F(VersionTest, AFileThatBecomesNewerWhileItIsOpenIsNotChanged) {
    const auto store = open();
    EXPECT_EQ(scale(*store), 2);
    OtherProgram other(m_path);
    other.run("PRAGMA user_version = 99");
    EXPECT_TRUE(mentions(store->begin().error, "version 99"));
    EXPECT_TRUE(store->changedOutside());
    EXPECT_EQ(store->reopen().error, "");
    EXPECT_TRUE(store->isReadOnly());
    EXPECT_EQ(scale(*store), 0.2);
    EXPECT_EQ(m_folder.count(), 1);
    other.run("PRAGMA user_version = 1");
    EXPECT_EQ(store->reopen().error, "");
    EXPECT_FALSE(store->isReadOnly());
}

TEST_F(VersionTest, AColumnThatComesLaterLeavesTheSlotsWhereTheyAre) {
    struct Style : StructDetailStyle {
        double later = 0;
    };
    std::vector<TableSchema> tables;
    TableBuilder<Style>(tables, "style")
        .text(2, "description", &Style::description)
        .slots(3, "view", &Style::viewRequests, kTableViewRequest)
        .since(2)
        .real(23, "later", &Style::later)
        .since(3);
    EXPECT_EQ(tables[0].firstSlot(), 3);
    for (const Column& column : tables[0].columns)
        EXPECT_EQ(column.since, column.number < 3 ? 1 : column.isSlot() ? 2 : 3) << column.name;
}
