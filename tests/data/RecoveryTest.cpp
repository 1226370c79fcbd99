#include "StoreTestSupport.h"
#include "StyleFixture.h"

#include "data/StyleDatabases.h"
#include "data/pending/RecoveryFile.h"
#include "data/pending/RecoveryName.h"
#include "data/pending/RecoveryText.h"
#include "data/pending/RecoveryWriter.h"

#include "support/FullDisk.h"
#include "support/LockWaiting.h"
#include "support/OtherProgram.h"

#include <csignal>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class RecoveryTest : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        m_style = addStyle(kUser, "Column", 2);
        StructDetObjReprMapKey part;
        part.reprMapKey = m_map = add<StructDetObjReprMap>(kUser, "Spare");
        add(kUser, "Part", part);
        ASSERT_TRUE(commit());
        open(false);
        databases.setCurrentSource(kUser);
    }
    void write() {
        auto writer = std::make_unique<RecoveryWriter>(
            folder(), databases, [this](const KorString& sentence) { m_told.push_back(sentence); });
        m_writer = writer.get();
        databases.pending().setObserver(std::move(writer));
    }
    /// Ends the program as a crash does: nothing is dropped or stored.
    void crash() { databases.pending().setObserver({}); }
    fs::path folder() const { return m_folder.path() / "settings"; }
    std::vector<fs::path> files() const {
        std::error_code none;
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(folder(), none))
            found.push_back(entry.path());
        return found;
    }
    std::string text() const { return files().size() == 1 ? bytesOf(files()[0]) : std::string(); }
    WriteResult describe(const char* description) {
        return set(kUser, kTableDetailStyle, m_style, 3, KorString(description));
    }
    KorString description() { return row<StructDetailStyle>(kUser, m_style)->description; }
    void edit() {
        describe("a tab\there, a break\nthere, \\ and |");
        set(kUser, kTableViewRequest, row<StructDetViewRequest>(kUser, "Column front")->key, 10, 0.1 + 0.2);
        databases.pending().beginGroup("copying");
        addStyle(kUser, "Own", 5);
        databases.pending().endGroup();
        databases.remove(kTableReprMap, m_map);
        describe("wrong");
        databases.undo();
        describe("wrong too");
        databases.undo();
        databases.redo();
        databases.undo();
        set(kUser, kTableDetailStyle, row<StructDetailStyle>(kUser, "Own")->key, 6, std::int64_t{4});
    }
    static std::unique_ptr<PendingLog> parsed(const std::string& bytes) {
        return RecoveryText::parse(bytes, [](const RecoverySource&) { return kUser; }).changes;
    }
    static std::string unsealed(const std::string& bytes) {
        std::string lines;
        std::istringstream stream(bytes);
        for (std::string line; std::getline(stream, line);)
            lines += line.substr(0, line.rfind('\t')) + "\n";
        return lines;
    }
    std::vector<OutsideChange> bringBackAll() {
        std::vector<OutsideChange> all;
        for (RecoveryFile& lost : RecoveryFile::abandonedIn(folder())) {
            EXPECT_EQ(lost.read(databases).error, "");
            for (OutsideChange& change : databases.bringBack(lost.changes()))
                all.push_back(std::move(change));
            lost.settle();
        }
        return all;
    }

    RecoveryWriter* m_writer = nullptr;
    std::int32_t m_style = 0;
    std::int32_t m_map = 0;
    std::vector<KorString> m_told;
};

} // namespace

