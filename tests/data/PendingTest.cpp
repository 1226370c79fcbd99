#include "StoreTestSupport.h"
#include "StyleFixture.h"

#include "data/StyleDatabases.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"

#include <limits>
#include <map>

namespace {

class PendingTest : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        m_style = addStyle(kUser, "Column", 2);
        addStyle(kStandard, "Base plate", 1);
        ASSERT_TRUE(commit());
        open(false);
        databases.setCurrentSource(kUser);
    }
    WriteResult setDescription(const char* text, SourceId id = kUser) {
        return set(id, kTableDetailStyle, m_style, 3, KorString(text));
    }
    KorString description(SourceId id = kUser) { return row<StructDetailStyle>(id, m_style)->description; }
    void others(const std::string& sql) { OtherProgram(file("user.dsdb")).run(sql); }
    void stopUsing(eTableType table, std::int32_t key) {
        for (const Referrer& user : databases.users(table, KorOdbcKey(key)))
            set(kUser, user.table->type, user.key, user.column->number, std::int64_t{0});
    }
    const SourceCommit* report(SourceId id) {
        const auto& reports = databases.commitReport();
        const auto it = std::ranges::find(reports, id, &SourceCommit::source);
        return it == reports.end() ? nullptr : &*it;
    }

    std::int32_t m_style = 0;
};

TEST_F(PendingTest, AValueSetBackAndARowDeletedAgainWriteNothing) {
    setDescription("changed");
    setDescription("");
    const auto key = add<StructDetArrangerControl>(kUser, "New");
    EXPECT_EQ(databases.pending().rowsOf(kUser, 9), (std::set{RowRef{kTableDetailStyle, m_style}}));
    EXPECT_EQ(databases.remove(kTableArrangerControl, key), WriteResult::kWritten);
    EXPECT_TRUE(databases.pending().hasPending(kUser));
    others("UPDATE detail_style SET description = 'theirs'");
    const std::string before = bytesOf(file("user.dsdb"));
    EXPECT_TRUE(commit()) << "there is nothing that could conflict";
    EXPECT_FALSE(databases.pending().hasPending(kUser));
    EXPECT_EQ(bytesOf(file("user.dsdb")), before);
}

TEST_F(PendingTest, UndoAndRedoTakeWholeCommandsAndKeepIndexesRight) {
    const auto map = row<StructDetObjReprMap>(kUser, "Steel")->key;
    EXPECT_EQ(databases.remove(kTableReprMap, map), WriteResult::kWritten);
    EXPECT_EQ(count<StructDetObjReprMapKey>(kUser), 0) << "its parts go with it";
    EXPECT_EQ(databases.pending().undoable(1).front().label, "Steel");
    EXPECT_EQ(databases.undo().size(), 3u);
    EXPECT_EQ(partsOf(*databases.source(kUser), {kTableReprMap, map}).size(), 2u);

    set(kUser, kTableReprMap, map, 1, KorString("Concrete"));
    EXPECT_FALSE(row<StructDetObjReprMap>(kUser, "Steel"));
    databases.undo();
    EXPECT_EQ(row<StructDetObjReprMap>(kUser, "Steel")->key, map);
    databases.redo();
    EXPECT_EQ(row<StructDetObjReprMap>(kUser, "Concrete")->key, map);
    databases.undo();
    setDescription("something else");
    EXPECT_FALSE(databases.pending().canRedo()) << "a new change ends what could be brought again";
    EXPECT_EQ(databases.redo().size(), 0u);

    StructDetObjReprMap copy = *row<StructDetObjReprMap>(kUser, map);
    copy.name = "Copy";
    EXPECT_EQ(databases.append(kTableReprMap, copy), WriteResult::kWritten);
    EXPECT_EQ(partsOf(*databases.source(kUser), {kTableReprMap, copy.key}).size(), 2u);
    const auto users =
        databases.users(kTableQualifierSet, row<StructDetObjQualifierSet>(kUser, "Beams")->key);
    EXPECT_EQ(users.size(), 2u) << "an entry, and its copy";
    databases.undo();
    EXPECT_EQ(count<StructDetObjReprMapKey>(kUser), 2);
}

