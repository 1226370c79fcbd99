#pragma once

#include "records/TableTypes.h"

#include <span>
#include <string_view>

/// A column of a record that a style reaches and that changes no drawing of it, and why.
struct NotShownColumn {
    eTableType table;
    std::string_view column;
    const char* reason; ///< goes on after "not shown, because"; to be translated where it is used
};

/// All of them. Names, and descriptions for users, are in no drawing and not in the list.
std::span<const NotShownColumn> notShownColumns();
