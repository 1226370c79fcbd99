#include "app/Manual.h"
#include "app/ManualText.h"
#include "base/Translation.h"
#include "data/store/SchemaHistory.h"
#include "records/TableSchema.h"

#include <array>

namespace {

constexpr std::array kKinds = {
    translatable("integer"),
    translatable("0 or 1"),
    translatable("key"),
    translatable("number"),
    translatable("length in millimetres"),
    translatable("scale, length on paper by length of the object"),
    translatable("text"),
};

KorString meaningOf(const TableSchema& table, const Column& column) {
    KorString text = KorString::format(
        "%s; %s", {table.columnName(column), translated(kKinds[static_cast<std::size_t>(column.kind)])});
    if (const TableSchema* target = column.isReference() ? findTable(column.target) : nullptr)
        text = KorString::format(translated("%s of %s"), {text, target->name});
    for (const auto* values : {&column.valueNames, &column.specialValues})
        for (const NamedValue& value : *values)
            text = KorString::format("%s; %s %s",
                                     {text, KorString::number(std::int64_t{value.value}), value.name});
    if (column.since > 1)
        text = KorString::format(translated("%s (since version %s)"),
                                 {text, KorString::number(std::int64_t{column.since})});
    return text;
}

} // namespace

std::string Manual::formatPage() {
    ManualText page("DSDB", 5, "dsdb", translated("database of detail styles"));
    page.section(translated("DESCRIPTION"));
    page.paragraph(translated(
        "A style database is an SQLite file with one table for each kind of record. Its application "
        "id is 0x44534442 (\"DSDB\"), its user version the version of the schema."));
    page.paragraph(KorString::format(
        translated("This is version %s. A program reads files of earlier versions, and brings them to its "
                   "own when it changes them first; those of later versions it does not change."),
        {KorString::number(std::int64_t{SchemaHistory::own().current()})}));
    page.paragraph(translated(
        "Each row has a key above 0 in the column key. A column that holds the key of a row of another "
        "table is 0 where there is none."));
    page.section(translated("TABLES"));
    for (const TableSchema& table : allTables()) {
        page.subsection(table.name);
        page.paragraph(table.rowName());
        for (const Column& column : table.columns)
            page.entry(column.name, meaningOf(table, column));
    }
    page.section(translated("SEE ALSO"));
    page.paragraph("detailstyles(1), sqlite3(1)");
    return page.text();
}