TEST_F(PendingTest, TheKeyOfADeletedRowIsNotGivenAgain) {
    const auto first = add<StructDetArrangerControl>(kUser, "First");
    const auto last = add<StructDetArrangerControl>(kUser, "Last");
    ASSERT_TRUE(commit());
    open(false);
    databases.remove(kTableArrangerControl, last);
    EXPECT_GT(add<StructDetArrangerControl>(kUser, "Other"), last);
    databases.undo();
    databases.undo();
    EXPECT_EQ(row<StructDetArrangerControl>(kUser, last)->name, "Last");
    EXPECT_EQ(row<StructDetArrangerControl>(kUser, first)->name, "First");
}

TEST_F(PendingTest, CancelTakesBackEverythingOfEverySource) {
    const int rows = rowCount(kUser);
    setDescription("changed");
    setDescription("changed", kStandard);
    addStyle(kUser, "Own", 5);
    databases.remove(kTableDetailStyle, m_style);
    for (int table = 0; table < kNumberOfTableTypes; ++table)
        KorOdbcMan::setStatusOnCancel(static_cast<eTableType>(table), KorOdbcMan::kThisRow);
    EXPECT_EQ(rowCount(kUser), rows);
    EXPECT_EQ(description(), "");
    EXPECT_EQ(description(kStandard), "");
    EXPECT_TRUE(databases.pending().isEmpty());
    EXPECT_TRUE(row<StructDetailStyle>(kUser, "Column"));
}

TEST_F(PendingTest, ASourceThatCannotBeWrittenKeepsItsChangesWhileOthersAreStored) {
    setDescription("mine");
    addStyle(kUser, "Own", 5);
    setDescription("maker's", kStandard);
    others("UPDATE detail_style SET description = 'theirs'");
    EXPECT_FALSE(commit());
    EXPECT_TRUE(report(kStandard)->kept);
    const SourceCommit& failed = *report(kUser);
    EXPECT_FALSE(failed.kept);
    EXPECT_TRUE(mentions(failed.error, "user.dsdb")) << failed.error;
    ASSERT_EQ(failed.conflicts.size(), 1u);
    EXPECT_TRUE(mentions(failed.conflicts[0].stored, "theirs"));
    EXPECT_TRUE(mentions(failed.conflicts[0].mine, "mine"));
    EXPECT_EQ(description(), "mine");
    EXPECT_TRUE(databases.pending().hasPending(kUser));
    EXPECT_FALSE(databases.pending().hasPending(kStandard));

    const auto changes = databases.refreshChanged();
    ASSERT_EQ(changes.size(), 1u);
    ASSERT_EQ(changes[0].conflicts.size(), 1u);
    EXPECT_EQ(description(), "theirs") << "never overwritten without being asked for";
    EXPECT_TRUE(row<StructDetailStyle>(kUser, "Own"));
    EXPECT_EQ(databases.keepMine(kUser, changes[0].conflicts[0]), WriteResult::kWritten);
    EXPECT_TRUE(commit());
    open(false);
    EXPECT_EQ(description(), "mine");
    EXPECT_TRUE(row<StructDetailStyle>(kUser, "Own"));
    EXPECT_EQ(description(kStandard), "maker's");
}

