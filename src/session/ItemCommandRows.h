#pragma once

#include "model/KorDSMFamilies.h"

#include <iterator>
#include <optional>

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

/// When commands are enabled, for one selected entry.
namespace ItemCommandRules {

using Facts = const SelectionFacts&;

inline bool isGroup(Facts facts) {
    return facts.type && KorDSMDefines::isGroupType(*facts.type);
}

inline bool isSection(Facts facts) {
    return facts.type && KorDSMDefines::isSectionType(*facts.type);
}

inline const KorDSMFamily* familyOf(Facts facts) {
    return facts.type ? KorDSMFamilies::of(*facts.type) : nullptr;
}

// Can be exported and imported on its own.
inline bool isExchanged(Facts facts) {
    const KorDSMFamily* family = familyOf(facts);
    return family && family->isExchanged;
}

// Is filed in a group, to be used by other records.
inline bool isShared(Facts facts) {
    const KorDSMFamily* family = familyOf(facts);
    return family && family->isFiled() && !family->isExchanged;
}

// Styles, and records that are shown where they are filed: not those that another record only uses.
inline bool isDefinition(Facts facts) {
    return isExchanged(facts) || (isShared(facts) && (facts.parentType == familyOf(facts)->group ||
                                                      facts.parentType == KorDSMDefines::kPointSelection));
}

// What a style consists of, and the style itself.
inline bool isOfStyle(Facts facts) {
    if (!facts.type || facts.type == KorDSMDefines::kDatabaseContent ||
        facts.type == KorDSMDefines::kAddInContent || isGroup(facts) || isSection(facts))
        return false;
    return isExchanged(facts) || (isShared(facts) ? !isDefinition(facts) : facts.insideDetailStyle);
}

inline bool canMakeNew(Facts facts) {
    return isDefinition(facts) || isGroup(facts);
}

inline bool canDeepCopy(Facts facts) {
    return facts.type == KorDSMDefines::kAddInContent || isGroup(facts) || isSection(facts) ||
           (facts.type == KorDSMDefines::kDatabaseContent && facts.standardHasOneChild);
}

inline bool canDelete(Facts facts) {
    return isDefinition(facts) || (isGroup(facts) && !facts.entryHasChildren);
}

// A group or section of what is exchanged.
inline bool holdsExchanged(Facts facts) {
    const KorDSMFamily* filed = isGroup(facts) ? KorDSMFamilies::filedUnder(*familyOf(facts)) : nullptr;
    if (isSection(facts))
        filed = KorDSMFamilies::of(KorDSMFamilies::sectionOfType(*facts.type)->family);
    return filed && filed->isExchanged;
}

// A style, or a category with what is in it.
inline bool canExport(Facts facts) {
    return isExchanged(facts) || (isGroup(facts) && holdsExchanged(facts) && facts.entryHasChildren);
}

inline bool canImport(Facts facts) {
    return facts.type == KorDSMDefines::kDatabaseContent || facts.type == KorDSMDefines::kAddInContent ||
           holdsExchanged(facts) || isOfStyle(facts);
}

inline bool always(Facts) {
    return true;
}

} // namespace ItemCommandRules

/// One command: what its button, key and menu entry look like, and when it is enabled.
struct ItemCommandRow {
    enum eTrait : unsigned {
        kChangesSource = 1, ///< only in a source that may be changed
        kForSeveral = 2,    ///< also for several entries, where it is enabled for each
    };

    eItemCommand command;
    int button;                               ///< number of its button, by which it is known to hosts
    int bitmap;                               ///< picture
    int prompt;                               ///< "UPS": tooltip and text in menus
    const char* key;                          ///< the usual one of the command; empty for none
    bool (*isEnabled)(const SelectionFacts&); ///< for one selected entry; the source is judged apart
    unsigned traits = 0;                      ///< of `eTrait`

    constexpr bool is(eTrait trait) const { return (traits & trait) != 0; }
};

/// All commands, in the order of the enumeration. Strip, keys, menus and states come from these rows.
inline constexpr ItemCommandRow kItemCommandRows[] = {
    {eItemCommand::kNew, 1029, 1044, 33558, "Ctrl+N", ItemCommandRules::canMakeNew,
     ItemCommandRow::kChangesSource},
    {eItemCommand::kUse, 1030, 1045, 33559, "", ItemCommandRules::isOfStyle},
    {eItemCommand::kDeepCopy, 1032, 1046, 33555, "", ItemCommandRules::canDeepCopy,
     ItemCommandRow::kChangesSource},
    {eItemCommand::kCopy, 1033, 1043, 33560, "Ctrl+D", ItemCommandRules::isDefinition,
     ItemCommandRow::kChangesSource | ItemCommandRow::kForSeveral},
    {eItemCommand::kRename, 1034, 1047, 33561, "F2", ItemCommandRules::isDefinition},
    {eItemCommand::kDelete, 1035, 1048, 33562, "", ItemCommandRules::canDelete,
     ItemCommandRow::kChangesSource | ItemCommandRow::kForSeveral},
    {eItemCommand::kExport, 1037, 1051, 33563, "Ctrl+E", ItemCommandRules::canExport,
     ItemCommandRow::kForSeveral},
    {eItemCommand::kImport, 1039, 1052, 33564, "Ctrl+I", ItemCommandRules::canImport,
     ItemCommandRow::kChangesSource},
    {eItemCommand::kDimensionSettings, 1038, 1049, 33565, "", ItemCommandRules::always,
     ItemCommandRow::kChangesSource},
    {eItemCommand::kHelp, 1036, 1050, 33746, "", ItemCommandRules::always, ItemCommandRow::kForSeveral},
};
inline constexpr int kNumberOfItemCommands = static_cast<int>(std::size(kItemCommandRows));

constexpr const ItemCommandRow& rowOf(eItemCommand command) {
    return kItemCommandRows[static_cast<std::size_t>(command)];
}

constexpr bool itemCommandsStandInOrder() {
    for (std::size_t i = 0; i < std::size(kItemCommandRows); ++i)
        if (kItemCommandRows[i].command != static_cast<eItemCommand>(i))
            return false;
    return true;
}
static_assert(itemCommandsStandInOrder());
