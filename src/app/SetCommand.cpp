#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "data/ScopedSource.h"

#include <algorithm>

namespace {

int refuse(eExitCode code, const KorString& sentence) {
    Console::complain(sentence);
    return code;
}

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

int write(const RowChoice& row, const Column& column, const CellValue& value) {
    if (!writeCells(row, column, value))
        return refuse(
            kExitFailed,
            KorString::format(translated("The value could not be written to column \"%s\"."), {column.name}));
    if (!keepChanges())
        return kExitFailed;
    TypedValue::tellUnlistedScale(column, value);
    if (StyleDatabases::current().here()->complete())
        return kExitDone;
    return refuse(kExitFailed, KorString::format(
                                   translated("The column \"%s\" of the %s \"%s\" was changed all the same."),
                                   {column.name, row.table->rowName(), row.record()->name}));
}

int set(const RowChoice& row, const Column& column, const SetOptions& options) {
    if (const std::string tooNew = StyleDatabases::current().whyTooNew(row.source); !tooNew.empty()) {
        complainUnlessTold(KorString(tooNew));
        return kExitFailed;
    }
    if (!StyleDatabases::current().isEditable())
        return refuse(
            kExitFailed,
            row.source == SourceId::user()
                ? translated("The User database is open for reading only, so nothing was written.")
                : KorString::format(
                      translated(
                          "The source \"%s\" is read-only; copy the detail style that uses the record by "
                          "\"detailstyles copy\", and change what came along in the User database."),
                      {SourceChoice::nameOf(row.source)}));
    const TypedValue::Typed typed = TypedValue::read({row.table->type, row.key}, column, options.value);
    if (!typed.value)
        return refuse(kExitFailed, typed.error);
    if (const KorString shared = options.shared ? KorString() : row.whyShared(); !shared.isEmpty())
        return refuse(kExitFailed, shared);
    return write(row, column, *typed.value);
}

} // namespace

int setCommand(DataFolder&, const SetOptions& options) {
    RowChoice row;
    const eExitCode found = RowChoice::findToChange(options.row, row);
    if (found != kExitDone)
        return found;
    KorString error;
    const Column* column =
        TypedValue::findColumn(*row.table, TypedValue::columnsOf(*row.table), options.column, error);
    if (!column)
        return refuse(kExitUsage, error);
    const ScopedSource request(row.source);
    return set(row, *column, options);
}
