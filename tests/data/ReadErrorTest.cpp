#include "StoreTestSupport.h"
#include "StyleFixture.h"
#include "support/FaultVfs.h"

#include "data/KorOdbcGUI.h"
#include "data/check/ConsistencyCheck.h"
#include "data/exchange/KorODBCDetailStyleExports.h"

#include <sstream>

// One read of a file that fails, at each place of an operation in turn: the operation is refused and told, or
// whole. And another program that writes while several tables are being read.

namespace {

using Exports = KorODBCDetailStyleExports;

std::string contentOf(StyleSource& source) {
    std::ostringstream text;
    for (const TableSchema& table : allTables()) {
        const RowArray& rows = source.table(table.type).rows();
        for (int i = 0; i < rows.size(); ++i) {
            text << '\n' << table.name << ' ' << rows.at(i).key;
            for (const Column& column : table.columns)
                std::visit(
                    [&](const auto& value) {
                        if constexpr (requires { value.c_str(); })
                            text << '|' << value.c_str();
                        else
                            text << '|' << value;
                    },
                    column.read(&rows.at(i)));
        }
    }
    return text.str();
}

class ReadErrorTest : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        addStyle(kUser, "Base plate", 1);
        addStyle(kUser, "Column", 2);
        ASSERT_TRUE(commit());
        whole = contentOf(*databases.source(kUser));
        databases.closeSource(kUser);
        databases.closeSource(kStandard);
        databases.setOwnerMode(false);
    }

    /// Runs `work` with an error at the n-th read, for every n at which it reads. It returns an empty text
    /// when it was done, else what it tells; `look` is then told that. Returns how often it was refused.
    int sweep(const std::function<std::string()>& work, const std::function<void(bool done)>& look) {
        int refused = 0;
        for (int place = 1;; ++place) {
            std::string told;
            bool struck = false;
            {
                const FaultVfs faults(place, FaultVfs::eFault::kReadError);
                told = work();
                struck = FaultVfs::hasStruck();
                databases.closeSource(kUser);
                databases.closeSource(SourceId::exchange());
            }
            if (!told.empty()) {
                ++refused;
                EXPECT_TRUE(struck) << told;
                EXPECT_TRUE(mentions(told, ".dsdb")) << told;
            }
            look(told.empty());
            if (!struck || HasFailure())
                return refused;
        }
    }
    std::string openUser() { return databases.openFile(kUser, file("user.dsdb"), false).error; }
    std::string contentOfFile(const std::string& path) {
        StyleDatabases others;
        EXPECT_EQ(others.openFile(kStandard, path, true).error, "");
        return contentOf(*others.source(kStandard));
    }
    std::string exportColumn() {
        if (std::string fault = openUser(); !fault.empty())
            return fault;
        const StoreResult styles = databases.source(kUser)->readingOf(kTableDetailStyle);
        if (!styles)
            return styles.error;
        KorString error;
        Exports::GetErrorMessage(error, Exports::exportDetail(0, row<StructDetailStyle>(kUser, "Column")->key,
                                                              kUser.dsn, kUser.index, file("out.dsdb")));
        return error.toStdString();
    }

    std::string whole; ///< what the User database holds
};

TEST_F(ReadErrorTest, AnExportIsWholeOrRefused) {
    ASSERT_EQ(exportColumn(), "");
    const std::string expected = contentOfFile(file("out.dsdb"));
    std::filesystem::remove(file("out.dsdb"));
    databases.closeSource(kUser);
    const int refused = sweep([&] { return exportColumn(); },
                              [&](bool done) {
                                  EXPECT_EQ(std::filesystem::exists(file("out.dsdb")), done);
                                  if (done) {
                                      EXPECT_EQ(contentOfFile(file("out.dsdb")), expected);
                                  }
                                  std::filesystem::remove(file("out.dsdb"));
                              });
    EXPECT_GT(refused, 50);
}

TEST_F(ReadErrorTest, AnImportIsWholeOrStoresNothing) {
    ASSERT_EQ(exportColumn(), "");
    databases.closeSource(kUser);
    std::filesystem::remove(file("user.dsdb"));
    ASSERT_EQ(SqliteStore::create(file("user.dsdb")).error, "");
    const std::string empty = bytesOf(file("user.dsdb"));
    std::string expected;
    const auto import = [&] {
        std::string told = openUser();
        ImportReport report;
        if (told.empty() && Exports::importFile(file("out.dsdb"), report) != Exports::kDone)
            told = report.error;
        EXPECT_TRUE(report.problems.empty()) << report.problems.front();
        if (told.empty() && !commit())
            told = databases.commitReport().front().error;
        return told;
    };
    ASSERT_EQ(import(), "");
    databases.closeSource(kUser);
    expected = contentOfFile(file("user.dsdb"));
    writeBytes(file("user.dsdb"), empty);
    const int refused = sweep(import, [&](bool done) {
        if (done)
            EXPECT_EQ(contentOfFile(file("user.dsdb")), expected);
        else
            EXPECT_EQ(bytesOf(file("user.dsdb")), empty);
        writeBytes(file("user.dsdb"), empty);
    });
    EXPECT_GT(refused, 50);
}

