#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A few rows, each cell as a text, none for NULL.
using OdbcRows = std::vector<std::vector<std::optional<std::string>>>;
/// The number that such a cell holds, 0 for none.
std::int64_t numberIn(const std::optional<std::string>& cell);

/// Rows that were fetched at once, column by column.
class OdbcBlock {
public:
    std::size_t size() const { return m_size; }
    /// The cell as a text; none for NULL. Valid until the next fetch.
    std::optional<std::string_view> cell(std::size_t row, std::size_t column) const;
    /// The room that the text of this cell needs where it did not fit; 0 where it did.
    std::size_t missingRoom(std::size_t row, std::size_t column) const;

private:
    friend struct OdbcLine;

    struct Cells {
        std::size_t room = 0; // of one, with its end
        std::vector<char> texts;
        std::vector<std::ptrdiff_t> lengths;
    };
    std::vector<Cells> m_columns;
    std::size_t m_size = 0;
};