TEST_F(RecoveryTest, WhatAKilledProgramHadPendingIsPendingAgainAndNothingIsStored) {
    const std::string stored = bytesOf(file("user.dsdb"));
    const std::string before = contentOf(kUser);
    edit();
    const std::string wanted = contentOf(kUser);
    open(false);
    ASSERT_EQ(contentOf(kUser), before);
    databases.closeSource(kUser);
    const pid_t child = fork();
    if (child == 0) {
        open(false);
        write();
        edit();
        databases.pending().beginGroup("a command that was killed");
        describe("half");
        raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    open(false);
    const auto changes = bringBackAll();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_TRUE(changes[0].conflicts.empty());
    EXPECT_EQ(contentOf(kUser), wanted);
    EXPECT_EQ(bytesOf(file("user.dsdb")), stored);
    EXPECT_TRUE(files().empty());
    ASSERT_EQ(databases.pending().undoable(9).size(), 1u);
    databases.undo();
    EXPECT_EQ(contentOf(kUser), before);
    databases.redo();
    ASSERT_TRUE(commit());
    open(false);
    EXPECT_EQ(contentOf(kUser), wanted);
}

TEST_F(RecoveryTest, TheFileIsThereOnlyWhileSomethingIsPending) {
    write();
    EXPECT_TRUE(files().empty());
    describe("mine");
    EXPECT_EQ(files().size(), 1u);
    databases.undo();
    EXPECT_TRUE(files().empty());
    databases.redo();
    EXPECT_TRUE(mentions(text(), "mine"));
    EXPECT_TRUE(commit());
    EXPECT_TRUE(files().empty());
    describe("maker's");
    set(kStandard, kTableReprMap, add<StructDetObjReprMap>(kStandard, "New"), 2, KorString("d"));
    OtherProgram(file("user.dsdb")).run("UPDATE detail_style SET description = 'theirs'");
    EXPECT_FALSE(commit());
    EXPECT_EQ(files().size(), 1u) << "one of two sources is stored";
    crash();
    auto lost = RecoveryFile::abandonedIn(folder());
    ASSERT_EQ(lost.size(), 1u);
    ASSERT_TRUE(lost[0].read(databases));
    EXPECT_FALSE(lost[0].changes().hasPending(kStandard));
    EXPECT_TRUE(lost[0].changes().hasPending(kUser, kTableDetailStyle));
    write(); // hears of what stands already
    EXPECT_EQ(files().size(), 2u);
    KorOdbcMan::setStatusOnCancel(kTableDetailStyle, KorOdbcMan::kThisRow);
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(RecoveryTest, ChangesAreComparedWithWhatIsStoredNow) {
    write();
    edit();
    const std::int64_t titles = row<StructDetailStyle>(kUser, m_style)->titlePosition;
    set(kUser, kTableDetailStyle, m_style, 6, std::int64_t{2});
    crash();
    OtherProgram(file("user.dsdb"))
        .run("UPDATE detail_style SET title_position = 5; DELETE FROM view_request WHERE name = 'Column "
             "front'");
    open(false);
    const auto changes = bringBackAll();
    ASSERT_EQ(changes.size(), 1u);
    ASSERT_EQ(changes[0].conflicts.size(), 2u);
    for (const OutsideConflict& conflict : changes[0].conflicts) {
        if (conflict.column->name == "title_position") {
            ASSERT_TRUE(conflict.before);
            EXPECT_EQ(conflict.column->read(conflict.before.get()), CellValue(titles));
        }
        EXPECT_EQ(databases.keepMine(kUser, conflict).isStored(), conflict.column->name == "title_position");
    }
    EXPECT_EQ(row<StructDetailStyle>(kUser, m_style)->titlePosition, 2);
    EXPECT_TRUE(mentions(description().toStdString(), "there"));
    EXPECT_TRUE(row<StructDetailStyle>(kUser, "Own"));
}

TEST_F(RecoveryTest, WhatIsAboveNewRowsOrWasChangedIsStillKnownByNameWhenItIsGone) {
    StructDetObjQualifierSetGroup group;
    const std::int32_t key = add(kUser, "Own group", group);
    const std::int32_t changed = add<StructDetViewArrangeStrategy>(kUser, "Wide");
    ASSERT_TRUE(commit());
    write();
    StructDetObjQualifierSet set;
    set.groupKey = key;
    add(kUser, "First", set);
    add(kUser, "Second", set);
    StructDetObjReprMapKey part;
    part.reprMapKey = m_map;
    add(kUser, "Part of it", part);
    this->set(kUser, kTableViewArrangeStrategy, changed, 3, 5.0);
    crash();
    OtherProgram(file("user.dsdb"))
        .run("DELETE FROM qualifier_set_group; DELETE FROM repr_map; DELETE FROM view_arrange_strategy");
    open(false);
    const std::vector<OutsideChange> changes = bringBackAll();
    ASSERT_EQ(changes.size(), 1u);
    const std::vector<OutsideConflict>& conflicts = changes[0].conflicts;
    ASSERT_EQ(conflicts.size(), 3u);
    EXPECT_EQ(conflicts[0].wholeName, "Spare");
    EXPECT_EQ(conflicts[1].record->name, "Own group");
    EXPECT_TRUE(conflicts[1].isMade);
    EXPECT_EQ(conflicts[2].name, "Wide");
    const auto* again = row<StructDetObjQualifierSetGroup>(kUser, "Own group");
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(row<StructDetObjQualifierSet>(kUser, "First")->groupKey, again->key);
    EXPECT_EQ(row<StructDetObjQualifierSet>(kUser, "Second")->groupKey, again->key);
}

TEST_F(RecoveryTest, OfTwoRunsThatWereKilledTheLaterOneCountsAndNobodyElseIsBlamed) {
    for (const char* text : {"one", "two"}) {
        open(false); // what was left is not brought back yet
        write();
        describe(text);
        crash();
    }
    open(false);
    EXPECT_EQ(files().size(), 2u);
    for (const OutsideChange& change : bringBackAll())
        EXPECT_TRUE(change.conflicts.empty());
    EXPECT_EQ(description(), "two");
    databases.undo();
    EXPECT_EQ(description(), "one");
}

TEST_F(RecoveryTest, WhatWasStoredBeforeTheCrashIsNotMadeTwice) {
    write();
    edit();
    const std::string log = text();
    const fs::path name = files()[0];
    ASSERT_TRUE(commit());
    crash();
    writeBytes(name, log); // killed between the commit and the end of the file
    open(false);
    const std::string stored = contentOf(kUser);
    const auto changes = bringBackAll();
    EXPECT_EQ(changes.at(0).conflicts.size(), 0u);
    EXPECT_EQ(contentOf(kUser), stored);
    EXPECT_TRUE(databases.pending().isEmpty());
}

TEST_F(RecoveryTest, AFileThatBreaksOffLosesOnlyWhatItBrokeOffIn) {
    write();
    std::map<std::size_t, std::size_t> commands{{0, 0}}; // that stand, by the size of the file
    const auto note = [&] {
        commands.erase(commands.upper_bound(text().size()), commands.end()); // what is undone is taken off
        commands[text().size()] = databases.pending().undoable(99).size();
    };
    for (int i = 0; i < 3; ++i, note())
        describe(std::to_string(i).c_str());
    databases.undo();
    note();
    databases.remove(kTableReprMap, m_map);
    note();
    describe("last");
    note();
    const std::string whole = text();
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const auto log = parsed(whole.substr(0, size));
        ASSERT_NE(log, nullptr) << whole.substr(0, size);
        ASSERT_EQ(log->undoable(99).size(), std::prev(commands.upper_bound(size))->second) << size;
    }
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string changed = whole;
        changed[at] ^= 1;
        const auto log = parsed(changed);
        ASSERT_TRUE(!log || (at + 1 == whole.size() && log->undoable(99).size() < commands.rbegin()->second))
            << at;
    }
}