TEST_F(ReadErrorTest, NothingIsTakenForUnusedUnsharedOrOrphaned) {
    ASSERT_EQ(openUser(), "");
    const std::int32_t map = row<StructDetObjReprMap>(kUser, "Steel")->key;
    const std::int32_t set = row<StructDetObjQualifierSet>(kUser, "Beams")->key;
    ASSERT_TRUE(ConsistencyCheck(*databases.source(kUser)).run().empty());
    databases.closeSource(kUser);
    const int refused = sweep(
        [&] {
            if (std::string fault = openUser(); !fault.empty())
                return fault;
            const KorDSNRequest request(kUser.dsn, kUser.index);
            EXPECT_TRUE(KorOdbcGUI::isObjReprMapRuleShared(KorOdbcKey(map)));
            EXPECT_TRUE(KorOdbcGUI::findQualifierSet(KorOdbcKey(set)));
            EXPECT_LE(KorOdbcCompactDetailsTables::startCompactProcess(
                          kUser.dsn, 0, KorOdbcCompactDetailsTables::kUnusedParts),
                      0);
            const auto findings = ConsistencyCheck(*databases.source(kUser)).run();
            EXPECT_LE(findings.size(), 2U);
            for (const Finding& finding : findings)
                EXPECT_EQ(finding.table, nullptr) << finding.sentence;
            EXPECT_TRUE(databases.pending().isEmpty());
            return findings.empty() ? std::string() : findings.front().sentence;
        },
        [](bool) {});
    EXPECT_GT(refused, 20);
}

TEST_F(ReadErrorTest, WhatCouldNotBeReadIsToldRefusedAndReadAgain) {
    ASSERT_EQ(openUser(), "");
    StyleSource& source = *databases.source(kUser);
    const std::int32_t style = row<StructDetailStyle>(kUser, "Column")->key;
    sqlite3* other = nullptr;
    sqlite3_open(file("user.dsdb").c_str(), &other);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    const KorDSNRequest request(kUser.dsn, kUser.index);
    const auto limit = LockWait::setLimit(std::chrono::milliseconds(1));
    EXPECT_EQ(count<StructDetObjReprMap>(kUser), 0);
    EXPECT_TRUE(mentions(source.problems().back().sentence, "user.dsdb"));
    EXPECT_EQ(databases.remove(kTableDetailStyle, KorOdbcKey(style)), StyleDatabases::kIncompleteSource);
    StructDetObjReprMap map;
    EXPECT_EQ(databases.append(kTableReprMap, map), StyleDatabases::kIncompleteSource);
    sqlite3_close_v2(other);
    LockWait::setLimit(limit);
    EXPECT_EQ(databases.refreshChanged().size(), 1U);
    EXPECT_EQ(source.complete().error, "");
    EXPECT_TRUE(source.problems().empty());
    EXPECT_EQ(contentOf(source), whole);
    EXPECT_EQ(databases.remove(kTableDetailStyle, KorOdbcKey(style)), StyleDatabases::kWritten);
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

TEST_F(ReadErrorTest, TablesOfTwoStatesAreNotTakenForOne) {
    ASSERT_EQ(openUser(), "");
    const std::int32_t style = row<StructDetailStyle>(kUser, "Column")->key;
    OtherProgram other(file("user.dsdb"));
    other.run("UPDATE detail_style SET description = 'new'; UPDATE view_request SET scale = 7");
    EXPECT_EQ(row<StructDetViewRequest>(kUser, "Column top")->scale, 7);
    EXPECT_TRUE(mentions(databases.source(kUser)->complete().error, "another program"));
    EXPECT_EQ(Exports::exportDetail(0, style, kUser.dsn, kUser.index, file("out.dsdb")),
              Exports::kFileFailed);
    EXPECT_FALSE(std::filesystem::exists(file("out.dsdb")));
    EXPECT_EQ(databases.readWhole(kUser).error, "");
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Column")->description, "new");
    EXPECT_EQ(Exports::exportDetail(0, style, kUser.dsn, kUser.index, file("out.dsdb")), Exports::kDone);
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
