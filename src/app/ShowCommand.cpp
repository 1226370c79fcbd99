#include "app/Commands.h"
#include "app/Console.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "data/RowUsers.h"
#include "data/ScopedSource.h"
#include "data/text/TextFields.h"
#include "session/KorDSMEditedList.h"
#include "session/KorDSMValueText.h"
#include "session/ShownColumns.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <set>

namespace {

/// Another record that has to do with the shown one.
struct RelatedRow {
    const TableSchema* table;
    const StructRecord* record;
    const Column* column; ///< the cell in it that refers to the shown one
};

std::vector<std::pair<const Column*, KorString>> filedBy(const RowChoice& row) {
    std::vector<std::pair<const Column*, KorString>> filing;
    for (const FilingCell& cell : row.filingCells())
        filing.emplace_back(cell.column,
                            KorDSMValueText::toText(*cell.row.table, *cell.column, *cell.row.record()));
    return filing;
}

// A part stands for its whole, which is asked for next; many parts of one can use the same.
std::vector<RelatedRow> usersOf(const RowChoice& row) {
    std::vector<RelatedRow> users;
    std::set<std::pair<RowRef, const Column*>> known;
    StyleSource& source = *StyleDatabases::current().source(row.source);
    for (const Referrer& referrer : source.referrersOf(row.table->type, row.key)) {
        const RowRef user = wholeOf(source, {referrer.table->type, referrer.key});
        if (referrer.column->role == eReferenceRole::kUses && known.emplace(user, referrer.column).second)
            users.push_back({findTable(user.table), source.table(user.table).find(KorOdbcKey(user.key)),
                             referrer.column});
    }
    return users;
}

/// A row that the shown one consists of.
struct Part {
    RelatedRow row;
    std::int64_t place;                                 ///< in its list, from 1, as "entry" takes it
    std::vector<std::pair<KorString, KorString>> cells; ///< names of columns and what stands in them
};

// In the order in which they act.
std::vector<Part> partsOf(const RowChoice& row) {
    std::vector<Part> parts;
    StyleSource& source = *StyleDatabases::current().source(row.source);
    for (const eTableType type : partTablesOf(row.table->type)) {
        const TableSchema& table = *findTable(type);
        const Column* owner = wholeColumn(table, row.table->type);
        const auto list = KorDSMEditedList::of(row.source, row.ref(), type);
        std::int64_t place = 0;
        for (const std::int32_t key : list->keys()) {
            Part& part = parts.emplace_back(
                Part{{&table, source.table(type).find(KorOdbcKey(key)), owner}, ++place, {}});
            for (const Column* column : list->cells())
                part.cells.emplace_back(column->name, list->text(key, *column));
        }
    }
    return parts;
}

QJsonValue rawValue(const Column& column, const StructRecord& record) {
    const CellValue value = column.read(&record);
    if (const auto* text = std::get_if<KorString>(&value))
        return Console::text(*text);
    if (const auto* real = std::get_if<double>(&value))
        return *real;
    return static_cast<qint64>(std::get<std::int64_t>(value));
}

QJsonObject toJson(const RelatedRow& other) {
    return {{"kind", Console::text(other.table->kindName())},
            {"key", other.record->key},
            {"name", Console::text(other.record->name)},
            {"column", Console::text(other.column->name)}};
}

QJsonArray toJson(const std::vector<RelatedRow>& related) {
    QJsonArray array;
    for (const RelatedRow& other : related)
        array.append(toJson(other));
    return array;
}

QJsonArray toJson(const std::vector<Part>& parts) {
    QJsonArray array;
    for (const Part& part : parts) {
        QJsonObject cells;
        for (const auto& [column, text] : part.cells)
            cells[Console::text(column)] = Console::text(text);
        QJsonObject object = toJson(part.row);
        object["place"] = static_cast<qint64>(part.place);
        object["cells"] = cells;
        array.append(object);
    }
    return array;
}

QJsonArray columnsToJson(const RowChoice& row, const StructRecord& record) {
    QJsonArray columns;
    for (const Column& column : row.table->columns)
        columns.append(
            QJsonObject{{"number", column.number},
                        {"column", Console::text(column.name)},
                        {"value", rawValue(column, record)},
                        {"text", Console::text(KorDSMValueText::toText(*row.table, column, record))}});
    return columns;
}

bool isShared(const RowChoice& row) {
    return sharedWhole(StyleDatabases::current(), {row.table->type, row.key}).has_value();
}

// Who uses a record of a source that could not be read whole is not known.
void printJson(const RowChoice& row, const StructRecord& record, bool isWhole) {
    QJsonObject filing;
    for (const auto& [column, group] : filedBy(row))
        filing[Console::text(column->name)] = Console::text(group);
    Console::print(QJsonObject{{"source", Console::text(SourceChoice::nameOf(row.source))},
                               {"kind", Console::text(row.table->kindName())},
                               {"key", record.key},
                               {"name", Console::text(record.name)},
                               {"editable", StyleDatabases::current().isEditable()},
                               {"complete", isWhole},
                               {"shared", isWhole ? QJsonValue(isShared(row)) : QJsonValue()},
                               {"columns", columnsToJson(row, record)},
                               {"filed", filing},
                               {"parts", toJson(partsOf(row))},
                               {"usedBy", toJson(usersOf(row))}});
}

// Of slots in a row, such as the views of a detail style, the used ones and the next free one.
std::vector<const Column*> columnsWorthALine(const TableSchema& table, const StructRecord& record) {
    std::vector<const Column*> columns;
    for (const TextColumn& entry : TextFields::columnsOf(table)) {
        bool freeShown = false;
        for (const Column* cell : entry.cells) {
            const bool isFree = entry.isList() && cell->isReference() && cell->integerIn(&record) == 0;
            if (!isFree || !freeShown)
                columns.push_back(cell);
            freeShown = freeShown || isFree;
        }
    }
    return columns;
}

// The kind as the command line takes it: who reads it may ask for the record next.
KorString nameOf(const RelatedRow& other) {
    return KorString::format(translated("%s \"%s\""), {other.table->kindName(), other.record->name});
}

// Where such a record can use several of the kind it is said which one the shown one is.
KorString userText(const RelatedRow& user) {
    const auto ways = std::ranges::count_if(user.table->columns, [&user](const Column& column) {
        return column.isReference() && !column.isSlot() && column.target == user.column->target;
    });
    return ways > 1 ? KorString::format(translated("%s, as %s"), {nameOf(user), user.column->name})
                    : nameOf(user);
}

// The place in the list, the name, and what stands in the cells.
KorString lineOf(const Part& part) {
    KorString line = KorString::number(part.place) + ". " + nameOf(part.row);
    for (const auto& [column, text] : part.cells)
        line = line + (&column == &part.cells.front().first ? ": " : ", ") + column + " \"" + text + "\"";
    return line;
}

// Columns are named as "set" takes them, in every language.
void printText(const RowChoice& row, const StructRecord& record, bool isWhole) {
    Console::say(KorString::format(
        isWhole && isShared(row) ? translated("%s \"%s\" in the source \"%s\", shared")
                                 : translated("%s \"%s\" in the source \"%s\""),
        {KorDSMValueText::tableCaption(*row.table), record.name, SourceChoice::nameOf(row.source)}));
    std::vector<std::vector<KorString>> lines;
    for (const Column* column : columnsWorthALine(*row.table, record))
        lines.push_back({column->name, KorDSMValueText::toText(*row.table, *column, record)});
    for (const auto& [column, group] : filedBy(row))
        lines.push_back({column->name, group});
    for (const Part& part : partsOf(row))
        lines.push_back({translated("part"), lineOf(part)});
    for (const RelatedRow& user : usersOf(row))
        lines.push_back({translated("used by"), userText(user)});
    Console::printColumns({translated("Column"), translated("Value")}, lines);
}

} // namespace

