#include "data/store/odbc/OdbcBlock.h"

#include <sqlext.h>

#include <algorithm>
#include <charconv>

std::optional<std::string_view> OdbcBlock::cell(std::size_t row, std::size_t column) const {
    const Cells& cells = m_columns[column];
    const std::ptrdiff_t length = cells.lengths[row];
    if (length == SQL_NULL_DATA)
        return {};
    const std::size_t held = length < 0 ? cells.room - 1 : static_cast<std::size_t>(length);
    return std::string_view(cells.texts.data() + row * cells.room, std::min(held, cells.room - 1));
}

std::size_t OdbcBlock::missingRoom(std::size_t row, std::size_t column) const {
    const Cells& cells = m_columns[column];
    const std::ptrdiff_t length = cells.lengths[row];
    if (length == SQL_NO_TOTAL)
        return 2 * cells.room;
    return length != SQL_NULL_DATA && static_cast<std::size_t>(length) >= cells.room
               ? static_cast<std::size_t>(length) + 1
               : 0;
}

std::int64_t numberIn(const std::optional<std::string>& cell) {
    std::int64_t number = 0;
    if (cell)
        std::from_chars(cell->data(), cell->data() + cell->size(), number);
    return number;
}
