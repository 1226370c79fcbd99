#pragma once

#include "session/KorDSMPartList.h"

#include <memory>
#include <vector>

/// What the rows and columns of the grid of an edited list stand for.
struct PartListRows {
    std::unique_ptr<KorDSMEditedList> list; ///< null until one is shown; what is asked below needs one
    std::vector<const Column*> columns;     ///< as the grid has them, without those behind the list's own
    KorDSMEditedList::Keys keys;            ///< of the rows, from the top down

    /// The columns of a list: with the name in front where users know the rows by it.
    std::vector<const Column*> columnsToShow() const;
    /// What the grid shows in this column; null behind the list's own.
    const Column* columnAt(int place) const;
    /// Whether it is only shown.
    bool isDetail(const Column& column) const;
    /// The word for the column, with its unit.
    KorString captionOf(const Column& column) const;

    std::int32_t keyAt(int row) const { return keys[static_cast<std::size_t>(row)]; }
    /// Those of these rows that the list has: while rows are taken away the grid has more of them.
    KorDSMEditedList::Keys keysAt(const std::vector<int>& rows) const;
    /// The row that a cell refers to, or 0.
    std::int32_t referenceAt(int row, const Column& column) const;
    /// A row's cells as texts; of a flag "1" or "0".
    std::vector<KorString> textsOf(std::int32_t key) const;
};