int showCommand(DataFolder&, const ShowOptions& options) {
    Result<> whole;
    FoundRow found = RowChoice::find(options.row);
    if (found) {
        static_cast<void>(StyleDatabases::current().readWhole(found.value.source)); // `complete` tells
        whole = StyleDatabases::current().source(found.value.source)->complete();
        found = RowChoice::find(options.row); // reading the whole may have been reading anew
    }
    const bool lost = complainOfReading();
    if (found.tell() != kExitDone)
        return found.code;
    const RowChoice& row = found.value;
    const ScopedSource request(row.source);
    if (options.json)
        printJson(row, *row.record(), whole.ok());
    else
        printText(row, *row.record(), whole.ok());
    if (!whole)
        Console::complain(KorString::format(
            translated("The source \"%s\" could not be read whole, so more records than are shown may use "
                       "the %s \"%s\" or be part of it."),
            {SourceChoice::nameOf(row.source), row.table->rowName(), row.record()->name}));
    const KorString passedOver =
        options.row.source.empty() ? SourceChoice::missingBefore(row.source) : KorString();
    if (!passedOver.isEmpty())
        Console::complain(KorString::format(
            translated(
                "The source \"%s\", which is searched first, cannot be used; it may hold another %s of "
                "this name."),
            {passedOver, row.table->rowName()}));
    return lost || !passedOver.isEmpty() ? kExitFailed : kExitDone;
}
