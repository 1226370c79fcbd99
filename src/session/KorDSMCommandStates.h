#pragma once

#include "model/KorDSMDefines.h"

#include <array>
#include <optional>
#include <vector>

/// The ten commands of the item command strip, in the order of their buttons.
enum class eItemCommand : int {
    kNew = 0,
    kUse = 1,
    kDeepCopy = 2,
    kCopy = 3,
    kRename = 4,
    kDelete = 5,
    kExport = 6,
    kImport = 7,
    kDimensionSettings = 8,
    kHelp = 9,
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

/// Which commands are enabled, by button index.
struct CommandStates {
    std::array<bool, kNumberOfItemCommands> enabled{};

    bool operator[](eItemCommand command) const { return enabled[static_cast<std::size_t>(command)]; }
};

/// The command states for a selection. Nothing else decides them.
CommandStates commandStates(const SelectionFacts& facts);
/// Those for several selected entries: deleting, where each can be deleted, and help. Of one entry as above.
CommandStates commandStates(const std::vector<SelectionFacts>& selected);
