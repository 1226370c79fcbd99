#include "session/KorDSMCommandStates.h"

#include <algorithm>
#include <initializer_list>

using namespace KorDSMDefines;

namespace {

void set(CommandStates& states, std::initializer_list<int> buttons, bool on) {
    for (const int button : buttons)
        states.enabled[static_cast<std::size_t>(button)] = on;
}

void enableForGroup(CommandStates& states, const SelectionFacts& facts) {
    set(states, {0, 2}, true);
    states.enabled[5] = !facts.entryHasChildren;
    states.enabled[7] = facts.type == kDetailStyleCategory;
}

void enableForFiledRecord(CommandStates& states, const SelectionFacts& facts) {
    const bool filed = facts.parentType == kAnnotationGroup || facts.parentType == kDimRequestGroup ||
                       facts.parentType == kQualifierSetGroup || facts.parentType == kPointSelection;
    if (filed)
        set(states, {0, 3, 4, 5}, true);
    else
        set(states, {1, 7}, true);
}

void enableByType(CommandStates& states, const SelectionFacts& facts) {
    switch (*facts.type) {
    case kDatabaseContent:
        states.enabled[7] = true;
        states.enabled[2] = facts.standardHasOneChild;
        break;
    case kAddInContent:
        set(states, {2, 7}, true);
        break;
    case kDetailStyle:
        set(states, {0, 1, 3, 4, 5, 6, 7}, true);
        break;
    case kDetailStyleCategory:
    case kAnnotationGroup:
    case kDimRequestGroup:
    case kQualifierSetGroup:
        enableForGroup(states, facts);
        break;
    case kDetailStylesSection:
    case kAnnotationsSection:
    case kDimRequestsSection:
    case kQualifiersSection:
        states.enabled[2] = true;
        states.enabled[7] = facts.type == kDetailStylesSection;
        break;
    case kAnnotationStrategy:
    case kDimRequest:
    case kQualifierSet:
        enableForFiledRecord(states, facts);
        break;
    default:
        set(states, {1, 7}, facts.insideDetailStyle);
        break;
    }
}

} // namespace

CommandStates commandStates(const SelectionFacts& facts) {
    CommandStates states;
    set(states, {8, 9}, true);
    if (!facts.type)
        return states;
    enableByType(states, facts);
    // What cannot be changed can still be used and exported.
    if (!facts.ownerMode && !facts.inUserDatabase)
        set(states, {0, 2, 3, 5, 7, 8}, false);
    return states;
}

CommandStates commandStates(const std::vector<SelectionFacts>& selected) {
    if (selected.size() < 2)
        return commandStates(selected.empty() ? SelectionFacts() : selected.front());
    CommandStates states;
    set(states, {9}, true);
    states.enabled[5] = std::ranges::all_of(
        selected, [](const SelectionFacts& facts) { return commandStates(facts)[eItemCommand::kDelete]; });
    return states;
}
