#include "app/Commands.h"
#include "app/Console.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "session/DataFolder.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <set>

namespace {

struct ListedRow {
    SourceId source;
    const StructRecord* record;
    KorString filedUnder;
    KorString description;
};

KorString nameOf(StyleSource& source, const Column& column, const StructRecord& record) {
    const StructRecord* target = source.table(column.target).find(KorOdbcKey(column.integerIn(&record)));
    return target ? target->name : KorString();
}

// The group or category of a row. A detail style is filed by the row that tells the host of it.
KorString filedUnder(StyleSource& source, const TableSchema& table, const StructRecord& record) {
    for (const Column& column : table.columns)
        if (column.isReference() && column.role == eReferenceRole::kFiledUnder)
            return nameOf(source, column, record);
    if (table.type == kTableDetailStyle)
        for (const Referrer& master : source.referrersOf(table.type, KorOdbcKey(record.key)))
            if (master.column->role == eReferenceRole::kIdentifies)
                return filedUnder(source, *master.table,
                                  *source.table(master.table->type).find(KorOdbcKey(master.key)));
    return {};
}

// The table, and those that say where its rows are filed.
std::set<eTableType> tablesFor(const TableSchema& table) {
    std::set<eTableType> types = {table.type};
    if (table.type == kTableDetailStyle)
        types.insert({kTableDetailMaster, kTableBaseCategory});
    for (const Column& column : table.columns)
        if (column.isReference() && column.role == eReferenceRole::kFiledUnder)
            types.insert(column.target);
    return types;
}

std::vector<ListedRow> rowsOf(SourceId id, const TableSchema& table) {
    std::vector<ListedRow> listed;
    StyleSource& source = *StyleDatabases::current().source(id);
    static_cast<void>(
        source.readAnew(tablesFor(table))); // of one state; where that fails, what can be read is listed
    const RowArray& rows = source.table(table.type).rows();
    const Column* description = table.column("description");
    for (int i = 0; i < rows.size(); ++i) {
        const StructRecord& record = rows.at(i);
        listed.push_back({id, &record, filedUnder(source, table, record),
                          description ? description->textIn(&record) : KorString()});
    }
    return listed;
}

void printJson(const TableSchema& table, const std::vector<ListedRow>& rows) {
    QJsonArray array;
    for (const ListedRow& row : rows)
        array.append(QJsonObject{{"source", Console::text(SourceChoice::nameOf(row.source))},
                                 {"kind", Console::text(table.kindName())},
                                 {"key", row.record->key},
                                 {"name", Console::text(row.record->name)},
                                 {"filedUnder", Console::text(row.filedUnder)},
                                 {"description", Console::text(row.description)}});
    Console::print(array);
}

void printColumns(const std::vector<ListedRow>& rows) {
    const bool filed =
        std::ranges::any_of(rows, [](const ListedRow& row) { return !row.filedUnder.isEmpty(); });
    std::vector<KorString> heading = {translated("Source"), translated("Name")};
    if (filed)
        heading.push_back(translated("Filed under"));
    heading.push_back(translated("Description"));
    std::vector<std::vector<KorString>> lines;
    for (const ListedRow& row : rows) {
        const KorString key = KorString("[") + KorString::number(row.record->key) + KorString("]");
        std::vector<KorString>& line = lines.emplace_back();
        line = {SourceChoice::nameOf(row.source), row.record->name.isEmpty() ? key : row.record->name};
        if (filed)
            line.push_back(row.filedUnder);
        line.push_back(row.description);
    }
    Console::printColumns(heading, lines);
}

KorString sayNone(const TableSchema& table, const std::string& source) {
    return KorString::format(source.empty()
                                 ? translated("There is nothing of the kind \"%s\".")
                                 : translated("There is nothing of the kind \"%s\" in the source \"%s\"."),
                             {table.kindName(), source});
}

} // namespace

int listCommand(DataFolder& folder, const ListOptions& options) {
    const Result<const TableSchema*> table = RowChoice::findKind(options.kind);
    const Result<std::vector<SourceId>> sources = SourceChoice::choose(options.source);
    if (!table || !sources) {
        Console::complain(KorString(table ? sources.error : table.error));
        return table ? kExitFailed : kExitUsage;
    }
    std::vector<ListedRow> rows;
    for (const SourceId id : sources.value)
        std::ranges::move(rowsOf(id, *table.value), std::back_inserter(rows));
    if (options.json)
        printJson(*table.value, rows);
    else
        printColumns(rows);
    const bool lost = complainOfReading();
    const bool isSure = !lost && (!options.source.empty() || folder.isCompleteButForStandard());
    if (rows.empty() && isSure && !options.json)
        Console::say(sayNone(*table.value, options.source));
    return (options.source.empty() && !folder.isComplete()) || lost ? kExitFailed : kExitDone;
}
