#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "data/CellRules.h"
#include "data/RowUsers.h"
#include "data/ScopedSource.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

namespace {

int refuse(eExitCode code, const KorString& sentence) {
    Console::complain(sentence);
    return code;
}

KorString columnNames(const TableSchema& table) {
    KorString names;
    for (const Column& column : table.columns)
        names = names + (names.isEmpty() ? "" : ", ") + column.name;
    return names;
}

KorString whyNot(const RowChoice& row, const Column& column, const CellValue& value) {
    if (column.number != 1 && value == column.read(row.record()))
        return {};
    switch (faultOf(*StyleDatabases::current().here(), *row.table, column, row.key.getKey(), value)) {
    case eCellFault::kNone:
        return {};
    case eCellFault::kNoName:
        return translated("The name must not be empty.");
    case eCellFault::kNameTaken:
        return KorString::format(translated("Another %s is named \"%s\"; choose another name."),
                                 {row.table->rowName(), std::get<KorString>(value)});
    default:
        return KorString::format(translated("Column \"%s\" cannot hold this value; enter another one."),
                                 {column.name});
    }
}

// What is shown for the stored value means that value, to its last digit and to the right one of two rows of
// one name.
KorDSMValueText::Parsed parse(const RowChoice& row, const Column& column, const KorString& text) {
    const CellValue stored = column.read(row.record());
    if (KorDSMValueText::toText(*row.table, column, stored) == text)
        return {stored, {}};
    if (column.isReference()) {
        const StyleTable& targets = StyleDatabases::current().here()->table(column.target);
        const std::vector<std::int32_t> keys = KorDSMValueText::keysNamed(targets, text);
        if (const KorString several = RowChoice::severalNamed(targets, keys); !several.isEmpty())
            return {{}, several};
    }
    return KorDSMValueText::parse(*row.table, column, text);
}

// Why others than the row that is named would change, or may: empty when that is not so.
KorString whyShared(const RowChoice& row) {
    StyleSource& source = *StyleDatabases::current().here();
    const auto whole = sharedWhole(StyleDatabases::current(), {row.table->type, row.key});
    if (!whole)
        return {};
    const KorString kind = findTable(whole->table)->rowName();
    const KorString name = source.table(whole->table).find(KorOdbcKey(whole->key))->name;
    return source.complete()
               ? KorString::format(translated("The %s \"%s\" is used by several records, and all of them "
                                              "would change; give --shared if that is meant."),
                                   {kind, name})
               : KorString::format(
                     translated("\"%s\" could not be read whole, so it cannot be told what else "
                                "uses the %s \"%s\" and would change; give --shared to change it "
                                "all the same."),
                     {source.store().name(), kind, name});
}

// Any scale can be drawn, but a slip of the finger looks like one.
void tellUnlistedScale(const Column& column, const CellValue& value) {
    if (column.kind == eColumnKind::kScale && !KorDSMValueText::isOfferedScale(std::get<double>(value)))
        Console::complain(KorString::format(
            translated("The scale %s is stored, although it is none of those that the editor offers."),
            {KorDSMValueText::scaleText(std::get<double>(value))}));
}

// The row that tells the host of another one has its name.
bool writeCells(const RowChoice& row, const Column& column, const CellValue& value) {
    StyleDatabases& databases = StyleDatabases::current();
    std::vector<RowRef> named = {{row.table->type, row.key}};
    for (const Referrer& referrer : databases.here()->referrersOf(row.table->type, row.key))
        if (column.number == 1 && referrer.column->role == eReferenceRole::kIdentifies)
            named.push_back({referrer.table->type, referrer.key});
    return std::ranges::all_of(named, [&](const RowRef& each) {
        return databases.setCell(each.table, KorOdbcKey(each.key), column.number, value) ==
               WriteResult::kWritten;
    });
}

int write(const RowChoice& row, const Column& column, const CellValue& value) {
    if (!writeCells(row, column, value))
        return refuse(
            kExitFailed,
            KorString::format(translated("The value could not be written to column \"%s\"."), {column.name}));
    if (!keepChanges())
        return kExitFailed;
    tellUnlistedScale(column, value);
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
                : KorString::format(translated("The source \"%s\" is read-only; export the detail style that "
                                               "uses the record, import the file into the User database and "
                                               "change the record there."),
                                    {SourceChoice::nameOf(row.source)}));
    const KorDSMValueText::Parsed parsed = parse(row, column, options.value);
    if (!parsed.value)
        return refuse(kExitFailed,
                      KorString::format(translated("Column \"%s\": %s"), {column.name, parsed.error}));
    if (const KorString fault = whyNot(row, column, *parsed.value); !fault.isEmpty())
        return refuse(kExitFailed, fault);
    if (const KorString shared = options.shared ? KorString() : whyShared(row); !shared.isEmpty())
        return refuse(kExitFailed, shared);
    return write(row, column, *parsed.value);
}

} // namespace

int setCommand(DataFolder&, const SetOptions& options) {
    RowChoice row;
    KorString error;
    RowOptions wanted = options.row;
    if (wanted.source.empty())
        wanted.source = "user";
    const eExitCode found = RowChoice::findInOneState(wanted, row, error);
    complainOfReading();
    if (found != kExitDone) {
        complainUnlessTold(error);
        return found;
    }
    const Column* column = row.table->column(std::string_view(options.column));
    if (!column)
        return refuse(kExitUsage, KorString::format(
                                      translated("The kind \"%s\" has no column \"%s\"; its columns are %s."),
                                      {row.table->kindName(), options.column, columnNames(*row.table)}));
    const ScopedSource request(row.source);
    return set(row, *column, options);
}
