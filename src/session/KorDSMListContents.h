#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <vector>

/// What the list at the right shows for a node without pages: its children, with what is worth knowing of
/// each.
struct KorDSMListContents {
    struct Row {
        std::vector<KorString> texts; ///< one per column
        int icon = -1;
        KorDSMDatabaseItem* item = nullptr;
    };

    std::vector<KorString> titles;
    std::vector<bool> numeric; ///< per column
    std::vector<Row> rows;
    KorString whenEmpty; ///< of a list without rows: what to do first; empty where nothing can be done

    /// The contents for `item`; its children must have been loaded. A database with a
    /// single content node lists what is in that.
    static KorDSMListContents of(const KorDSMDatabaseItem& item);
};
