#pragma once

#include "records/TableTypes.h"

#include <cstdint>
#include <vector>

/// The pictures of a column's values: those of `first`, `first` + 1, ... in turn.
struct PicturedColumn {
    eTableType table;
    int column;
    std::int32_t first;
    std::vector<int> pictures; ///< numbers of bitmaps
};

/// By which of its columns a row is shown: the first one whose value has a picture.
struct ShownBy {
    eTableType table;
    std::vector<int> columns;
};

namespace ValuePictureTable {

/// In list size.
const std::vector<PicturedColumn>& small();
/// Those on which a value is chosen.
const std::vector<PicturedColumn>& large();
const std::vector<ShownBy>& rows();
/// Those among which users choose one for a category.
const std::vector<int>& ofCategories();

} // namespace ValuePictureTable
