#include "StoreEngines.h"

// What every store has to do, whatever engine is behind it.

namespace {

class StoreContract : public EachStore {
protected:
    static void keep(StyleStore& store, const TableChange& change) {
        std::vector<StoreConflict> conflicts;
        ASSERT_EQ(store.begin().error, "");
        ASSERT_EQ(store.apply(change, conflicts).error, "");
        ASSERT_TRUE(conflicts.empty());
        ASSERT_EQ(store.commit().error, "");
    }
    static std::vector<StoreConflict> conflictsOf(StyleStore& store, const TableChange& change) {
        std::vector<StoreConflict> conflicts;
        EXPECT_EQ(store.begin().error, "");
        EXPECT_EQ(store.apply(change, conflicts).error, "");
        store.rollback();
        return conflicts;
    }
};

FOR_EACH_STORE(StoreContract);

// A value that the column may hold, unlike its default and different in each column.
CellValue sampleValue(const Column& column) {
    if (column.isText())
        return KorString("Größe \"" + column.name + "\" — 50°");
    const double value = std::min(std::max(column.minimum, column.number + 0.0), column.maximum);
    return column.isReal() ? CellValue(value + (column.isReal() && value < column.maximum ? 0.1 : 0.0))
                           : CellValue(static_cast<std::int64_t>(value));
}

} // namespace

TEST_P(StoreContract, KeepsEveryColumnOfEveryTable) {
    auto store = openNew(0);
    std::vector<StoreConflict> conflicts;
    std::vector<std::shared_ptr<StructRecord>> written;
    ASSERT_EQ(store->begin().error, "");
    for (const TableSchema& table : allTables()) {
        written.push_back(table.makeRows()->copyOf(nullptr));
        written.back()->key = 2147483647;
        for (const Column& column : table.columns)
            ASSERT_TRUE(column.write(written.back().get(), sampleValue(column))) << column.name;
        ASSERT_EQ(store->apply({&table, {}, {written.back().get()}, {}}, conflicts).error, "");
    }
    ASSERT_EQ(store->commit().error, "");

    store = open(true);
    std::vector<ReadProblem> problems;
    for (const TableSchema& table : allTables()) {
        const auto rows = table.makeRows();
        ASSERT_EQ(store->readTable(table, *rows, problems).error, "");
        ASSERT_EQ(rows->size(), 1) << table.name;
        EXPECT_TRUE(rows->equal(rows->at(0), *written[&table - allTables().data()])) << table.name;
    }
    EXPECT_TRUE(problems.empty()) << problems.front().sentence;
    EXPECT_TRUE(store->integrityFindings().empty());
}

TEST_P(StoreContract, WritesChangesDeletionsAndNewRowsTogether) {
    auto store = openNew(5);
    auto rows = rowsOf<StructDetViewRequest>(*store);
    TableChange change = ofViews({newScale(4, 14, 25), newScale(2, 12, 20)});
    const Column* name = change.table->column("name");
    change.cells.push_back({2, name, KorString("Front view 2"), KorString("O'Brien's view")});
    change.deleted = {rows.find(3)};
    StructDetViewRequest added;
    added.key = 9;
    added.name = "Added";
    change.appended = {&added};
    keep(*store, change);

    rows = rowsOf<StructDetViewRequest>(*open());
    ASSERT_EQ(rows.size(), 5);
    EXPECT_EQ(static_cast<StructDetViewRequest*>(rows.find(2))->scale, 20);
    EXPECT_EQ(rows.find(2)->name, KorString("O'Brien's view"));
    EXPECT_EQ(static_cast<StructDetViewRequest*>(rows.find(4))->scale, 25);
    EXPECT_EQ(rows.find(3), nullptr);
    EXPECT_EQ(static_cast<const StructDetViewRequest&>(*rows.find(9)), added);
}

