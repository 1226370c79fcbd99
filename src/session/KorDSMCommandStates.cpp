#include "session/KorDSMCommandStates.h"

#include "operations/KorOdbcMan.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"

#include <algorithm>

using namespace KorDSMDefines;

SelectionFacts selectionFactsOf(KorDSMDatabaseItem& item, bool entryHasChildren) {
    SelectionFacts facts;
    facts.type = item.type();
    if (item.parent())
        facts.parentType = item.parent()->type();
    facts.entryHasChildren = entryHasChildren || !item.children().isEmpty();
    facts.insideDetailStyle = item.ancestor(kDetailStyle) != nullptr;
    const KorDsmSectionItem* section = KorDSMItemPath::sectionOf(item);
    facts.standardHasOneChild =
        section && !section->children().isEmpty() && section->children()[0]->children().length() == 1;
    facts.ownerMode = KorOdbcMan::isCurrentOwnerVEL();
    facts.inUserDatabase = KorDSMItemSource::sourceOf(&item) == SourceId::user();
    return facts;
}

// What cannot be changed can still be used and exported.
CommandStates commandStates(const SelectionFacts& facts) {
    const bool isReadOnly = facts.type && !facts.ownerMode && !facts.inUserDatabase;
    CommandStates states;
    for (const ItemCommandRow& row : kItemCommandRows)
        states.enabled[static_cast<std::size_t>(row.command)] =
            row.isEnabled(facts) && !(row.is(ItemCommandRow::kChangesSource) && isReadOnly);
    return states;
}

CommandStates commandStates(const std::vector<SelectionFacts>& selected) {
    if (selected.size() < 2)
        return commandStates(selected.empty() ? SelectionFacts() : selected.front());
    CommandStates states;
    states.enabled.fill(true);
    for (const SelectionFacts& facts : selected) {
        const CommandStates ofOne = commandStates(facts);
        for (const ItemCommandRow& row : kItemCommandRows)
            states.enabled[static_cast<std::size_t>(row.command)] &=
                row.is(ItemCommandRow::kForSeveral) && ofOne[row.command];
    }
    return states;
}