TEST_F(PendingTest, ChangesOfOthersBesideMineAreTakenOver) {
    setDescription("mine");
    const auto mine = addStyle(kUser, "Own", 5);
    const auto next = add<StructDetailStyle>(kUser, "Next");
    const auto map = row<StructDetObjReprMap>(kUser, "Steel")->key;
    EXPECT_TRUE(databases.refreshChanged().empty());
    others("UPDATE detail_style SET title_position = 5; UPDATE repr_map SET name = 'Iron';"
           "INSERT INTO detail_style(\"key\", name) VALUES (" +
           std::to_string(mine) + ", 'Their own')");
    const auto changes = databases.refreshChanged();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].error, "");
    EXPECT_TRUE(changes[0].conflicts.empty());
    EXPECT_TRUE(databases.refreshChanged().empty());
    EXPECT_EQ(description(), "mine");
    EXPECT_EQ(row<StructDetailStyle>(kUser, m_style)->titlePosition, 5);
    EXPECT_EQ(row<StructDetObjReprMap>(kUser, map)->name, "Iron");
    const auto* own = row<StructDetailStyle>(kUser, "Own");
    EXPECT_EQ(row<StructDetailStyle>(kUser, mine)->name, "Their own");
    EXPECT_NE(own->key, mine);
    EXPECT_NE(own->key, next) << "the next new row has it";
    EXPECT_EQ(row<StructDetailMaster>(kUser, "Own")->styleKey, own->key) << "references follow";
    others("UPDATE repr_map SET name = 'Steel'");
    EXPECT_FALSE(commit()) << "what is pending was judged by what is not stored any more";
    EXPECT_TRUE(mentions(report(kUser)->error, "meanwhile")) << report(kUser)->error;
    EXPECT_EQ(databases.refreshChanged().size(), 1u);
    ASSERT_TRUE(commit());
    open(false);
    EXPECT_EQ(row<StructDetailMaster>(kUser, "Own")->styleKey, row<StructDetailStyle>(kUser, "Own")->key);
    EXPECT_EQ(row<StructDetailStyle>(kUser, m_style)->titlePosition, 5);
}

TEST_F(PendingTest, RowsThatOthersDeletedOrChangedAreReported) {
    setDescription("mine");
    const auto map = row<StructDetObjReprMap>(kUser, "Steel")->key;
    stopUsing(kTableReprMap, map);
    databases.remove(kTableReprMap, map);
    StructDetObjQualifierWithRole member;
    member.qualifierSetKey = row<StructDetObjQualifierSet>(kUser, "Beams")->key;
    add(kUser, "New member", member);
    others("DELETE FROM detail_style; DELETE FROM qualifier_set; UPDATE repr_map SET description = 'new';"
           "INSERT INTO repr_map_entry(\"key\", name, repr_map) SELECT 77, 'New', \"key\" FROM repr_map");
    const auto changes = databases.refreshChanged();
    ASSERT_EQ(changes.size(), 1u);
    ASSERT_EQ(changes[0].conflicts.size(), 3u);
    int gone = 0;
    OtherProgram again(file("user.dsdb"));
    again.run("BEGIN EXCLUSIVE"); // while the user is asked
    for (const OutsideConflict& conflict : changes[0].conflicts) {
        const bool deletion = conflict.kind == OutsideConflict::eKind::kDelete;
        gone += conflict.kind == OutsideConflict::eKind::kGone ? 1 : 0;
        EXPECT_EQ(databases.keepMine(kUser, conflict).isStored(), deletion);
    }
    EXPECT_EQ(gone, 2);
    again.run("ROLLBACK");
    EXPECT_TRUE(commit());
    open(false);
    EXPECT_EQ(count<StructDetObjReprMap>(kUser), 0);
    EXPECT_EQ(count<StructDetObjReprMapKey>(kUser), 0) << "with the part that another program added";
    EXPECT_FALSE(row<StructDetObjQualifierWithRole>(kUser, "New member"));
}

