#include "StyleFixture.h"

#include "data/FreeName.h"
#include "data/check/ConsistencyCheck.h"
#include "operations/KorDatabaseAccess.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "support/Mentions.h"

#include <fstream>

namespace {

using Exports = KorODBCDetailStyleExports;

class ExchangeTest : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        addStyle(kStandard, "Base plate", 1);
        addStyle(kStandard, "Column", 2);
        ASSERT_TRUE(commit());
        databases.setOwnerMode(false);
        open();
    }

    std::int32_t styleKey(SourceId id, const KorString& name) {
        return row<StructDetailStyle>(id, name)->key;
    }
    int exportColumn() {
        return Exports::exportDetail(0, styleKey(kStandard, "Column"), kStandard.dsn, kStandard.index,
                                     file("column.dsdb"));
    }
    int import(const KorString& style, ImportReport* report = nullptr) {
        return Exports::importDetail(0, styleKey(kStandard, style), kStandard.dsn, kStandard.index, kUser.dsn,
                                     kUser.index, report);
    }
    // Name of the qualifier set in the first entry of the representation map of the view in slot 3.
    KorString deepName(SourceId id, const KorString& style) {
        const auto* view = row<StructDetViewRequest>(id, row<StructDetailStyle>(id, style)->viewRequests[2]);
        const auto parts = partsOf(*databases.source(id), {kTableReprMap, view->reprMapKey});
        const auto* entry = row<StructDetObjReprMapKey>(id, parts.at(0).key);
        return row<StructDetObjQualifierSet>(id, entry->qualifierSetKey)->name;
    }
};

TEST_F(ExchangeTest, ExportedFileHoldsTheStyleWithAllItNeedsAndNothingElse) {
    ASSERT_EQ(exportColumn(), Exports::kDone);
    const SourceId exported = SourceId::exchange();
    ASSERT_EQ(KorDatabaseAccess::setConnection(exported.dsn, exported.index, file("column.dsdb")).error, "");
    const auto* style = row<StructDetailStyle>(exported, "Column");
    ASSERT_TRUE(style);
    EXPECT_EQ(style->key, 1);
    EXPECT_EQ(count<StructDetailStyle>(exported), 1);
    EXPECT_EQ(count<StructDetViewRequest>(exported), 2);
    EXPECT_EQ(row<StructDetViewRequest>(exported, style->viewRequests[2])->name, "Column top");
    EXPECT_EQ(style->viewRequests[1], 0);
    EXPECT_EQ(deepName(exported, "Column"), "Beams");
    const auto* master = row<StructDetailMaster>(exported, "Column");
    EXPECT_EQ(std::pair(master->detailKey, master->number), std::pair(7, 2));
    EXPECT_EQ(row<StructDetBaseCategory>(exported, master->categoryKey)->name, "Columns");
    EXPECT_EQ(count<StructDetObjQualifierWithRole>(exported), 1);
    EXPECT_EQ(count<StructBitmapIndex>(exported), 1);
    EXPECT_TRUE(row<StructNumericDefault>(exported, "C01_DistanceUnit"));
    EXPECT_EQ(count<StructTextSize>(exported), 1);
    const auto findings = faultsOf(*databases.source(exported));
    EXPECT_TRUE(findings.empty()) << findings.front().sentence;
    EXPECT_EQ(exportColumn(), Exports::kFileFailed) << "the file is open as a source";
    Exports::deleteCache(0);
    EXPECT_EQ(exportColumn(), Exports::kDone);
}

TEST_F(ExchangeTest, ExportTakesPendingChangesAndClearsReferencesThatPointNowhere) {
    addStyle(kUser, "Own", 1);
    const auto* style = row<StructDetailStyle>(kUser, "Own");
    set(kUser, kTableDetailStyle, style->key, 3, KorString("pending"));
    databases.source(kUser)->setCell(kTableDetailStyle, KorOdbcKey(style->key),
                                     *findTable(kTableDetailStyle)->column(13), std::int64_t{2000});
    std::vector<std::string> leftOut;
    ASSERT_EQ(Exports::exportDetail(0, style->key, kUser.dsn, kUser.index, file("own.dsdb"), &leftOut),
              Exports::kDone);
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_NE(leftOut.front().find("2000"), std::string::npos) << leftOut.front();
    ASSERT_EQ(databases.openFile(SourceId::exchange(), file("own.dsdb"), true).error, "");
    const auto* exported = row<StructDetailStyle>(SourceId::exchange(), "Own");
    EXPECT_EQ(exported->description, "pending");
    EXPECT_EQ(exported->viewRequests[1], 0);
}

