#pragma once

#include "base/KorArray.h"
#include "base/KorString.h"
#include "records/TableTypes.h"

/// What the new item dialogs show for one type of item.
struct NewItemKind {
    int itemType = 0;
    int titlePrompt = 0;                                        ///< "UPS"; 0: that of the label
    int labelPrompt = 0;                                        ///< "UPS"; what the name is a name of
    int (*existingNames)(KorArray<KorString>& names) = nullptr; ///< of the current source
    eTableType defaultNameTable = kNoTable; ///< where a proposed name is free; `kNoTable`: none is proposed
};

/// The kind of an item type (`KorDSMDefines::eItemType`, or 8, 22 and 30 for records that are no items of
/// their own), or null when items of this type are not named.
const NewItemKind* findNewItemKind(int itemType);

/// A group into which new items go, as the dialog lists it.
struct NewItemGroup {
    KorString name;
    int key = 0;
};

/// What the dialog that also asks for a group shows beyond the kind.
struct NewItemGrouping {
    int itemType = 0;
    /// Differs from the kind's own table for dimension requests: those are proposed by the names of view
    /// dimensionings, where they are going to be used.
    eTableType defaultNameTable = kNoTable;
    bool byCategory = false; ///< filed under categories, not under groups
    /// Replaces `groups` by those of the current source, sorted as they are shown.
    void (*groups)(KorArray<NewItemGroup>& groups) = nullptr;
};

/// The grouping of an item type, or null when its items are not filed under groups.
const NewItemGrouping* findNewItemGrouping(int itemType);