TEST_F(PendingTest, WhatHoldsNoMoreIsAConflictWithItsReasonAndNewRowsStay) {
    const auto spare = add<StructDetObjReprMap>(kUser, "Spare");
    const auto strategy = add<StructDetViewArrangeStrategy>(kUser, "Old");
    ASSERT_TRUE(commit());
    const auto view = [this](const char* name) { return row<StructDetViewRequest>(kUser, name)->key; };
    const auto front = view("Column front");
    const auto top = view("Column top");
    const auto rename = [this](std::int32_t key, const char* name) {
        EXPECT_EQ(set(kUser, kTableViewRequest, key, 1, KorString(name)), WriteResult::kWritten);
    };
    rename(front, "TWIN");
    rename(top, "Column front");
    const auto own = addStyle(kUser, "N", 7);
    rename(view("N front"), "swap");
    rename(view("N top"), "N front");
    rename(view("swap"), "N top");
    for (const std::int32_t style : {m_style, own})
        EXPECT_EQ(set(kUser, kTableDetailStyle, style, 2, std::int64_t{strategy}), WriteResult::kWritten);
    databases.remove(kTableReprMap, spare);
    others("UPDATE detail_style SET name = 'N', description = 'theirs';"
           "INSERT INTO view_request(\"key\", name, repr_map) VALUES (99, 'TWIN', " +
           std::to_string(spare) +
           "); DELETE FROM view_arrange_strategy;"
           "INSERT INTO detail_master(\"key\", name, detail_key, number) VALUES (99, 'M', 7, 7)");
    const auto changes = databases.refreshChanged();
    ASSERT_EQ(changes.size(), 1u);
    std::map<std::string, int> reasons;
    for (const OutsideConflict& conflict : changes[0].conflicts) {
        ++reasons[conflict.reason.toStdString()];
        EXPECT_EQ(databases.keepMine(kUser, conflict), WriteResult::kFailed);
    }
    EXPECT_EQ(reasons,
              (std::map<std::string, int>{
                  {"Another record has this name now.", 2},
                  {"Another record has this name now, so the new one is called \"N 1\".", 1},
                  {"The record that it refers to was deleted.", 1},
                  {"The record that it refers to was deleted, so the new one is made without it.", 1},
                  {"Another record uses it now.", 1},
              }));
    EXPECT_TRUE(commit());
    open(false);
    EXPECT_EQ(view("TWIN"), 99);
    EXPECT_EQ(view("Column front"), front);
    EXPECT_EQ(view("Column top"), top);
    EXPECT_TRUE(row<StructDetObjReprMap>(kUser, spare));
    const auto* style = row<StructDetailStyle>(kUser, "N 1");
    ASSERT_TRUE(style);
    EXPECT_EQ(style->arrangeStrategyKey, 0);
    EXPECT_EQ(style->viewRequests[0], view("N top")) << "names that change places are no conflict";
    EXPECT_NE(row<StructDetailMaster>(kUser, "N 1")->number, 7) << "the pair is another one's";
    EXPECT_EQ(row<StructDetailStyle>(kUser, m_style)->description, "theirs");
}

TEST_F(PendingTest, ADeletionOfWhatOthersGaveNewPartsIsAsked) {
    const auto map = row<StructDetObjReprMap>(kUser, "Steel")->key;
    stopUsing(kTableReprMap, map);
    databases.remove(kTableReprMap, map);
    others("UPDATE repr_map_entry SET \"order\" = 9 WHERE name = 'Rest'");
    const auto changes = databases.refreshChanged();
    ASSERT_TRUE(changes.size() == 1 && changes[0].conflicts.size() == 1);
    EXPECT_EQ(changes[0].conflicts[0].table->type, kTableReprMap);
    EXPECT_EQ(partsOf(*databases.source(kUser), {kTableReprMap, map}).size(), 2u) << "all of it stays";
    EXPECT_EQ(databases.keepMine(kUser, changes[0].conflicts[0]), WriteResult::kWritten);
    EXPECT_EQ(count<StructDetObjReprMapKey>(kUser), 0);
}

