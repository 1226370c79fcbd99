#include "session/KorDSMCommandStates.h"

#include "operations/KorOdbcMan.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"

#include <algorithm>

using namespace KorDSMDefines;

namespace {

using Facts = const SelectionFacts&;

bool isGroup(Facts facts) {
    return facts.type && isGroupType(*facts.type);
}

bool isSection(Facts facts) {
    return facts.type && isSectionType(*facts.type);
}

bool isFamilyRecord(Facts facts) {
    return facts.type == kAnnotationStrategy || facts.type == kDimRequest || facts.type == kQualifierSet;
}

// Styles, and records that are shown where they are filed: not those that another record only uses.
bool isDefinition(Facts facts) {
    const bool isFiled = facts.parentType == kAnnotationGroup || facts.parentType == kDimRequestGroup ||
                         facts.parentType == kQualifierSetGroup || facts.parentType == kPointSelection;
    return facts.type == kDetailStyle || (isFamilyRecord(facts) && isFiled);
}

// What a style consists of, and the style itself.
bool isOfStyle(Facts facts) {
    if (!facts.type || facts.type == kDatabaseContent || facts.type == kAddInContent || isGroup(facts) ||
        isSection(facts))
        return false;
    return facts.type == kDetailStyle ||
           (isFamilyRecord(facts) ? !isDefinition(facts) : facts.insideDetailStyle);
}

bool canMakeNew(Facts facts) {
    return isDefinition(facts) || isGroup(facts);
}

bool canDeepCopy(Facts facts) {
    return facts.type == kAddInContent || isGroup(facts) || isSection(facts) ||
           (facts.type == kDatabaseContent && facts.standardHasOneChild);
}

bool canDelete(Facts facts) {
    return isDefinition(facts) || (isGroup(facts) && !facts.entryHasChildren);
}

bool canExport(Facts facts) {
    return facts.type == kDetailStyle;
}

bool canImport(Facts facts) {
    return facts.type == kDatabaseContent || facts.type == kAddInContent ||
           facts.type == kDetailStyleCategory || facts.type == kDetailStylesSection || isOfStyle(facts);
}

bool always(Facts) {
    return true;
}

constexpr ItemCommandRow kRows[] = {
    {eItemCommand::kNew, 1029, 1044, 33558, "Ctrl+N", canMakeNew, true},
    {eItemCommand::kUse, 1030, 1045, 33559, "", isOfStyle},
    {eItemCommand::kDeepCopy, 1032, 1046, 33555, "", canDeepCopy, true, false, false},
    {eItemCommand::kCopy, 1033, 1043, 33560, "Ctrl+D", isDefinition, true},
    {eItemCommand::kRename, 1034, 1047, 33561, "F2", isDefinition},
    {eItemCommand::kDelete, 1035, 1048, 33562, "", canDelete, true, true},
    {eItemCommand::kExport, 1037, 1051, 33563, "Ctrl+E", canExport},
    {eItemCommand::kImport, 1039, 1052, 33564, "Ctrl+I", canImport, true},
    {eItemCommand::kDimensionSettings, 1038, 1049, 33565, "", always, true, false, false},
    {eItemCommand::kHelp, 1036, 1050, 33746, "", always, false, true},
};

constexpr bool standInOrder() {
    for (std::size_t i = 0; i < std::size(kRows); ++i)
        if (kRows[i].command != static_cast<eItemCommand>(i))
            return false;
    return std::size(kRows) == kNumberOfItemCommands;
}
static_assert(standInOrder(), "a row for each command, in the order of the enumeration");

} // namespace

std::span<const ItemCommandRow, kNumberOfItemCommands> itemCommandRows() {
    return kRows;
}

SelectionFacts selectionFactsOf(KorDSMDatabaseItem& item, bool entryHasChildren) {
    SelectionFacts facts;
    facts.type = item.m_Type;
    if (item.m_pParent)
        facts.parentType = item.m_pParent->m_Type;
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
    for (const ItemCommandRow& row : kRows)
        states.enabled[static_cast<std::size_t>(row.command)] =
            row.isEnabled(facts) && !(row.changesSource && isReadOnly);
    return states;
}

CommandStates commandStates(const std::vector<SelectionFacts>& selected) {
    if (selected.size() < 2)
        return commandStates(selected.empty() ? SelectionFacts() : selected.front());
    CommandStates states;
    states.enabled.fill(true);
    for (const SelectionFacts& facts : selected) {
        const CommandStates ofOne = commandStates(facts);
        for (const ItemCommandRow& row : kRows)
            states.enabled[static_cast<std::size_t>(row.command)] &= row.isForSeveral && ofOne[row.command];
    }
    return states;
}
