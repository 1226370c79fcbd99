#include "records/Column.h"

#include "base/Utf8.h"

#include <cmath>

CellValue Column::read(const StructRecord* record) const {
    if (isText())
        return textIn(record);
    if (isReal())
        return realIn(record);
    return std::int64_t{integerIn(record)};
}

bool Column::canHold(const CellValue& value) const {
    if (const auto* text = std::get_if<KorString>(&value))
        return isText() && isCleanUtf8(text->view());
    if (isText())
        return false;
    const auto* whole = std::get_if<std::int64_t>(&value);
    const double figure = whole ? static_cast<double>(*whole) : std::get<double>(value);
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    return isReal() ? std::isfinite(figure)
                    : figure >= kLowest && figure <= kHighest && figure == std::trunc(figure);
}

bool Column::write(StructRecord* record, const CellValue& value) const {
    if (!canHold(value))
        return false;
    if (const auto* text = std::get_if<KorString>(&value)) {
        textIn(record) = *text;
        return true;
    }
    const auto* whole = std::get_if<std::int64_t>(&value);
    const double figure = whole ? static_cast<double>(*whole) : std::get<double>(value);
    if (isReal())
        realIn(record) = figure + 0.0; // there is no -0
    else
        integerIn(record) = static_cast<std::int32_t>(figure);
    return true;
}