TEST_F(PendingTest, AFileThatIsGoneLeavesEverythingAsItWas) {
    setDescription("mine");
    std::filesystem::rename(file("user.dsdb"), file("away"));
    auto changes = databases.refreshChanged();
    ASSERT_EQ(changes.size(), 1u);
    const std::string gone = changes[0].error;
    EXPECT_TRUE(mentions(gone, "user.dsdb"));
    EXPECT_EQ(description(), "mine");
    EXPECT_FALSE(commit());
    EXPECT_EQ(report(kUser)->error, gone);
    EXPECT_EQ(databases.source(kUser)->readingOf(kTableScale).error, gone);
    EXPECT_EQ(databases.source(kUser)->complete().error, gone);
    EXPECT_EQ(databases.source(kUser)->store().integrityFindings(), std::vector{gone});
    EXPECT_EQ(description(), "mine");
    std::filesystem::rename(file("away"), file("user.dsdb"));
    changes = databases.refreshChanged();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].error, "");
    EXPECT_TRUE(commit());
    open(false);
    EXPECT_EQ(description(), "mine");
}

TEST_F(PendingTest, AWalkThatBreaksOffHarmsNothing) {
    setDescription("mine");
    addStyle(kUser, "Own", 5);
    {
        const StyleDatabases::CommitWalk walk(databases);
        EXPECT_EQ(databases.keepTable(kTableDetailStyle), 1);
    }
    EXPECT_TRUE(commit());
    databases.remove(kTableDetailStyle, m_style);
    databases.closeSource(kUser);
    EXPECT_FALSE(databases.pending().hasPending(kUser)) << "nobody could write it any more";
    EXPECT_TRUE(databases.undo().empty());
    open(false);
    EXPECT_EQ(description(), "mine");
}

TEST_F(PendingTest, ATableKeptAloneIsStoredAtOnceAndNothingElse) {
    const auto keep = [](eTableType table) { return KorOdbcMan::setStatusOnOK(table, KorOdbcMan::kThisRow); };
    const std::int32_t view = row<StructDetViewRequest>(kUser, "Column front")->key;
    setDescription("mine");
    set(kUser, kTableViewRequest, view, 17, KorString("{callout}"));
    EXPECT_EQ(keep(kTableDetailStyle), 1);
    others("UPDATE detail_style SET title_position = 5"); // nobody holds the file
    EXPECT_TRUE(databases.pending().hasPending(kUser, kTableViewRequest));
    EXPECT_FALSE(databases.pending().hasPending(kUser, kTableDetailStyle));
    KorOdbcMan::setStatusOnCancel(kTableViewRequest, KorOdbcMan::kThisRow);
    open(false);
    EXPECT_EQ(description(), "mine");
    EXPECT_EQ(row<StructDetViewRequest>(kUser, view)->calloutTitleTemplate, "");

    set(kUser, kTableViewRequest, view, 17, KorString("{callout}"));
    setDescription("dropped");
    EXPECT_EQ(keep(kTableViewRequest), 1) << "the later table first";
    KorOdbcMan::setStatusOnCancel(kTableDetailStyle, KorOdbcMan::kThisRow);
    open(false);
    EXPECT_EQ(description(), "mine");
    EXPECT_EQ(row<StructDetViewRequest>(kUser, view)->calloutTitleTemplate, "{callout}");
}

TEST_F(PendingTest, AWholeOrARecordIsWrittenWithAllThatBelongsToItOrNotAtAll) {
    for (const char* last : {"2147483647", "2147483646"}) { // of the two entries of a map
        databases.closeSource(kUser);
        others("UPDATE repr_map_entry SET \"key\" = " + std::string(last) + " WHERE name = 'Rest'");
        open();
        StructDetObjReprMap copy = *row<StructDetObjReprMap>(kUser, "Steel");
        copy.name = "Copy";
        EXPECT_EQ(databases.append(kTableReprMap, copy), WriteResult::kFailed) << last;
        EXPECT_EQ(databases.appendStored(kTableReprMap, copy), WriteResult::kFailed) << last;
        EXPECT_EQ(count<StructDetObjReprMap>(kUser), 1);
    }
    const KorDSNRequest request(kUser.dsn, kUser.index);
    StructDetailStyle& style = KorOdbcMan::m_structDetailStyle = *row<StructDetailStyle>(kUser, m_style);
    style.name = "Changed";
    style.titlePosition = 99; // of 0 to 7
    EXPECT_EQ(KorOdbcMan::storeCurrentRecord(kTableDetailStyle, KorOdbcMan::kThisRow), WriteResult::kFailed);
    const auto& front = *row<StructDetViewRequest>(kUser, "Column front");
    EXPECT_EQ(KorODBCDetStyle::setDetViewRequestCategories(front, KorArray<std::int32_t>{4711}),
              WriteResult::kFailed)
        << "it stays where it is filed";
    EXPECT_TRUE(databases.pending().isEmpty());
    style.titlePosition = 5;
    EXPECT_EQ(KorOdbcMan::storeCurrentRecord(kTableDetailStyle, KorOdbcMan::kThisRow), 1);
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Changed")->titlePosition, 5);
}

