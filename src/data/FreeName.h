#pragma once

#include "data/StyleSource.h"

/// A run name that no row of the table has: `wanted` itself, or `wanted` with the first free number behind
/// it. Where `wanted` is such a numbered name of an existing row, its own number is counted on ("Beam 1"
/// becomes "Beam 2" when there is a "Beam"). Without a name the table's own word for its rows is numbered.
KorString freeName(StyleSource& source, eTableType table, const KorString& wanted);

/// What stands in front of a blank and the number at the end of a name; empty for a name without such a
/// number.
KorString nameWithoutNumber(const KorString& name);
