#pragma once

#include "records/TableTypes.h"
#include "session/RowPath.h"

#include <vector>

/// When a field can be changed: while a column has one of the values, or none of them. Always where no column
/// is named.
struct FormCondition {
    RowPath via = {}; ///< from the record that the field edits to the one that decides
    int column = 0;
    std::vector<int> values = {};
    bool isNoneOf = false;
};

/// One field of a form.
struct FormField {
    int column = 0;
    RowPath via = {}; ///< from the group's record to the one that the field edits
    FormCondition live = {};
    bool decidesPages = false; ///< the value says which pages serve the record
    bool isLabel = false;      ///< a text as the label designer encodes it, alone in its frame
    bool isPictured = false;   ///< values that are chosen on pictures, alone in their frame
};

enum class eFormSide : std::uint8_t { kLeft, kRight, kBelow };

/// Fields in a frame.
struct FormGroup {
    int caption = 0; ///< prompt of the frame, "DSM"; 0: what rows of a table are called, or the label
    std::vector<FormField> fields;
    RowPath via = {}; ///< from the page's record, or from the selected part, to the one that the fields edit
    eFormSide side = eFormSide::kLeft;
    eTableType named = kNoTable; ///< the table that gives the caption; `kNoTable`: that of the edited record
    eTableType of = kNoTable;    ///< the group is only for items with records of this table
    eTableType part = kNoTable;  ///< the group begins at the selected row of the page's list of these parts
};

/// A page that consists of a form, and of the lists of what is part of its record.
struct FormTable {
    int templateId;
    int pageCode;
    int title;        ///< prompt of the tab, "UPS"
    eTableType table; ///< of the page's records; a group can be for items with records of another one
    std::vector<FormGroup> groups;
};
