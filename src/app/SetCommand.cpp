#include "app/ChangeReport.h"
#include "app/Commands.h"
#include "app/Console.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "data/ScopedSource.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

namespace {

// The row that tells the host of another one has its name.
bool writeCells(const RowChoice& row, const Column& column, const CellValue& value) {
    StyleDatabases& databases = StyleDatabases::current();
    std::vector<RowRef> named = {{row.table->type, row.key}};
    for (const Referrer& referrer : databases.here()->referrersOf(row.table->type, row.key))
        if (column.number == 1 && referrer.column->role == eReferenceRole::kIdentifies)
            named.push_back({referrer.table->type, referrer.key});
    return std::ranges::all_of(named, [&](const RowRef& each) {
        return databases.setCell(each.table, KorOdbcKey(each.key), column.number, value).isStored();
    });
}

// Why the user may not change the row; empty where he may.
KorString whyNotChanged(const RowChoice& row) {
    if (StyleDatabases::current().isEditable())
        return {};
    return row.source == SourceId::user()
               ? translated("The User database is open for reading only, so nothing was written.")
               : KorString::format(
                     translated(
                         "The source \"%s\" is read-only; copy the detail style that uses the record by "
                         "\"detailstyles copy\", and change what came along in the User database."),
                     {SourceChoice::nameOf(row.source)});
}

// `cell` is in the row, or in the one by which it is filed.
int write(const RowChoice& row, const FilingCell& cell, const CellValue& value, const ChangeOptions& how) {
    ChangeReport report("set", how);
    const auto text = [&] {
        return KorDSMValueText::toText(*cell.row.table, *cell.column, *cell.row.record());
    };
    const KorString before = text();
    const KorString name = row.record()->name;
    if (!writeCells(cell.row, *cell.column, value))
        return ChangeReport::refuse(KorString::format(
            translated("The value could not be written to column \"%s\"."), {cell.column->name}));
    report.isAbout(row.source, row.ref());
    report.say(KorString::format(
        translated("Changed \"%s\" of the %s \"%s\" from \"%s\" to \"%s\"."),
        {cell.row.table->columnName(*cell.column), row.table->rowName(), name, before, text()}));
    return report.finish();
}

int set(const RowChoice& row, const FilingCell& cell, const SetOptions& options) {
    StyleDatabases& databases = StyleDatabases::current();
    const bool isOnServer = databases.source(row.source)->store().isOnServer(); // which knows why
    const std::string whyOfStore =
        isOnServer ? databases.whyNotEditable(row.source) : databases.whyTooNew(row.source);
    if (!whyOfStore.empty()) {
        complainUnlessTold(KorString(whyOfStore));
        return kExitFailed;
    }
    if (const KorString why = whyNotChanged(row); !why.isEmpty())
        return ChangeReport::refuse(why);
    const Result<CellValue> typed = TypedValue::read(cell.row.ref(), *cell.column, options.value);
    if (!typed)
        return ChangeReport::refuse(KorString(typed.error));
    if (const KorString shared = options.how.shared ? KorString() : row.whyShared(); !shared.isEmpty())
        return ChangeReport::refuse(shared);
    return write(row, cell, typed.value, options.how);
}

} // namespace

int setCommand(DataFolder&, const SetOptions& options) {
    const FoundRow found = RowChoice::findToChange(options.row);
    if (found.tell() != kExitDone)
        return found.code;
    const RowChoice& row = found.value;
    const std::vector<FilingCell> filing = row.filingCells();
    std::vector<const Column*> columns = TypedValue::columnsOf(*row.table);
    std::ranges::transform(filing, std::back_inserter(columns), &FilingCell::column);
    const Result<const Column*> column = TypedValue::findColumn(*row.table, columns, options.column);
    if (!column)
        return ChangeReport::refuse(KorString(column.error), kExitUsage);
    const ScopedSource request(row.source);
    const auto filed = std::ranges::find(filing, column.value, &FilingCell::column);
    return set(row, filed == filing.end() ? FilingCell{row, column.value} : *filed, options);
}
