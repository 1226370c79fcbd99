#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "data/CellRules.h"
#include "data/KorDSNManager.h"
#include "data/RowUsers.h"
#include "session/KorDSMGuardedWrite.h"
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
    return KorDSMValueText::toText(*row.table, column, stored) == text
               ? KorDSMValueText::Parsed{stored, {}}
               : KorDSMValueText::parse(*row.table, column, text);
}

int write(const RowChoice& row, const Column& column, const CellValue& value) {
    // Whoever asked for a shared row to be written has answered the question already.
    KorDSMGuardedWrite::addAskFunction(
        &row, [](eTableType, const KorOdbcKey&) { return KorDSMGuardedWrite::kWrite; });
    const int result = KorDSMGuardedWrite::setAttributeValue(row.table->type, row.key, column.number, value);
    KorDSMGuardedWrite::removeAskFunction(&row);
    if (result != KorDSMGuardedWrite::kWrite)
        return refuse(
            kExitFailed,
            KorString::format(translated("The value could not be written to column \"%s\"."), {column.name}));
    return keepChanges() ? kExitDone : kExitFailed;
}

int set(const RowChoice& row, const Column& column, const SetOptions& options) {
    if (!StyleDatabases::current().isEditable())
        return refuse(
            kExitFailed,
            row.source == SourceId::user()
                ? translated("The User database is open for reading only, so nothing was written.")
                : KorString::format(translated("The source \"%s\" is read-only; copy the record into the "
                                               "User database and change it there."),
                                    {SourceChoice::nameOf(row.source)}));
    const KorDSMValueText::Parsed parsed = parse(row, column, options.value);
    if (!parsed.value)
        return refuse(kExitFailed,
                      KorString::format(translated("Column \"%s\": %s"), {column.name, parsed.error}));
    if (const KorString fault = whyNot(row, column, *parsed.value); !fault.isEmpty())
        return refuse(kExitFailed, fault);
    if (const auto whole = sharedWhole(StyleDatabases::current(), {row.table->type, row.key});
        whole && !options.shared) {
        const StructRecord* record =
            StyleDatabases::current().here()->table(whole->table).find(KorOdbcKey(whole->key));
        return refuse(kExitFailed, KorString::format(
                                       translated("The %s \"%s\" is used by several records, and all of them "
                                                  "would change; give --shared if that is meant."),
                                       {findTable(whole->table)->rowName(), record->name}));
    }
    return write(row, column, *parsed.value);
}

} // namespace

int setCommand(DataFolder&, const SetOptions& options) {
    RowChoice row;
    KorString error;
    RowOptions wanted = options.row;
    if (wanted.source.empty())
        wanted.source = "user";
    const eExitCode found = RowChoice::findInWhole(wanted, row, error);
    const bool lost = complainOfReading();
    if (found != kExitDone)
        return refuse(found, error);
    const Column* column = row.table->column(std::string_view(options.column));
    if (!column)
        return refuse(kExitUsage, KorString::format(
                                      translated("The kind \"%s\" has no column \"%s\"; its columns are %s."),
                                      {row.table->kindName(), options.column, columnNames(*row.table)}));
    const KorDSNRequest request(row.source.dsn, row.source.index);
    return std::max<int>(set(row, *column, options), lost ? kExitFailed : kExitDone);
}
