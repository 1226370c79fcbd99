#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <functional>
#include <optional>

/// What the status bar says of an item whose tree entry has this text; empty where it says nothing.
KorString statusTextOf(const KorDSMDatabaseItem& item, const KorString& entryText);

/// As what the record above an item uses it, where it can use several of the kind: the start, inner or end
/// points of a dimension request. Empty for other items.
KorString roleOf(const KorDSMDatabaseItem& item);

/// What a dialog shows that asks for the name of a record.
struct KorDSMNaming {
    KorString title;
    KorString label; ///< what the name is a name of
    KorString name;  ///< where the user starts
    /// Whether the name is taken in the current source.
    std::function<bool(const KorString&)> isTaken = [](const KorString&) { return false; };

    /// For an item type, which is a `KorDSMDefines::eItemType`; nothing where such items are not named. With
    /// `proposeName` the name is a free one made from `initialName` (from what such records are called when
    /// that is empty), where the family has one; otherwise it is `initialName` as it is.
    static std::optional<KorDSMNaming> of(int itemType, const KorString& initialName, bool proposeName);
};

/// What a dialog shows that asks for the name of a record and for the group in which it is filed.
struct KorDSMFiledNaming : KorDSMNaming {
    struct Group {
        KorString name;
        int key = 0;
    };

    KorString groupLabel;
    int groupPicture = 0;      ///< number of the icon beside each group
    std::vector<Group> groups; ///< of the current source, in the order in which they are offered

    /// For an item type; nothing where such items are not filed. The name is a free one made from
    /// `initialName`.
    static std::optional<KorDSMFiledNaming> of(int itemType, const KorString& initialName);
};
