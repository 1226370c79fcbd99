#include "data/schema/Column.h"

#include <cmath>

CellValue Column::read(const void* record) const {
    if (isText())
        return textIn(record);
    if (isReal())
        return realIn(record);
    return std::int64_t{integerIn(record)};
}

bool Column::write(void* record, const CellValue& value) const {
    if (isText()) {
        const auto* text = std::get_if<KorString>(&value);
        if (text)
            textIn(record) = *text;
        return text != nullptr;
    }
    if (std::holds_alternative<KorString>(value))
        return false;
    const auto* whole = std::get_if<std::int64_t>(&value);
    const double figure = whole ? static_cast<double>(*whole) : std::get<double>(value);
    if (isReal()) {
        if (!std::isfinite(figure))
            return false;
        realIn(record) = figure;
        return true;
    }
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    if (!(figure >= kLowest && figure <= kHighest) || figure != std::trunc(figure))
        return false;
    integerIn(record) = static_cast<std::int32_t>(figure);
    return true;
}
