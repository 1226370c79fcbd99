#pragma once

#include "model/items/KorDSMDatabaseItem.h"
#include "session/ItemCommandRows.h"

#include <array>
#include <vector>

/// The facts about an item of the data structure; `entryHasChildren` is what its entry knows beside the item:
/// that it could be opened.
SelectionFacts selectionFactsOf(KorDSMDatabaseItem& item, bool entryHasChildren);

/// Which commands are enabled, in their order.
struct CommandStates {
    std::array<bool, kNumberOfItemCommands> enabled{};

    bool operator[](eItemCommand command) const { return enabled[static_cast<std::size_t>(command)]; }
};

/// The command states for a selection. Nothing else decides them.
CommandStates commandStates(const SelectionFacts& facts);
/// Those for several selected entries: what is for several, where each allows it. Of one entry as above.
CommandStates commandStates(const std::vector<SelectionFacts>& selected);