TEST_F(RecoveryTest, HostileKeysAndRowsBringNothingDown) {
    write();
    add<StructDetObjReprMap>(kUser, "New");
    set(kUser, kTableReprMap, m_map, 2, KorString("d"));
    const fs::path name = files()[0];
    const std::string row = "append\t1\trepr_map\t";
    const auto at = text().find(row);
    ASSERT_NE(at, std::string::npos);
    std::string lines = unsealed(text());
    const std::string tail = lines.substr(lines.find('\t', lines.find(row) + row.size()));
    for (const char* key : {"2147483647", "1", "2147483646"})
        lines += row + key + tail.substr(0, tail.find('\n') + 1);
    lines += "append\t1\trepr_map\t9\ndelete\t1\trepr_map\t77\tname=never there\n";
    crash();
    databases.undo(), databases.undo();
    RecoveryText::Seal seal = RecoveryText::kNoSeal;
    writeBytes(name, RecoveryText::sealed(lines, seal));
    ASSERT_EQ(bringBackAll().size(), 1u);
    EXPECT_TRUE(commit());
}

TEST_F(RecoveryTest, ADamagedFileIsOneSentenceAndIsKept) {
    write();
    edit();
    const std::string whole = unsealed(text()) + "undo\n";
    const fs::path name = files()[0];
    crash();
    const auto damaged = [&](const char* what, const char* with) {
        std::string bytes = whole;
        const auto at = bytes.find(what);
        EXPECT_NE(at, std::string::npos) << what;
        RecoveryText::Seal seal = RecoveryText::kNoSeal;
        return RecoveryText::sealed(bytes.replace(at, std::string_view(what).size(), with), seal);
    };
    for (const std::string& bytes :
         {damaged("recovery\t1", "recovery\t2"), damaged("cell\t", "sell\t"), damaged("scale", "stale"),
          damaged("\tdescription\t\t", "\tdescription\t"), damaged("\tdetail_style\t", "\tdetail\t"),
          damaged("\t0.1\t", "\t0.1x\t"), damaged("\t0.1\t", "\tinf\t"),
          damaged("title_position=0", "title_position="), damaged("user.dsdb\n", "user.dsdb\\\n"),
          damaged("undo", "undone"), damaged("end\n", "end\nend\n"), damaged("cell\t1", "cell\t7"),
          damaged("undo\n", "undo\nundo\nundo\nundo\nundo\nundo\nundo\nundo\n"), whole,
          std::string("no recovery file\n")}) {
        writeBytes(name, bytes);
        auto lost = RecoveryFile::abandonedIn(folder());
        ASSERT_EQ(lost.size(), 1u);
        EXPECT_TRUE(mentions(lost[0].read(databases).error, name)) << bytes.substr(0, 400);
        EXPECT_TRUE(lost[0].changes().isEmpty());
        EXPECT_EQ(bytesOf(name), bytes);
    }
}

