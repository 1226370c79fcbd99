#include "StoreTestSupport.h"
#include "base/TemporaryFile.h"
#include "support/FaultVfs.h"

#include <array>
#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

// A process that dies and a disk that fills up at any moment of a commit.

namespace {

constexpr int kViews = 2000;

TableChange doubledScales(bool growing) {
    TableChange change = ofViews({});
    const Column* text = change.table->column("callout_title_template");
    for (int i = 1; i <= kViews; ++i) {
        change.cells.push_back(newScale(i, 10.0 + i, 2 * (10.0 + i)));
        if (growing)
            change.cells.push_back({i, text, KorString("Scale 1:10"), KorString(std::string(200, 'x'))});
    }
    return change;
}

Result<> write(StyleStore& store, const TableChange& change) {
    std::vector<StoreConflict> conflicts;
    Result<> result = store.begin();
    if (result)
        result = store.apply(change, conflicts);
    if (result)
        return store.commit();
    store.rollback();
    return result;
}

// How many views have their new scale; every other one must have its old scale.
int countDoubled(StyleStore& store) {
    const auto rows = rowsOf<StructDetViewRequest>(store);
    EXPECT_EQ(rows.size(), kViews);
    int doubled = 0;
    for (int i = 0; i < rows.size(); ++i) {
        const double old = 10.0 + rows.at(i).key;
        EXPECT_TRUE(rows.at(i).scale == old || rows.at(i).scale == 2 * old);
        doubled += rows.at(i).scale == 2 * old;
    }
    return doubled;
}

std::unique_ptr<SqliteStore> opened(const std::string& path) {
    OpenedStore result = SqliteStore::open(path, SqliteStore::eMode::kWrite);
    EXPECT_EQ(result.error, "");
    return std::move(result.store);
}

// Returns whether the process that commits lived to the end.
bool commitInProcessKilledAt(int operation, const std::string& path) {
    const pid_t child = fork();
    if (child == 0) {
        const FaultVfs faults(operation, FaultVfs::eFault::kKill);
        OpenedStore result = SqliteStore::open(path, SqliteStore::eMode::kWrite);
        _exit(result.store && write(*result.store, doubledScales(false)) ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0);
    return !WIFSIGNALED(status);
}

/// Another program in the middle of making a database file.
class HalfExport {
public:
    explicit HalfExport(const std::string& path) {
        std::array<int, 2> ready{};
        EXPECT_EQ(pipe(ready.data()), 0);
        m_process = fork();
        if (m_process == 0) {
            static_cast<void>(SqliteStore::createWith(path, [&](StyleStore&) {
                [[maybe_unused]] const ssize_t told = ::write(ready[1], "r", 1);
                while (true)
                    pause();
                return Result<>();
            }));
            _exit(1);
        }
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        for (const int end : ready)
            close(end);
        m_file = temporaryName(path, m_process, 0);
        EXPECT_TRUE(fileIdentity(m_file));
    }
    ~HalfExport() { die(); }
    pid_t die() {
        if (m_alive) {
            kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
        m_alive = false;
        return m_process;
    }
    const std::string& file() const { return m_file; }

private:
    pid_t m_process = 0;
    bool m_alive = true;
    std::string m_file;
};

} // namespace

TEST(StoreFaults, WhatAKilledExportLeftIsRemovedByTheNextOneIntoItsFolder) {
    const TempFolder folder;
    HalfExport killed(folder.file("killed.dsdb"));
    const pid_t gone = killed.die();
    HalfExport atWork(folder.file("live.dsdb"));
    const std::string elsewhere =
        temporaryName(folder.file("remote.dsdb"), gone, 0); // its process is not seen here
    HalfExport remote(folder.file("remote.dsdb"));
    std::filesystem::rename(remote.file(), elsewhere);
    const std::string empty = temporaryName(folder.file("early.dsdb"), gone, 7);
    writeBytes(empty, "");
    const std::string notes = temporaryName(folder.file("notes"), gone, 1);
    writeBytes(notes, "somebody's own");
    const std::string copy = makeDatabase(folder.file("user.dsdb.new" + std::to_string(gone) + "-1"), 1);

    EXPECT_EQ(SqliteStore::create(folder.file("next.dsdb")).error, "");
    EXPECT_FALSE(fileIdentity(killed.file()));
    EXPECT_FALSE(fileIdentity(empty));
    for (const std::string& other : {atWork.file(), elsewhere, notes, copy})
        EXPECT_TRUE(fileIdentity(other)) << other;

    remote.die();
    atWork.die();
    EXPECT_EQ(SqliteStore::createWith(folder.file("next.dsdb"), {}).error, "");
    EXPECT_EQ(folder.count(), 3) << "the database, the notes and the copy";
}

TEST(StoreFaults, AProcessKilledWhileCommittingLeavesAllOrNothing) {
    const TempFolder folder;
    const std::string path = folder.file("user.dsdb");
    const std::string before = bytesOf(makeDatabase(path, kViews));
    int untouched = 0;
    int kept = 0;
    int interrupted = 0;
    for (int operation = 1; kept < 2; ++operation) {
        const bool finished = commitInProcessKilledAt(operation, path);
        const OpenedStore reader = SqliteStore::open(path, SqliteStore::eMode::kRead);
        if (!reader.store) {
            EXPECT_TRUE(mentions(reader.error, "interrupted")) << reader.error;
            ++interrupted;
        }
        auto store = opened(path);
        ASSERT_NE(store, nullptr);
        const int doubled = countDoubled(*store);
        ASSERT_TRUE(doubled == 0 || doubled == kViews) << doubled << " of the rows, killed at " << operation;
        ASSERT_TRUE(!finished || doubled == kViews);
        ASSERT_TRUE(store->integrityFindings().empty());
        (doubled ? kept : untouched) += 1;
        store.reset();
        if (doubled)
            writeBytes(path, before);
    }
    EXPECT_GT(untouched, 100);
    EXPECT_GT(interrupted, 10);
}

// Copies of one file count their commits alike.
TEST(StoreFaults, AJournalIsTakenBackIntoItsOwnFileAlone) {
    const TempFolder folder;
    const std::string path = makeDatabase(folder.file("user.dsdb"), kViews);
    const std::string ancestor = bytesOf(path);
    const std::string other = folder.file("other.dsdb");
    writeBytes(other, ancestor);
    EXPECT_EQ(write(*opened(other), ofViews({newScale(1, 11, 50)})).error, "");
    const std::string sibling = bytesOf(other);
    const std::string twin = bytesOf(makeDatabase(other, kViews));
    int interrupted = 0;
    for (int operation = 1; !HasFailure(); operation += 2) {
        writeBytes(path, ancestor);
        const auto before = SqliteStore::open(path, SqliteStore::eMode::kRead).store;
        if (commitInProcessKilledAt(operation, path))
            break;
        if (SqliteStore::open(path, SqliteStore::eMode::kRead).store)
            continue; // before the change, or after it
        ++interrupted;
        const std::string own = bytesOf(path);
        const std::string journal = bytesOf(path + "-journal");
        for (const std::string& later : {sibling, twin}) {
            writeBytes(path, later);
            for (const auto mode : {SqliteStore::eMode::kRead, SqliteStore::eMode::kWrite})
                EXPECT_TRUE(mentions(SqliteStore::open(path, mode).error, "user.dsdb-journal\""));
            std::int64_t state = 0;
            EXPECT_TRUE(mentions(before->beginRead(state).error, "user.dsdb-journal\"")) << "open already";
            EXPECT_TRUE(before->changedOutside());
            EXPECT_EQ(bytesOf(path), later);
            EXPECT_EQ(bytesOf(path + "-journal"), journal);
        }
        writeBytes(path, own);
        EXPECT_EQ(countDoubled(*opened(path)), 0) << "its own is taken back";
    }
    EXPECT_GT(interrupted, 5);
}

TEST(StoreFaults, AFullDiskIsToldAndLosesNothing) {
    const TempFolder folder;
    const std::string path = makeDatabase(folder.file("user.dsdb"), kViews);
    const TableChange change = doubledScales(true);
    int refused = 0;
    for (int operation = 1;; operation += 10) {
        const FaultVfs faults(operation, FaultVfs::eFault::kDiskFull);
        const auto store = opened(path);
        const Result<> result = write(*store, change);
        if (result)
            break;
        ++refused;
        ASSERT_TRUE(mentions(result.error, "disk is full") && mentions(result.error, path)) << result.error;
        ASSERT_EQ(countDoubled(*store), 0);
    }
    EXPECT_GT(refused, 10);
    EXPECT_EQ(countDoubled(*opened(path)), kViews);

    const FaultVfs faults(1, FaultVfs::eFault::kDiskFull);
    const std::string old = bytesOf(path);
    EXPECT_TRUE(mentions(SqliteStore::create(folder.file("new.dsdb")).error, "disk is full"));
    EXPECT_TRUE(mentions(SqliteStore::createWith(path, {}).error, "disk is full"));
    EXPECT_EQ(folder.count(), 1);
    EXPECT_EQ(bytesOf(path), old);
}