TEST_F(ExchangeTest, ImportIsOnePendingGroupAndIsStoredByTheCommit) {
    ImportReport report;
    ASSERT_EQ(import("Column", &report), Exports::kDone);
    ASSERT_EQ(report.imported, std::vector<KorString>{"Column"});
    EXPECT_EQ(report.rowsAppended, rowCount(kUser));
    EXPECT_EQ(databases.pending().undoable(1).front().label, "importing of \"Column\"");
    databases.undo();
    EXPECT_EQ(rowCount(kUser), 0);
    EXPECT_TRUE(databases.pending().isEmpty());
    databases.redo();
    ASSERT_TRUE(commit());
    open();
    EXPECT_EQ(deepName(kUser, "Column"), "Beams");
    EXPECT_EQ(row<StructDetailMaster>(kUser, "Column")->styleKey, styleKey(kUser, "Column"));
    EXPECT_EQ(count<StructDetViewRequestCategory>(kUser), 2);
    EXPECT_EQ(count<StructTextSize>(kUser), 1) << "a target without any gets the list";
    EXPECT_TRUE(faultsOf(*databases.source(kUser)).empty());
}

TEST_F(ExchangeTest, ImportReusesEqualRowsAndRenamesDifferentOnes) {
    ASSERT_EQ(import("Column"), Exports::kDone);
    ImportReport again;
    EXPECT_EQ(import("Column", &again), Exports::kDone);
    EXPECT_EQ(again.rowsAppended, 0);
    EXPECT_EQ(again.alreadyThere, std::vector<KorString>{"Column"});

    ImportReport second;
    ASSERT_EQ(import("Base plate", &second), Exports::kDone);
    EXPECT_TRUE(second.renamed.empty());
    EXPECT_EQ(count<StructDetObjReprMap>(kUser), 1) << "both styles share it";

    // a part deep below the style changes: everything on the way to the style comes in anew, the rest is
    // reused
    const auto* member = row<StructDetObjQualifierWithRole>(kUser, "Section is I");
    set(kUser, kTableQualifierWithRole, member->key, 6, std::int64_t{1});
    set(kUser, kTableBaseCategory, row<StructDetBaseCategory>(kUser, "Columns")->key, 2, std::int64_t{99});
    ImportReport changed;
    ASSERT_EQ(import("Column", &changed), Exports::kDone);
    ASSERT_EQ(changed.imported, std::vector<KorString>{"Column 1"});
    EXPECT_EQ(deepName(kUser, "Column 1"), "Beams 1");
    EXPECT_EQ(deepName(kUser, "Column"), "Beams");
    EXPECT_EQ(count<StructDetObjAppearance>(kUser), 2);
    EXPECT_EQ(count<StructDetBaseCategory>(kUser), 1);
    EXPECT_EQ(row<StructDetailMaster>(kUser, "Column 1")->number, 3) << "1 and 2 are taken";
    ImportReport repeated;
    ASSERT_EQ(import("Column", &repeated), Exports::kDone);
    EXPECT_EQ(repeated.alreadyThere, std::vector<KorString>{"Column 1"});
}

