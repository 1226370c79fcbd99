#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

/// The commands of the item command strip, in the order of their buttons.
enum class eItemCommand : int {
    kNew,
    kUse,
    kDeepCopy,
    kCopy,
    kRename,
    kDelete,
    kExport,
    kImport,
    kDimensionSettings,
    kHelp,
};
inline constexpr int kNumberOfItemCommands = 10;

/// What the command states depend on: facts about the selected entry and the session.
struct SelectionFacts {
    std::optional<KorDSMDefines::eItemType> type; ///< none: nothing is selected
    KorDSMDefines::eItemType parentType = KorDSMDefines::kNoType;
    bool entryHasChildren = false;
    bool insideDetailStyle = false;   ///< an ancestor entry is a detail style
    bool standardHasOneChild = false; ///< the Standard database node has exactly one child
    bool ownerMode = false;           ///< a maker's installation
    bool inUserDatabase = false;      ///< the item's database or add-in node is the User database
};

/// The facts about an item of the data structure; `entryHasChildren` is what its entry knows beside the item:
/// that it could be opened.
SelectionFacts selectionFactsOf(KorDSMDatabaseItem& item, bool entryHasChildren);

/// One command: what its button, key and menu entry look like, and when it is enabled.
struct ItemCommandRow {
    eItemCommand command;
    int button;                               ///< number of its button, by which it is known to hosts
    int bitmap;                               ///< picture
    int prompt;                               ///< "UPS": tooltip and text in menus
    const char* key;                          ///< the usual one of the command; empty for none
    bool (*isEnabled)(const SelectionFacts&); ///< for one selected entry; the source is judged apart
    bool changesSource = false;               ///< only in a source that may be changed
    bool isForSeveral = false;                ///< also for several entries, where it is enabled for each
    bool isOffered = true;                    ///< has something behind it
};

/// All commands. Strip, keys, menus and states come from these rows.
std::span<const ItemCommandRow, kNumberOfItemCommands> itemCommandRows();
inline const ItemCommandRow& rowOf(eItemCommand command) {
    return itemCommandRows()[static_cast<std::size_t>(command)];
}

/// Which commands are enabled, in their order.
struct CommandStates {
    std::array<bool, kNumberOfItemCommands> enabled{};

    bool operator[](eItemCommand command) const { return enabled[static_cast<std::size_t>(command)]; }
};

/// The command states for a selection. Nothing else decides them.
CommandStates commandStates(const SelectionFacts& facts);
/// Those for several selected entries: what is for several, where each allows it. Of one entry as above.
CommandStates commandStates(const std::vector<SelectionFacts>& selected);