TEST_F(RecoveryTest, TwoProgramsNeverHaveOneFile) {
    write();
    describe("mine");
    EXPECT_TRUE(RecoveryFile::abandonedIn(folder()).empty()) << "its owner lives";
    StyleDatabases others;
    ASSERT_EQ(others.openFile(kUser, file("user.dsdb"), false).error, "");
    others.pending().setObserver(std::make_unique<RecoveryWriter>(folder(), others, [](const KorString&) {}));
    others.setCurrentSource(kUser);
    others.setCell(kTableDetailStyle, KorOdbcKey(m_style), 3, KorString("theirs"));
    EXPECT_EQ(files().size(), 2u);
    crash();
    const fs::path unlocked = folder() / RecoveryName::of(1, 1);
    writeBytes(unlocked, ""); // its writer has opened it, and waits for the lock
    const auto lost = RecoveryFile::abandonedIn(folder());
    ASSERT_EQ(lost.size(), 1u);
    EXPECT_FALSE(fs::exists(unlocked)) << "nobody keeps that lock";
    EXPECT_TRUE(RecoveryFile::abandonedIn(folder()).empty()) << "one program offers it";
}

TEST_F(RecoveryTest, ChangesOfAnotherFolderAreLeftAloneAndAReplacedDatabaseIsNamed) {
    write();
    describe("mine");
    crash();
    const auto look = [this] {
        auto lost = RecoveryFile::abandonedIn(folder());
        EXPECT_EQ(lost.size(), 1u);
        EXPECT_TRUE(lost[0].read(databases));
        return std::move(lost[0]);
    };
    {
        RecoveryFile lost = look();
        EXPECT_FALSE(lost.changes().isEmpty());
        EXPECT_TRUE(lost.missing().empty() && lost.replaced().empty());
    }
    fs::copy_file(file("user.dsdb"), file("copy.dsdb"));
    ASSERT_EQ(databases.openFile(kUser, file("copy.dsdb"), false).error, "");
    EXPECT_TRUE(look().changes().isEmpty());
    EXPECT_EQ(look().missing(), std::vector<std::string>{file("user.dsdb")});
    EXPECT_TRUE(look().readOnly().empty());
    databases.setOwnerMode(false);
    fs::rename(file("copy.dsdb"), file("user.dsdb"));
    ASSERT_EQ(databases.openFile(kUser, file("user.dsdb"), true).error, "");
    EXPECT_TRUE(look().changes().isEmpty()) << "it may not be edited";
    EXPECT_EQ(look().readOnly(), std::vector<std::string>{file("user.dsdb")});
    ASSERT_EQ(databases.openFile(kUser, file("user.dsdb"), false).error, "");
    EXPECT_FALSE(look().changes().isEmpty());
    EXPECT_EQ(look().replaced(), std::vector<std::string>{file("user.dsdb")});
}

