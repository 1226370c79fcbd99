#pragma once

#include "data/check/ConsistencyCheck.h"

/// Texts of labels that are drawn otherwise than they seem to be meant. Texts in braces may be meant, so
/// these are no faults.
namespace LabelDoubts {

/// Why braces in a text of this column are drawn as they stand, in one or two sentences; empty where they are
/// not, and for columns that hold no label.
KorString of(const TableSchema& table, const Column& column, const KorString& text);

/// The same of all labels of a source, as notes. What was not read yet is read.
std::vector<Finding> in(StyleSource& source);

} // namespace LabelDoubts
