#pragma once

#include "controls/KorMFCGridCtrl.h"
#include "pages/SelectionFills.h"
#include "records/TableSchema.h"

#include <QIcon>

#include <optional>
#include <vector>

/// What the columns of a list that is edited where it stands look like, and what their cells offer.
namespace PartListColumns {

/// What stands above the list of these parts.
KorString headOf(eTableType parts);
/// The kind of cell for the values of a column.
KorMFCGridCtrl::EKind kindOf(const Column& column);
/// The tree of groups from which the rows that a column refers to are chosen; none where they are not filed.
std::optional<SelectionFills::eFill> treeFor(const Column& column);

/// What a cell offers in a plain list, each with its picture, which can be null.
struct Choices {
    std::vector<KorString> names;
    std::vector<QIcon> pictures;
};
/// The choices of a column of `table` that is chosen and has no tree.
Choices choicesOf(const TableSchema& table, const Column& column);

} // namespace PartListColumns
