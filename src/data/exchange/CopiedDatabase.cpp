#include "data/exchange/CopiedDatabase.h"

#include "base/Translation.h"
#include "data/store/ReadTransaction.h"

#include <algorithm>

namespace {

// Values outside their range are values all the same.
Result<> readWhole(StyleStore& store, const TableSchema& table, RowArray& rows) {
    std::vector<ReadProblem> problems;
    Result<> result = store.readTable(table, rows, problems);
    const auto lost = std::ranges::find(problems, false, &ReadProblem::kept);
    if (!result || lost == problems.end())
        return result;
    return Result<>::failure(
        KorString::format(translated("\"%s\" could not be read whole, so it was not copied: %s"),
                          {store.name(), lost->sentence}));
}

} // namespace

Result<> CopiedDatabase::copy(StyleStore& from, StyleStore& to, const Progress& progress) {
    if (std::string tooNew = from.whyTooNew(); !tooNew.empty())
        return {std::move(tooNew)};
    const ReadTransaction reading(from);
    Result<> result = reading.result();
    for (auto table = allTables().begin(); result && table != allTables().end(); ++table) {
        const auto rows = table->makeRows();
        result = readWhole(from, *table, *rows);
        TableChange change{&*table, {}, {}, {}};
        for (int i = 0; i < rows->size(); ++i)
            change.appended.push_back(&rows->at(i));
        std::vector<StoreConflict> conflicts;
        if (result && !change.isEmpty())
            result = to.apply(change, conflicts);
        if (result && !conflicts.empty())
            result = refuseRows(to);
        if (result && !change.isEmpty() && !progress(*table, rows->size()))
            result = Result<>::failure(translated("The copy was stopped."));
    }
    return result;
}

Result<> CopiedDatabase::refuseRows(StyleStore& to) {
    const ReadTransaction reading(to);
    Result<> result = reading.result();
    for (auto table = allTables().begin(); result && table != allTables().end(); ++table) {
        const auto rows = table->makeRows();
        result = readWhole(to, *table, *rows);
        if (result && rows->size() > 0)
            result = Result<>::failure(KorString::format(
                translated(
                    "The style database \"%s\" holds rows already, and a whole database is copied into an "
                    "empty one only; choose another one."),
                {to.name()}));
    }
    return result;
}
