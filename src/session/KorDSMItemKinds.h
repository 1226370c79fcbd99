#pragma once

#include "model/items/KorDSMDatabaseItem.h"
#include "records/KorOdbcKey.h"
#include "records/TableSchema.h"

#include <vector>

/// What the item commands do with one type of item. Types without a row are neither copied, deleted nor
/// moved.
struct KorDSMItemKind {
    KorDSMDefines::eItemType type;
    KorDSMDefines::eItemType group = KorDSMDefines::kNoType; ///< where it is filed; `kNoType`: nowhere
    /// Appends the record under this name as a new row and gives it the new row's key; a write result. Null:
    /// not copied.
    int (*append)(KorDSMDatabaseItem& item, const KorString& name) = nullptr;
    /// Whether another record refers to the row; null: that does not matter for deleting it.
    bool (*isUsed)(const KorOdbcKey& key) = nullptr;
    /// Codes of the pages that list such records.
    std::vector<int> listedBy;
};

/// The kind, or null.
const KorDSMItemKind* findItemKind(KorDSMDefines::eItemType type);

/// The column with which rows of this table are filed under a group or category, or null.
const Column* filingColumn(eTableType table);
