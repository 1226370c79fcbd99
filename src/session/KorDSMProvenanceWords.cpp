#include "session/KorDSMProvenanceWords.h"

#include "data/RowUsers.h"
#include "services/Prompts.h"
#include "session/KorDSMPartList.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

namespace {

constexpr int kPartOfWhole = 910; // "%s %d of "%s""
constexpr int kNamed = 911;       // "%s "%s""
constexpr int kWithColumns = 912; // "%s: %s"

// What a page calls a column, where its caption says what a value of it means.
constexpr struct {
    eTableType table;
    std::string_view column;
    int prompt;
} kOnPages[] = {{kTableReprMap, "hide_unmatched", 769}};

KorString captionOf(const TableSchema& table, const Column& column) {
    for (const auto& each : kOnPages)
        if (each.table == table.type && each.column == column.name)
            return Prompts::dsm(each.prompt);
    return KorDSMValueText::columnCaption(table, column);
}

const StructRecord* recordOf(RowRef row) {
    StyleSource* source = StyleDatabases::current().here();
    return source ? source->table(row.table).find(KorOdbcKey(row.key)) : nullptr;
}

KorString partName(RowRef part, RowRef whole) {
    const KorDSMPartList list(StyleDatabases::current().currentSource(), whole, part.table);
    const KorDSMEditedList::Keys keys = list.keys();
    const auto place = std::ranges::find(keys, part.key) - keys.begin();
    return KorString::format(Prompts::dsm(kPartOfWhole),
                             {KorDSMValueText::tableCaption(*findTable(part.table)),
                              KorString::number(place + 1),
                              KorDSMValueText::shortName(recordOf(whole)->name)});
}

// The row that it is directly a part of; key 0 where it is none.
RowRef ownerOf(RowRef row, const StructRecord& record) {
    for (const Column& column : findTable(row.table)->columns)
        if (column.isReference() && column.role == eReferenceRole::kPartOf)
            if (const RowRef whole{column.target, column.integerIn(&record)}; recordOf(whole))
                return whole;
    return {};
}

} // namespace

KorString KorDSMProvenanceWords::nameOf(RowRef row) {
    const TableSchema* table = findTable(row.table);
    if (!table)
        return {};
    KorString kind = KorDSMValueText::tableCaption(*table);
    const StructRecord* record = recordOf(row);
    if (!record)
        return kind;
    const std::vector<eTableType> listed = [&] {
        const RowRef whole = ownerOf(row, *record);
        return whole.key > 0 ? KorDSMPartList::listedParts(whole.table) : std::vector<eTableType>();
    }();
    if (std::ranges::find(listed, row.table) != listed.end())
        return partName(row, ownerOf(row, *record));
    return record->name.isEmpty()
               ? kind
               : KorString::format(Prompts::dsm(kNamed), {kind, KorDSMValueText::shortName(record->name)});
}

KorString KorDSMProvenanceWords::sentenceOf(const ProvenanceStep& step) {
    const TableSchema* table = findTable(step.row.table);
    std::string columns;
    for (const int number : step.columns)
        if (const Column* column = table ? table->column(number) : nullptr)
            columns += (columns.empty() ? "" : ", ") + captionOf(*table, *column).toStdString();
    const KorString name = nameOf(step.row);
    return columns.empty() ? name : KorString::format(Prompts::dsm(kWithColumns), {name, columns});
}
