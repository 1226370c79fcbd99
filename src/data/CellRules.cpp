#include "data/CellRules.h"

#include "data/RowClosure.h"

namespace {

eCellFault faultOfName(StyleSource& source, const TableSchema& table, std::int32_t key,
                       const KorString& name) {
    if (belongsToOthers(table))
        return eCellFault::kNone;
    if (name.trimmed().isEmpty())
        return eCellFault::kNoName;
    return source.table(table.type).hasOther(name, key) ? eCellFault::kNameTaken : eCellFault::kNone;
}

eCellFault faultOfReference(StyleSource& source, const Column& column, std::int32_t target) {
    if (source.table(column.target).find(KorOdbcKey(target)))
        return eCellFault::kNone;
    if (column.role == eReferenceRole::kPartOf)
        return eCellFault::kNoWhole;
    return target > 0 ? eCellFault::kNoTarget : eCellFault::kNone;
}

} // namespace

eCellFault faultOf(StyleSource& source, const TableSchema& table, const Column& column, std::int32_t key,
                   const CellValue& value) {
    if (!column.canHold(value))
        return eCellFault::kWrongType;
    if (const auto* text = std::get_if<KorString>(&value))
        return column.number == 1 ? faultOfName(source, table, key, *text) : eCellFault::kNone;
    const auto* whole = std::get_if<std::int64_t>(&value);
    const double figure = whole ? static_cast<double>(*whole) : std::get<double>(value);
    if (!column.isInRange(figure))
        return eCellFault::kOutOfRange;
    return column.isReference() ? faultOfReference(source, column, static_cast<std::int32_t>(figure))
                                : eCellFault::kNone;
}
