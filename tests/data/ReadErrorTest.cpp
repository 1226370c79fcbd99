#include "StoreTestSupport.h"
#include "StyleFixture.h"
#include "support/FaultVfs.h"

#include "data/StyleDatabases.h"
#include "operations/KorOdbcGUI.h"

// What is done with a source of which not all could be read, or which another program changes while several
// tables are being read.

namespace {

class ReadErrorTest : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        addStyle(kUser, "Base plate", 1);
        addStyle(kUser, "Column", 2);
        ASSERT_TRUE(commit());
        whole = contentOf(kUser);
        databases.closeSource(kUser);
        databases.closeSource(kStandard);
        databases.setOwnerMode(false);
    }

    std::string openUser() { return databases.openFile(kUser, file("user.dsdb"), false).error; }
    std::string contentOfFile(const std::string& path) {
        StyleDatabases others;
        EXPECT_EQ(others.openFile(kStandard, path, true).error, "");
        return contentOf(*others.source(kStandard));
    }
    std::string whole; ///< what the User database holds
};

TEST_F(ReadErrorTest, WhatCouldNotBeReadIsToldRefusedAndReadAgain) {
    ASSERT_EQ(openUser(), "");
    StyleSource& source = *databases.source(kUser);
    const std::int32_t style = row<StructDetailStyle>(kUser, "Column")->key;
    const LockWaiting hardly;
    OtherProgram other(file("user.dsdb"));
    other.run("BEGIN EXCLUSIVE");
    const KorDSNRequest request(kUser.dsn, kUser.index);
    EXPECT_TRUE(KorOdbcGUI::isViewRequestShared(4711) && KorOdbcGUI::findQualifierSet(4711)) << "they may be";
    EXPECT_EQ(count<StructDetObjReprMap>(kUser), 0);
    EXPECT_TRUE(mentions(source.problems().back().sentence, "user.dsdb"));
    EXPECT_EQ(databases.remove(kTableDetailStyle, KorOdbcKey(style)), WriteResult::kIncompleteSource);
    StructDetObjReprMap map;
    EXPECT_EQ(databases.append(kTableReprMap, map), WriteResult::kIncompleteSource);
    other.run("COMMIT");
    EXPECT_EQ(databases.refreshChanged().size(), 1U);
    EXPECT_EQ(source.complete().error, "");
    EXPECT_TRUE(source.problems().empty());
    EXPECT_EQ(contentOf(source), whole);
    EXPECT_EQ(databases.remove(kTableDetailStyle, KorOdbcKey(style)), WriteResult::kWritten);
}

TEST_F(ReadErrorTest, OfOneCommandOnlyTheFirstWaitForALockTakesTime) {
    ASSERT_EQ(openUser(), "");
    StyleSource& source = *databases.source(kUser);
    OtherProgram other(file("user.dsdb"));
    other.run("BEGIN EXCLUSIVE");
    int asked = 0;
    const auto before = LockWait::setAsk([&](const std::string&, std::chrono::milliseconds) {
        ++asked;
        return false;
    });
    for (const eTableType table : {kTableReprMap, kTableScale, kTableDetailStyle})
        EXPECT_TRUE(mentions(source.readingOf(table).error, "locked by another program"));
    EXPECT_FALSE(source.complete() || source.complete());
    EXPECT_EQ(asked, 1);
    LockWait::nextCommand();
    EXPECT_TRUE(databases.refreshChanged().empty());
    EXPECT_EQ(asked, 1) << "a look is repeated soon";
    EXPECT_FALSE(source.complete());
    EXPECT_EQ(asked, 2);
    other.run("COMMIT");
    EXPECT_TRUE(source.complete()) << "what was given up is tried all the same";
    LockWait::setAsk(before);
}

// Nobody asked for it yet: what cannot be read now is no trouble, and nothing of two states is read.
TEST_F(ReadErrorTest, WhatIsReadAheadIsReadWholeOrLeftToWhoAsksForIt) {
    ASSERT_EQ(openUser(), "");
    StyleSource& source = *databases.source(kUser);
    OtherProgram other(file("user.dsdb"));
    {
        const LockWaiting hardly;
        other.run("BEGIN EXCLUSIVE");
        EXPECT_FALSE(source.readAhead());
        other.run("COMMIT");
    }
    EXPECT_TRUE(source.problems().empty());
    EXPECT_FALSE(source.hasFailed());
    ASSERT_TRUE(source.readAhead());
    other.run("UPDATE detail_style SET description = 'new'");
    EXPECT_FALSE(source.readAhead());
    EXPECT_FALSE(source.isOutdated());
    EXPECT_EQ(databases.refreshChanged().size(), 1U);
    while (source.readAhead())
        ;
    EXPECT_TRUE(
        std::ranges::all_of(allTables(), [&](const TableSchema& each) { return source.isRead(each); }));
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Column")->description, "new");
    EXPECT_EQ(source.complete().error, "");
}

TEST_F(ReadErrorTest, TablesOfTwoStatesAreNotTakenForOne) {
    ASSERT_EQ(openUser(), "");
    row<StructDetailStyle>(kUser, "Column");
    OtherProgram(file("user.dsdb"))
        .run("UPDATE detail_style SET description = 'new'; UPDATE view_request SET scale = 7");
    EXPECT_EQ(row<StructDetViewRequest>(kUser, "Column top")->scale, 7);
    EXPECT_TRUE(mentions(databases.source(kUser)->complete().error, "another program"));
    EXPECT_EQ(databases.readWhole(kUser).error, "");
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Column")->description, "new");
}

// As the editor reads them: a table at a time, when it is first touched.
TEST_F(ReadErrorTest, TablesReadOneByOneBesideAWriterAreOfOneStateAfterTheNextLook) {
    int mixed = 0;
    bool wrote = true;
    for (int place = 1; wrote && !HasFailure(); ++place) {
        wrote = false;
        OtherProgram other(file("user.dsdb"));
        const std::string before = contentOfFile(file("user.dsdb"));
        {
            const FaultVfs writer(place, [&] {
                other.run("PRAGMA synchronous = OFF; BEGIN; UPDATE detail_style SET description = "
                          "description || '+'; "
                          "UPDATE view_request SET scale = scale + 1; COMMIT");
                wrote = true;
            });
            ASSERT_EQ(openUser(), "");
            for (const TableSchema& table : allTables())
                databases.source(kUser)->table(table.type);
        }
        StyleSource& source = *databases.source(kUser);
        const std::string after = contentOfFile(file("user.dsdb"));
        const std::string read = contentOf(source);
        EXPECT_TRUE(source.isOutdated() || read == before || read == after);
        mixed += read != before && read != after;
        databases.refreshChanged();
        EXPECT_EQ(source.complete().error, "");
        EXPECT_EQ(contentOf(source), after);
    }
    EXPECT_GT(mixed, 0);
}

} // namespace