TEST_F(RecoveryTest, ChangesOfADatabaseThatIsNotThereStayWhenTheOthersAreSettled) {
    write();
    describe("mine");
    set(kStandard, kTableReprMap, add<StructDetObjReprMap>(kStandard, "New"), 2, KorString("d"));
    const fs::path name = files()[0];
    databases.pending().beginGroup("killed");
    crash();
    writeBytes(name, text() + "begin\tkilled");
    databases.closeSource(kStandard);
    open();
    EXPECT_EQ(bringBackAll().size(), 1u);
    EXPECT_EQ(description(), "mine");
    ASSERT_EQ(files().size(), 1u);
    open(false);
    const auto changes = bringBackAll();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].source, kStandard);
    EXPECT_TRUE(row<StructDetObjReprMap>(kStandard, "New"));
    EXPECT_TRUE(files().empty());
}

TEST_F(RecoveryTest, WhatCannotBeWrittenIsToldOnceAndMadeUpForAndTheOnlyCopyStays) {
    const fs::path hindrance = m_folder.write("settings", "no folder");
    write();
    describe("mine");
    describe("mine too");
    ASSERT_EQ(m_told.size(), 1u);
    EXPECT_TRUE(mentions(m_told[0].toStdString(), "recovery-"));
    EXPECT_FALSE(m_writer->isUpToDate());
    fs::remove(hindrance);
    describe("third");
    EXPECT_TRUE(m_writer->isUpToDate());
    EXPECT_EQ(parsed(text())->undoable(9).size(), 3u);
    const std::string three = text();
    describe("taken back");
    OtherProgram(file("user.dsdb")).run("UPDATE detail_style SET title_position = 5");
    {
        const FullDisk full;
        databases.undo();
        EXPECT_TRUE(m_writer->isUpToDate());
        EXPECT_EQ(text(), three);
        describe("does not fit");
        EXPECT_EQ(m_told.size(), 2u);
        databases.undo();
        EXPECT_TRUE(m_writer->isUpToDate()) << "what stands is known again";
        EXPECT_EQ(databases.refreshChanged().size(), 1u);
        EXPECT_EQ(m_told.size(), 2u);
        EXPECT_FALSE(m_writer->isUpToDate());
        EXPECT_EQ(text(), three);
    }
    describe("last");
    EXPECT_TRUE(m_writer->isUpToDate());
    EXPECT_EQ(parsed(text())->undoable(9).size(), 2u);
    set(kStandard, kTableReprMap, add<StructDetObjReprMap>(kStandard, "New"), 2, KorString("d"));
    databases.undo(), databases.undo(); // and the line that names the database
    add<StructDetObjReprMap>(kStandard, "Other");
    EXPECT_EQ(parsed(text())->undoable(9).size(), 3u);
    OtherProgram(file("user.dsdb")).run("UPDATE detail_style SET title_position = 6");
    databases.refreshChanged();
    databases.undo(); // what was made anew is not at the end of the file by itself
    EXPECT_EQ(parsed(text())->undoable(9).size(), 1u);
}

