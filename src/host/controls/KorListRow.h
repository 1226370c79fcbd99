#pragma once

#include "base/KorString.h"
#include "controls/KorEntryData.h"

#include <vector>

/// One row of a list: the texts of its columns, an icon for the first, the caller's data.
struct KorListRow {
    std::vector<KorString> texts;
    int image = -1; ///< Index in the image list, -1 for none.
    KorEntryData data = {};
    bool checked = false; ///< Whether the row's check box is checked, in a list that has them.
};