TEST_P(StoreContract, RollbackAndReadOnlyLeaveTheFileAsItIs) {
    auto store = openNew(5);
    const std::string before = engine->stored();
    std::vector<StoreConflict> conflicts;
    ASSERT_EQ(store->begin().error, "");
    ASSERT_EQ(store->apply(ofViews({newScale(1, 11, 99)}), conflicts).error, "");
    EXPECT_EQ(static_cast<StructDetViewRequest*>(rowsOf<StructDetViewRequest>(*store).find(1))->scale, 99);
    store->rollback();
    store->rollback();
    EXPECT_EQ(static_cast<StructDetViewRequest*>(rowsOf<StructDetViewRequest>(*store).find(1))->scale, 11);
    store.reset();
    EXPECT_EQ(engine->stored(), before);

    store = open(true);
    EXPECT_TRUE(store->isReadOnly());
    EXPECT_EQ(rowsOf<StructDetViewRequest>(*store).size(), 5);
    EXPECT_TRUE(mentions(store->begin().error, store->name()));
    store.reset();
    EXPECT_EQ(engine->stored(), before);
}

TEST_P(StoreContract, WhatAnotherProgramChangedIsToldAndNotOverwritten) {
    auto mine = openNew(5);
    const auto read = rowsOf<StructDetViewRequest>(*mine);
    auto other = open();
    TableChange theirs = ofViews({newScale(1, 11, 50), newScale(4, 14, 50)});
    theirs.deleted = {read.find(2), read.find(5)};
    StructDetViewRequest taken;
    taken.key = 6;
    taken.name = "Theirs";
    theirs.appended = {&taken};
    keep(*other, theirs);
    EXPECT_TRUE(mine->changedOutside());
    const std::string after = engine->stored();

    TableChange change = ofViews({newScale(1, 11, 20), newScale(2, 12, 20), newScale(3, 13, 20)});
    change.deleted = {read.find(4), read.find(5)};
    StructDetViewRequest added;
    added.key = 6;
    added.name = "Mine";
    change.appended = {&added};
    const auto conflicts = conflictsOf(*mine, change);
    ASSERT_EQ(conflicts.size(), 5u);
    const auto find = [&](std::int32_t key) {
        return *std::ranges::find(conflicts, key, &StoreConflict::key);
    };
    EXPECT_EQ(find(1).column, change.cells[0].column);
    EXPECT_EQ(find(1).stored, "50");
    EXPECT_EQ(find(1).mine, "20");
    EXPECT_EQ(find(1).before, "11");
    EXPECT_EQ(find(2).column, nullptr);
    EXPECT_EQ(find(2).stored, "");
    EXPECT_EQ(find(4).stored, "50");
    EXPECT_EQ(find(4).before, "14");
    EXPECT_EQ(find(5).stored, "");
    EXPECT_EQ(find(6).stored, "\"Theirs\"");
    EXPECT_EQ(find(6).mine, "\"Mine\"");
    EXPECT_EQ(engine->stored(), after);
}

TEST_P(StoreContract, NoticesChangesFromOutside) {
    auto store = openNew(5);
    keep(*store, ofViews({newScale(1, 11, 12)}));
    EXPECT_FALSE(store->changedOutside());
    keep(*open(), ofViews({newScale(2, 12, 13)}));
    EXPECT_TRUE(store->changedOutside());
    store->acknowledge();
    EXPECT_FALSE(store->changedOutside());
    keep(*open(), ofViews({newScale(2, 13, 14)}));
    ASSERT_EQ(store->reopen().error, "");
    EXPECT_FALSE(store->changedOutside());
}

TEST(StoreFiles, AFileThatIsReplacedOrRemovedIsNoticed) {
    const TempFolder folder;
    const std::string path = makeDatabase(folder.file("user.dsdb"), 5);
    const auto store = SqliteStore::open(path, SqliteStore::eMode::kWrite).store;
    std::filesystem::rename(makeDatabase(folder.file("newer.dsdb"), 7), path);
    EXPECT_TRUE(store->changedOutside());
    EXPECT_TRUE(mentions(store->begin().error, "replaced"));
    ASSERT_EQ(store->reopen().error, "");
    EXPECT_FALSE(store->changedOutside());
    EXPECT_EQ(rowsOf<StructDetViewRequest>(*store).size(), 7);
    std::vector<StoreConflict> conflicts;
    EXPECT_EQ(applyTo(*store, ofViews({newScale(7, 17, 1)}), conflicts).error, "");

    std::filesystem::remove(path);
    EXPECT_TRUE(store->changedOutside());
    EXPECT_TRUE(mentions(store->reopen().error, "does not exist"));
    EXPECT_FALSE(store->begin());
}
