#pragma once

#include "records/TableSchema.h"

#include <span>
#include <string_view>

/// A column of a record that a style reaches and that changes no drawing of it, and why.
struct NotShownColumn {
    eTableType table;
    std::string_view column;
    const char* reason; ///< goes on after "not shown, because"; to be translated where it is used
};

/// All of them. What only the editor's own lists show is not among them.
std::span<const NotShownColumn> notShownColumns();

/// Why a column is for the editor's lists alone, whatever record it is of: names, descriptions, where
/// something is filed, and the pictures of lists. A sentence to be translated; null for a column that says
/// something about drawings.
const char* whyForListsAlone(const TableSchema& table, const Column& column);