TEST_F(RecoveryTest, WhatACommitStoredIsNotOfferedThoughNobodySawItsEnd) {
    class Copying : public RecoveryWriter {
    public:
        using RecoveryWriter::RecoveryWriter;
        void storing(std::span<const PendingPlace> places, std::uint32_t mark) override {
            RecoveryWriter::storing(places, mark);
            atCommit();
        }
        std::function<void()> atCommit;
    };
    const std::string before = bytesOf(file("user.dsdb"));
    auto writer = std::make_unique<Copying>(folder(), databases, [](const KorString&) {});
    std::string log;
    fs::path name;
    writer->atCommit = [&] { name = files().at(0), log = text(); };
    databases.pending().setObserver(std::move(writer));
    edit();
    const std::int32_t ownKey = row<StructDetailStyle>(kUser, "Own")->key;
    ASSERT_TRUE(commit());
    crash();
    databases.closeSource(kUser);
    const std::string stored = bytesOf(file("user.dsdb"));
    const char* const theirs = "UPDATE detail_style SET description = 'theirs' WHERE name = 'Own'";
    OtherProgram(file("user.dsdb")).run(theirs);
    const auto offered = [&](const std::string& bytes) {
        writeBytes(name, bytes);
        open(false);
        auto lost = RecoveryFile::abandonedIn(folder());
        EXPECT_TRUE(lost.size() == 1 && lost[0].read(databases));
        return !lost[0].changes().isEmpty();
    };
    EXPECT_FALSE(offered(log));
    RecoveryText::Seal seal = RecoveryText::kNoSeal;
    EXPECT_TRUE(offered(RecoveryText::sealed(unsealed(log) + "undo\n", seal))) << "that commit failed";
    databases.closeSource(kUser);
    writeBytes(file("user.dsdb"), before);
    EXPECT_TRUE(offered(log)) << "it was killed before";
    // After another commit of this program only the rows tell.
    databases.closeSource(kUser);
    writeBytes(file("user.dsdb"), stored);
    OtherProgram(file("user.dsdb")).run("PRAGMA schema_version = 99");
    EXPECT_FALSE(offered(log));
    databases.closeSource(kUser);
    OtherProgram(file("user.dsdb")).run(theirs);
    EXPECT_TRUE(offered(log)) << "a namesake with all of its rows, but others";
    databases.closeSource(kUser);
    writeBytes(file("user.dsdb"), before);
    const std::string own = std::to_string(ownKey);
    databases.closeSource(kUser);
    OtherProgram(file("user.dsdb"))
        .run("INSERT INTO detail_style(\"key\", name) VALUES (" + own + ", 'Own')"); // a namesake
    ASSERT_TRUE(offered(log));
    auto lost = RecoveryFile::abandonedIn(folder());
    ASSERT_TRUE(lost.at(0).read(databases));
    EXPECT_TRUE(lost[0].changes().hasPending(kUser, kTableDetailStyle));
    EXPECT_TRUE(lost[0].changes().hasPending(kUser, kTableDetailMaster));
}

TEST_F(RecoveryTest, ACommitThatFailedIsNotTakenForOneThatMayHaveStored) {
    write();
    edit();
    const std::string before = text();
    {
        OtherProgram reader(file("user.dsdb"));
        reader.run("BEGIN; SELECT * FROM detail_style");
        const LockWaiting hardly;
        EXPECT_FALSE(commit());
    }
    EXPECT_EQ(text(), before);
    EXPECT_TRUE(commit());
    EXPECT_TRUE(files().empty());
}

TEST_F(RecoveryTest, FilesThatOnlyLookLikeOnesAreLeftAlone) {
    fs::create_directories(folder());
    for (const char* name : {"recovery-todo", "recovery-12", "recovery-12-1-99", "recovery-"})
        writeBytes(folder() / name, "");
    writeBytes(folder() / "recovery-notes.txt", "mine");
    EXPECT_TRUE(RecoveryFile::abandonedIn(folder()).empty());
    EXPECT_EQ(files().size(), 5u);
}