TEST_F(PendingTest, AColumnTakesOnlyWhatIsNotCalledDamageLater) {
    const double inf = std::numeric_limits<double>::infinity();
    const auto front = row<StructDetViewRequest>(kUser, "Column front")->key;
    const auto clip = add<StructDetViewLengthClip>(kUser, "Short");
    const auto entry = row<StructDetObjReprMapKey>(kUser, "Rest")->key;
    const auto steps = databases.pending().steps().size();
    const struct {
        eTableType table;
        std::int32_t key;
        int column;
        CellValue value;
    } refused[] = {
        {kTableDetailStyle, 99, 3, KorString("x")},       // no such row
        {kTableDetailStyle, m_style, 0, std::int64_t{1}}, // no column
        {kTableDetailStyle, m_style, 3, 1.5},
        {kTableDetailStyle, m_style, 6, 1.5},
        {kTableDetailStyle, m_style, 6, std::int64_t{99}}, // of 0 to 7
        {kTableDetailStyle, m_style, 6, std::int64_t{-1}},
        {kTableDetailStyle, m_style, 9, std::int64_t{77}},   // a flag
        {kTableDetailStyle, m_style, 2, std::int64_t{4711}}, // refers to nothing
        {kTableReprMapEntry, entry, 2, std::int64_t{0}},     // a part of nothing
        {kTableDetailStyle, m_style, 1, KorString("")},
        {kTableDetailStyle, m_style, 1, KorString("  ")},
        {kTableViewRequest, front, 1, KorString("Column top")}, // taken
        {kTableDetailStyle, m_style, 3, KorString("\xff")},     // no text
        {kTableLengthClip, clip, 5, -2.0},
        {kTableLengthClip, clip, 5, inf},
        {kTableViewRequest, front, 10, std::numeric_limits<double>::quiet_NaN()},
    };
    for (const auto& each : refused)
        EXPECT_EQ(set(kUser, each.table, each.key, each.column, each.value), WriteResult::kFailed)
            << findTable(each.table)->name << " " << each.column;
    databases.setOwnerMode(false);
    EXPECT_EQ(setDescription("x", kStandard), WriteResult::kReadOnlySource);
    EXPECT_EQ(databases.pending().steps().size(), steps) << "nothing was written";
    EXPECT_EQ(set(kUser, kTableDetailStyle, m_style, 2, std::int64_t{0}), WriteResult::kUnchanged) << "none";
    EXPECT_EQ(set(kUser, kTableViewRequest, front, 1, KorString("Column front")), WriteResult::kUnchanged);
    EXPECT_EQ(set(kUser, kTableReprMapEntry, entry, 1, KorString("Beams")), WriteResult::kWritten)
        << "parts need no name of their own";
}