TEST_F(ExchangeTest, OfNamesakesEachComesInOnceWithItsOwnParts) {
    std::ignore = databases.openFile(kStandard, file("standard.dsdb"), false);
    databases.setOwnerMode(true);
    for (int i = 0; i < 5; ++i) { // the fourth and fifth map hold the same
        StructDetObjReprMapKey entry;
        StructDetObjReprMap map;
        StructDetViewRequest view;
        StructDetailStyle style;
        entry.name = map.name = view.name = style.name = "Twin";
        const KorDSNRequest request(kStandard.dsn, kStandard.index);
        ASSERT_EQ(databases.appendStored(kTableReprMap, map), WriteResult::kWritten);
        entry.reprMapKey = view.reprMapKey = map.key;
        entry.order = std::min(i, 3);
        ASSERT_EQ(databases.appendStored(kTableReprMapEntry, entry), WriteResult::kWritten);
        ASSERT_EQ(databases.appendStored(kTableViewRequest, view), WriteResult::kWritten);
        style.viewRequests[0] = view.key;
        ASSERT_EQ(databases.appendStored(kTableDetailStyle, style), WriteResult::kWritten);
    }
    ASSERT_TRUE(commit());
    ImportReport report;
    for (int round = 0; round < 2; ++round) {
        const RowArray& styles = databases.source(kStandard)->table(kTableDetailStyle).rows();
        for (int i = 0; i < styles.size(); ++i)
            if (styles.at(i).name == "Twin") {
                ASSERT_EQ(Exports::importDetail(0, styles.at(i).key, kStandard.dsn, kStandard.index,
                                                kUser.dsn, kUser.index, &report),
                          Exports::kDone);
            }
        EXPECT_EQ(report.imported, (std::vector<KorString>{"Twin", "Twin 1", "Twin 2", "Twin 3"}));
        EXPECT_EQ(report.alreadyThere.size(), round == 0 ? 1u : 6u);
        EXPECT_EQ(count<StructDetObjReprMapKey>(kUser), 4);
    }
    for (int i = 0; i < 4; ++i) {
        const auto* map = row<StructDetObjReprMap>(kUser, i == 0 ? "Twin" : numberedName("Twin", i));
        const auto parts = partsOf(*databases.source(kUser), {kTableReprMap, map->key});
        ASSERT_EQ(parts.size(), 1u);
        EXPECT_EQ(row<StructDetObjReprMapKey>(kUser, parts.front().key)->order, i);
    }
}

TEST_F(ExchangeTest, OnlyASoundFileIsOpenedForImport) {
    ASSERT_EQ(exportColumn(), Exports::kDone);
    ASSERT_EQ(Exports::openFile(file("column.dsdb")), Exports::kDone);
    EXPECT_TRUE(row<StructDetailStyle>(SourceId::exchange(), "Column"));
    Exports::deleteCache(0);

    std::ofstream(file("rubbish.dsdb")) << "no database at all, whatever it is called";
    std::ofstream(file("old.MDB")) << "old";
    const int rows = rowCount(kUser);
    for (const char* name : {"rubbish.dsdb", "old.MDB", "missing.dsdb", "user.dsdb"}) {
        EXPECT_EQ(Exports::openFile(file(name)), Exports::kFileFailed) << name;
        EXPECT_FALSE(databases.source(SourceId::exchange()));
        KorString shown;
        EXPECT_EQ(Exports::GetErrorMessage(shown, Exports::kFileFailed), 1);
        EXPECT_TRUE(mentions(shown.toStdString(), name)) << shown.c_str();
    }
    EXPECT_EQ(rowCount(kUser), rows);
    eDSN dsn = kStandard.dsn;
    eIndex index = kStandard.index;
    EXPECT_EQ(Exports::GetDSNAndIndexToUse(dsn, index), 1);
    EXPECT_EQ((SourceId{dsn, index}), kUser) << "Standard cannot be written";
    EXPECT_EQ(Exports::importDetail(0, 1, kUser.dsn, kUser.index, kStandard.dsn, kStandard.index),
              Exports::kReadOnlyTarget);
}

