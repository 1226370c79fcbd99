#pragma once

#include "data/store/SchemaHistory.h"
#include "records/TableBuilder.h"
#include "records/TableDeclarations.h"

// A schema that goes on from the one of the first version: columns and a table that are added, and values
// that are converted.

struct TomorrowsLinetype : StructLinetypes {
    double width = 0.35;
    KorString note = "it's new";

    bool operator==(const TomorrowsLinetype&) const = default;
};

struct StructPlate : StructRecord {
    double thickness = 12.5;
    KorString grade = "S235";

    bool operator==(const StructPlate&) const = default;
};

template <>
inline constexpr eTableType tableOf<TomorrowsLinetype> = kTableLinetypes;
template <>
inline constexpr eTableType tableOf<StructPlate> = kEndOfTables;

inline const std::vector<TableSchema>& tomorrowsTables() {
    static const auto tables = [] {
        using Linetype = TomorrowsLinetype;
        std::vector<TableSchema> all = allTables();
        std::erase_if(all, [](const TableSchema& table) { return table.type == kTableLinetypes; });
        for (TableSchema& table : all) { // what the program itself has added since comes with version 2
            table.since = std::min(table.since, 2);
            for (Column& column : table.columns)
                column.since = std::min(column.since, 2);
        }
        TableBuilder<Linetype>(all, "linetype")
            .text(2, "file_path", &Linetype::filePath)
            .integer(3, "linetype_id", &Linetype::lineTypeId)
            .real(4, "width", &Linetype::width)
            .since(2)
            .text(5, "note", &Linetype::note)
            .since(3);
        TableBuilder<StructPlate>(all, "plate", 2)
            .length(2, "thickness", &StructPlate::thickness)
            .text(3, "grade", &StructPlate::grade)
            .since(3);
        return all;
    }();
    return tables;
}

inline const TableSchema& tomorrowsTable(eTableType type) {
    return *std::ranges::find(tomorrowsTables(), type, &TableSchema::type);
}

inline const SchemaHistory& tomorrowsHistory() {
    static const SchemaHistory history(
        tomorrowsTables(),
        {{1, "the first version"},
         {2, "widths of lines, and plates", {"INSERT INTO plate VALUES (1, 'Base plate', 12.5)"}},
         {3,
          "scales in tenths",
          {"UPDATE view_request SET scale = scale * 10",
           "UPDATE linetype SET width = 0.5, note = 'thick' WHERE \"key\" = 1"}}});
    return history;
}
