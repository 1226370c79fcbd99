#pragma once

#include "data/store/SqliteStore.h"
#include "records/TableDeclarations.h"
#include "support/LockWaiting.h"
#include "support/Mentions.h"
#include "support/OtherProgram.h"
#include "support/TempFolder.h"

template <typename R>
using Rows = TypedRowArray<R>;

template <typename R>
const TableSchema& schemaOf() {
    return *findTable(tableOf<R>);
}

template <typename R>
Rows<R> rowsOf(StyleStore& store, std::vector<ReadProblem>* problems = nullptr) {
    Rows<R> rows;
    std::vector<ReadProblem> found;
    EXPECT_EQ(store.readTable(schemaOf<R>(), rows, found).error, "");
    if (problems)
        *problems = found;
    else
        EXPECT_TRUE(found.empty()) << found.front().sentence;
    return rows;
}

/// `count` view requests, filled so that each row differs.
inline Rows<StructDetViewRequest> someViews(int count) {
    Rows<StructDetViewRequest> rows;
    for (int i = 1; i <= count; ++i) {
        StructDetViewRequest& view = rows.append();
        view.key = i;
        view.name = "Front view " + std::to_string(i);
        view.scale = 10.0 + i;
        view.calloutTitleTemplate = "Scale 1:10";
    }
    return rows;
}

template <typename R>
TableChange appending(const Rows<R>& rows) {
    TableChange change{&schemaOf<R>(), {}, {}, {}};
    for (int i = 0; i < rows.size(); ++i)
        change.appended.push_back(&rows.at(i));
    return change;
}

inline std::string makeDatabase(const std::string& path, int views) {
    const auto rows = someViews(views);
    const Result<> made = SqliteStore::createWith(path, [&](StyleStore& store) {
        std::vector<StoreConflict> conflicts;
        return store.apply(appending(rows), conflicts);
    });
    EXPECT_EQ(made.error, "");
    return path;
}

/// A change of the scale of one view.
inline CellChange newScale(std::int32_t key, double stored, double wanted) {
    return {key, schemaOf<StructDetViewRequest>().column("scale"), stored, wanted};
}

/// Applies `change` in a transaction of its own, which is rolled back where that fails.
inline Result<> applyTo(StyleStore& store, const TableChange& change, std::vector<StoreConflict>& conflicts) {
    Result<> result = store.begin();
    if (result)
        result = store.apply(change, conflicts);
    return result && conflicts.empty() ? store.commit() : (store.rollback(), result);
}

inline TableChange ofViews(std::vector<CellChange> cells) {
    return {&schemaOf<StructDetViewRequest>(), std::move(cells), {}, {}};
}