TEST_F(ExchangeTest, ATableWhoseKeysAreUsedUpIsNamed) {
    StructDetViewRequest last;
    last.key = std::numeric_limits<std::int32_t>::max();
    last.name = "Last";
    databases.source(kUser)->insert(kTableViewRequest, last);
    ASSERT_EQ(import("Column"), Exports::kNotStored);
    KorString text;
    ASSERT_EQ(Exports::GetErrorMessage(text, Exports::kNotStored), 1);
    for (const char* word : {"user.dsdb", "view request", "2147483647"})
        EXPECT_NE(text.toStdString().find(word), std::string::npos) << text.c_str();
    EXPECT_EQ(rowCount(kUser), 1);
    EXPECT_EQ(import("Column"), Exports::kNotStored);
    Exports::GetErrorMessage(text, Exports::kNoSuchRow);
    EXPECT_EQ(text.toStdString().find("2147483647"), std::string::npos) << "another code, another sentence";
}

TEST_F(ExchangeTest, CancellingLeavesNothingBehind) {
    int ended = 0;
    ExchangeCallbacks callbacks;
    callbacks.step = [](int done) { KorDetailTableDependencies::m_bDeepCopyCanceledByUser = done == 5; };
    callbacks.end = [&] { ++ended; };
    const ExchangeCallbacks before = Exports::setCallbacks(callbacks);
    EXPECT_EQ(import("Column"), Exports::kCancelled);
    EXPECT_EQ(exportColumn(), Exports::kCancelled);
    Exports::setCallbacks(before);
    EXPECT_EQ(ended, 2);
    EXPECT_EQ(rowCount(kUser), 0);
    EXPECT_FALSE(databases.pending().canUndo() || databases.pending().canRedo());
    EXPECT_FALSE(std::filesystem::exists(file("column.dsdb")));
    KorString text;
    EXPECT_EQ(Exports::GetErrorMessage(text, Exports::kCancelled), 0) << "nobody is told of what he did";
}

TEST_F(ExchangeTest, DefaultNamesAreFree) {
    const KorDSNRequest request(kUser.dsn, kUser.index);
    KorString name;
    ASSERT_EQ(KorDetailTableDependencies::GetDefaultNameForRow(kTableDetailStyle, name), 1);
    EXPECT_EQ(name, "Detail style 1");
    for (const char* taken : {"Detail style 1", "Beam", "Beam 1", "HEA 200"})
        add<StructDetailStyle>(kUser, taken);
    const auto proposal = [](KorString text) {
        KorDetailTableDependencies::GetDefaultNameForRow(kTableDetailStyle, text);
        return text;
    };
    EXPECT_EQ(proposal(""), "Detail style 2");
    EXPECT_EQ(proposal("Beam"), "Beam 2");
    EXPECT_EQ(proposal("Beam 1"), "Beam 2");
    EXPECT_EQ(proposal("HEA 200"), "HEA 200 1");
    EXPECT_EQ(proposal("Free"), "Free");
    EXPECT_EQ(KorDetailTableDependencies::GetDefaultNameForRow(kNoTable, name), 0);
}

TEST_F(ExchangeTest, DependenciesOfARecordAreGatheredAndSaved) {
    ASSERT_EQ(import("Column"), Exports::kDone);
    const KorDSNRequest request(kUser.dsn, kUser.index);
    KorDetailTableDependencies dependencies;
    StructDetObjQualifierSet set;
    ASSERT_EQ(dependencies.GetDependencies(set, row<StructDetObjQualifierSet>(kUser, "Beams")->key), 1);
    EXPECT_EQ(dependencies.rows().size(), 4u); // the set, its group, its member, the member's qualifier
    set.name = "Beams too";
    EXPECT_EQ(dependencies.Save(set, KorOdbcKey()), 1);
    EXPECT_EQ(partsOf(*databases.source(kUser), {kTableQualifierSet, set.key}).size(), 1u);
    const auto steps = databases.pending().steps().size();
    set.name = "Half";
    set.groupKey = 4711;
    EXPECT_EQ(dependencies.Save(set, KorOdbcKey(set.key)), WriteResult::kFailed);
    EXPECT_EQ(databases.pending().steps().size(), steps) << "no column of a record that is refused";
    StructDetailMaster master = *row<StructDetailMaster>(kUser, "Column");
    EXPECT_EQ(dependencies.Save(master, KorOdbcKey()), 1);
    EXPECT_EQ(master.number, 3) << "2 is the number of the original";
}

} // namespace
