#include "SampleSession.h"

#include "data/exchange/ExchangeReport.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMUndo.h"

namespace {

using namespace KorDSMRecordCommands;

const SourceId kUser = SourceId::user();

class RecordCommands : public SampleSession {
protected:
    const StructRecord* find(RowRef row) {
        return databases.source(kUser)->table(row.table).find(KorOdbcKey(row.key));
    }
    int rows(eTableType table) { return databases.source(kUser)->table(table).rows().size(); }
    /// All rows of the User database by table.
    std::vector<int> counts() {
        std::vector<int> counts;
        for (const TableSchema& table : allTables())
            counts.push_back(rows(table.type));
        return counts;
    }
    /// A key above which there are only so many.
    void useUpKeys(eTableType table, int left = 0) {
        const auto last = databases.source(kUser)->table(table).rows().copyOf(nullptr);
        last->key = std::numeric_limits<std::int32_t>::max() - left;
        databases.source(kUser)->insert(table, *last);
    }
};

} // namespace

TEST_F(RecordCommands, RecordsOfEachKindAreMadeCopiedRenamedAndDeletedEachInOneStep) {
    const std::vector<int> before = counts();
    int kinds = 0;
    for (const TableSchema& table : allTables()) {
        if (!isMade(table.type))
            continue;
        SCOPED_TRACE(table.name);
        ++kinds;
        const eTableType groups = groupsOf(table.type);
        const std::int32_t group =
            groups == kNoTable ? 0 : databases.source(kUser)->table(groups).rows().at(0).key;
        const Outcome made = create(kUser, table.type, " Made here ", group);
        ASSERT_TRUE(made.isStored()) << made.error;
        EXPECT_EQ(find(made.row)->name, "Made here");
        EXPECT_FALSE(create(kUser, table.type, "Made here", group).error.empty());
        EXPECT_FALSE(create(kUser, table.type, " ", group).error.empty());
        const Outcome copied = copy(kUser, made.row, "Copied", eDepth::kRecord);
        ASSERT_TRUE(copied.isStored()) << copied.error;
        const Outcome deep = copy(kUser, made.row, "Copied with all", eDepth::kAllThatUsed);
        ASSERT_TRUE(deep.isStored()) << deep.error;
        EXPECT_TRUE(rename(kUser, copied.row, "Renamed").isStored());
        EXPECT_FALSE(rename(kUser, copied.row, "Made here").error.empty());
        EXPECT_EQ(find(copied.row)->name, "Renamed");
        EXPECT_EQ(row<StructDetailMaster>(kUser, "Renamed") != nullptr, table.type == kTableDetailStyle);
        EXPECT_TRUE(remove(kUser, deep.row).isStored());
        EXPECT_EQ(find(deep.row), nullptr);
        for (int step = 0; step < 5; ++step)
            KorDSMUndo::undo();
        EXPECT_EQ(counts(), before);
        EXPECT_FALSE(KorDSMUndo::canUndo());
    }
    EXPECT_EQ(kinds, 28);
    EXPECT_TRUE(assertions.empty());
}

TEST_F(RecordCommands, WhatIsUsedOrFullIsNotDeleted) {
    const auto* view = row<StructDetViewRequest>(kUser, "HB front");
    ASSERT_NE(view, nullptr);
    const Outcome used = remove(kUser, {kTableViewRequest, view->key});
    EXPECT_FALSE(used.isStored());
    ASSERT_FALSE(used.users.empty());
    EXPECT_EQ(used.users[0].kind, "Detail style");
    const auto* category = row<StructDetBaseCategory>(kUser, "Hallberg: site drawings");
    EXPECT_EQ(remove(kUser, {kTableBaseCategory, category->key}).filed,
              std::vector<KorString>{"HB erection plan"});
    const std::int32_t style = row<StructDetailStyle>(kUser, "HB erection plan")->key;
    EXPECT_TRUE(remove(kUser, {kTableDetailStyle, style}).isStored());
    const int listings = rows(kTableViewRequestCategory);
    EXPECT_TRUE(remove(kUser, {kTableBaseCategory, category->key}).isStored());
    EXPECT_EQ(rows(kTableViewRequestCategory), listings - 2);
}

