#include "app/TypedValue.h"

#include "app/Console.h"
#include "app/DidYouMean.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "data/WriteRefusal.h"
#include "session/KorDSMValueText.h"
#include "session/LabelDoubts.h"

#include <algorithm>

namespace TypedValue {

namespace {

StyleTable& tableOf(eTableType type) {
    return StyleDatabases::current().here()->table(type);
}

KorString whyNot(RowRef row, const Column& column, const CellValue& stored, const CellValue& value) {
    const TableSchema& table = *findTable(row.table);
    if (column.number != 1 && value == stored)
        return {};
    const eCellFault fault = faultOf(*StyleDatabases::current().here(), table, column, row.key, value);
    return fault == eCellFault::kNone ? KorString()
                                      : KorString(WriteRefusal::unfit(table, column, value, fault).error);
}

KorString severalNamed(const Column& column, const KorString& text) {
    if (!column.isReference())
        return {};
    const StyleTable& targets = tableOf(column.target);
    return RowChoice::severalNamed(*StyleDatabases::current().here(), targets,
                                   KorDSMValueText::keysNamed(targets, text));
}

// Where else the row that a text names can be had, or what else may be meant.
KorString adviceOn(const Column& column, const KorString& text) {
    if (!column.isReference())
        return {};
    const TableSchema& target = *findTable(column.target);
    for (const SourceId id : SourceChoice::choose({}).value)
        if (!text.isEmpty() && StyleDatabases::current().source(id)->table(target.type).find(text))
            return KorString(" ") +
                   KorString::format(
                       translated("The source \"%s\" has it; \"detailstyles copy %s\" brings it."),
                       {SourceChoice::nameOf(id), target.kindName()});
    constexpr std::size_t kFew = 20;
    const std::vector<KorString> names = RowChoice::namesIn(tableOf(target.type));
    const KorString similar = didYouMean(text, names);
    return !similar.isEmpty() || names.empty() || names.size() > kFew
               ? similar
               : KorString(" ") + KorString::format(translated("There are %s."), {RowChoice::listOf(names)});
}

} // namespace

Result<CellValue> read(RowRef row, const Column& column, const KorString& text) {
    const TableSchema& table = *findTable(row.table);
    const CellValue stored = column.read(tableOf(row.table).find(KorOdbcKey(row.key)));
    std::optional<CellValue> value;
    if (KorDSMValueText::toText(table, column, stored) == text) {
        value = stored;
    } else if (const KorString several = severalNamed(column, text); !several.isEmpty()) {
        return Result<>::failure(KorString::format(translated("Column \"%s\": %s"), {column.name, several}));
    } else {
        const KorDSMValueText::Parsed parsed = KorDSMValueText::parse(table, column, text);
        if (!parsed)
            return Result<>::failure(
                KorString::format(translated("Column \"%s\": %s"), {column.name, parsed.error}) +
                adviceOn(column, text));
        value = parsed.value;
    }
    const KorString fault = whyNot(row, column, stored, *value);
    if (!fault.isEmpty())
        return Result<>::failure(fault);
    return *value;
}

KorString givenTwice(const Column& column) {
    return KorString::format(translated("The column \"%s\" is given twice; which value is meant?"),
                             {column.name});
}

std::vector<const Column*> columnsOf(const TableSchema& table) {
    std::vector<const Column*> columns;
    for (const Column& column : table.columns)
        columns.push_back(&column);
    return columns;
}

Result<const Column*> findColumn(const TableSchema& table, const std::vector<const Column*>& columns,
                                 const std::string& name) {
    const auto found = std::ranges::find(columns, name, &Column::name);
    if (found != columns.end())
        return *found;
    std::vector<KorString> names;
    KorString list;
    for (const Column* column : columns) {
        names.emplace_back(column->name);
        list = list + (list.isEmpty() ? "" : ", ") + column->name;
    }
    return Result<>::failure(
        KorString::format(translated("The kind \"%s\" has no column \"%s\"; its columns are %s."),
                          {table.kindName(), name, list}) +
        didYouMean(name, names));
}

void tellDoubts(const TableSchema& table, const Column& column, const CellValue& value) {
    if (column.kind == eColumnKind::kScale && !KorDSMValueText::isOfferedScale(std::get<double>(value)))
        Console::complain(KorString::format(
            translated("The scale %s is none of those that the editor offers; it is taken all the same."),
            {KorDSMValueText::scaleText(std::get<double>(value))}));
    if (const auto* text = std::get_if<KorString>(&value))
        if (const KorString doubt = LabelDoubts::of(table, column, *text); !doubt.isEmpty())
            Console::complain(doubt);
}

} // namespace TypedValue