TEST_F(PendingTest, ANewRowHoldsOnlyWhatItsColumnsTakeAndACopyWhatItsOriginalHolds) {
    StructDetailStyle style;
    const auto append = [&](const char* name) {
        style.name = name;
        return databases.append(kTableDetailStyle, style);
    };
    EXPECT_EQ(append("Column"), WriteResult::kFailed) << "taken";
    EXPECT_EQ(append(""), WriteResult::kFailed);
    style.titlePosition = 99;
    EXPECT_EQ(append("New"), WriteResult::kFailed);
    style.titlePosition = 0;
    style.arrangeStrategyKey = 4711;
    EXPECT_EQ(append("New"), WriteResult::kFailed);

    others("UPDATE detail_style SET title_position = 99, arrange_strategy = 4711");
    open();
    style = *row<StructDetailStyle>(kUser, m_style);
    EXPECT_EQ(append("Copy"), WriteResult::kWritten);
    EXPECT_EQ(style.titlePosition, 99) << "what another program stored is neither refused nor changed";
    EXPECT_EQ(set(kUser, kTableDetailStyle, style.key, 6, std::int64_t{99}), WriteResult::kUnchanged);
    EXPECT_EQ(set(kUser, kTableDetailStyle, style.key, 6, std::int64_t{1}), WriteResult::kWritten);
    databases.undo();
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Copy")->titlePosition, 99);
}

TEST_F(PendingTest, SharingAndUseFollowTheOwnersUpwards) {
    const auto set1 = row<StructDetObjQualifierSet>(kUser, "Beams")->key;
    const auto front = row<StructDetViewRequest>(kUser, "Column front")->key;
    EXPECT_FALSE(KorOdbcGUI::isViewRequestShared(front));
    EXPECT_TRUE(KorOdbcGUI::isObjReprMapRuleShared(row<StructDetObjReprMap>(kUser, "Steel")->key))
        << "two views";
    EXPECT_TRUE(KorOdbcGUI::isQualifierSetShared(set1)) << "its only owner is shared";
    EXPECT_TRUE(KorOdbcGUI::findQualifierSet(set1));
    for (const Referrer& entry : databases.users(kTableQualifierSet, set1))
        set(kUser, entry.table->type, entry.key, entry.column->number, std::int64_t{0});
    EXPECT_FALSE(KorOdbcGUI::findQualifierSet(set1));
    EXPECT_FALSE(KorOdbcGUI::isQualifierSetShared(set1));
    set(kUser, kTableDetailStyle, m_style, 15, std::int64_t{front});
    EXPECT_FALSE(KorOdbcGUI::isViewRequestShared(front)) << "one style, in two slots";
    StructDetailStyle other;
    other.viewRequests[4] = front;
    add(kUser, "Other", other);
    EXPECT_TRUE(KorOdbcGUI::isViewRequestShared(front));
}

TEST_F(PendingTest, NamedReadsActOnTheCurrentSource) {
    StructDetailStyle style;
    style.name = "untouched";
    EXPECT_EQ(KorOdbcGUI::getDetailStyle("Base plate", style), 0);
    EXPECT_EQ(style.name, "untouched");
    const KorDSNRequest request(kStandard.dsn, kStandard.index);
    EXPECT_EQ(KorOdbcGUI::getDetailStyle("Base plate", style), 1);
    StructDetailMaster master;
    EXPECT_EQ(KorOdbcGUI::getDetailMaster(long{style.key}, master), 1);
    EXPECT_EQ(KorOdbcGUI::getDetailMaster(7, 1, master), 1);
    EXPECT_EQ(KorOdbcGUI::getDetailMaster(7, 2, master), 0);
    StructDetailMaster second;
    second.styleKey = style.key;
    add(kStandard, "Second", second);
    EXPECT_EQ(KorOdbcGUI::getDetailMaster(long{style.key}, master), 1);
    EXPECT_EQ(master.name, "Base plate") << "the first that names the style";
    KorArray<KorString> names;
    EXPECT_EQ(KorOdbcGUI::getDetViewRequestList(names), 2);
    EXPECT_EQ(names[1], "Base plate top");
    KorArray<StructDetObjReprMapKey> entries;
    set(kStandard, kTableReprMapEntry, row<StructDetObjReprMapKey>(kStandard, "Beams")->key, 3,
        std::int64_t{7});
    ASSERT_EQ(KorOdbcGUI::getDetObjReprMapEntries(style.viewRequests[0], entries), 2);
    EXPECT_EQ(entries[0].name, "Rest") << "in the order of their order number";
}

} // namespace