TEST_F(RecordCommands, ANewGroupComesLastAndANewStyleIsNumberedInItsCategory) {
    const Outcome group = create(kUser, kTableQualifierSetGroup, "Last", 0);
    const RowArray& groups = databases.source(kUser)->table(kTableQualifierSetGroup).rows();
    for (int i = 0; i < groups.size(); ++i)
        EXPECT_EQ(static_cast<const StructDetObjQualifierSetGroup&>(groups.at(i)).order <
                      static_cast<const StructDetObjQualifierSetGroup*>(find(group.row))->order,
                  groups.at(i).key != group.row.key);
    const Outcome category = create(kUser, kTableBaseCategory, "Last", 0);
    for (const char* name : {"First", "Second"})
        EXPECT_TRUE(create(kUser, kTableDetailStyle, name, category.row.key).isStored());
    const auto* second = row<StructDetailMaster>(kUser, "Second");
    EXPECT_EQ(second->detailKey, static_cast<const StructDetBaseCategory*>(find(category.row))->number);
    EXPECT_EQ(second->number, 2);
}

TEST_F(RecordCommands, ACopyFromAnotherSourceBringsWhatIsMissingInOneStep) {
    const std::vector<int> before = counts();
    const auto* base = row<StructDetailStyle>(SourceId::standard(), "Column base");
    ImportReport report;
    const RowRef style{kTableDetailStyle, base->key};
    ASSERT_TRUE(copyInto(kUser, SourceId::standard(), style, "Ours", report).isStored());
    const int views = rows(kTableViewRequest);
    const Outcome again = copyInto(kUser, SourceId::standard(), style, "Ours again", report);
    ASSERT_TRUE(again.isStored());
    EXPECT_EQ(find(again.row)->name, "Ours again");
    EXPECT_EQ(rows(kTableViewRequest), views);
    EXPECT_NE(row<StructDetailMaster>(kUser, "Ours again"), nullptr);
    EXPECT_FALSE(copyInto(kUser, SourceId::standard(), style, "Ours", report).error.empty());
    EXPECT_FALSE(copyInto(SourceId::standard(), kUser, again.row, "Theirs", report).error.empty());
    KorDSMUndo::undo();
    KorDSMUndo::undo();
    EXPECT_EQ(counts(), before);
}

TEST_F(RecordCommands, ACopyForWhichThereIsNoRoomLeavesNothingBehind) {
    const RowRef style{kTableDetailStyle, row<StructDetailStyle>(kUser, "HB post 1:15")->key};
    useUpKeys(kTableReprMap);
    const std::vector<int> before = counts();
    const Outcome deep = copy(kUser, style, "Alone", eDepth::kAllThatUsed);
    EXPECT_FALSE(deep.isStored());
    EXPECT_EQ(counts(), before);
    EXPECT_TRUE(databases.pending().isEmpty());
    EXPECT_FALSE(databases.pending().canRedo());
    EXPECT_TRUE(copy(kUser, style, "Together", eDepth::kRecord).isStored()) << "it needs no map of its own";
    useUpKeys(kTableQualifierWithRole, 1);
    const RowRef set{kTableQualifierSet, row<StructDetObjQualifierSet>(kUser, "HB fitted parts")->key};
    const Outcome parts = copy(kUser, set, "Half", eDepth::kRecord);
    EXPECT_NE(parts.error.find("2147483646"), std::string::npos) << "one of its two parts would be missing";
    EXPECT_EQ(row<StructDetObjQualifierSet>(kUser, "Half"), nullptr);
    useUpKeys(kTableDetailMaster);
    const Outcome full = copy(kUser, style, "Third", eDepth::kRecord);
    EXPECT_NE(full.error.find("2147483647"), std::string::npos) << full.error;
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Third"), nullptr);
}
