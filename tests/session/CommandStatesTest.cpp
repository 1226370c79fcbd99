#include "session/KorDSMCommandStates.h"

#include <gtest/gtest.h>

using namespace KorDSMDefines;

namespace {

struct Case {
    const char* selection;
    SelectionFacts facts;
    std::string enabled; ///< indexes of the buttons that are on, in ascending order
};

std::string enabled(const SelectionFacts& facts) {
    std::string buttons;
    const CommandStates states = commandStates(facts);
    for (std::size_t i = 0; i < states.enabled.size(); ++i)
        if (states.enabled[i])
            buttons += std::to_string(i);
    return buttons;
}

SelectionFacts of(eItemType type, eItemType parent = kNoType) {
    SelectionFacts facts;
    facts.type = type;
    facts.parentType = parent;
    facts.inUserDatabase = true;
    return facts;
}

SelectionFacts with(SelectionFacts facts, bool SelectionFacts::*fact, bool value = true) {
    facts.*fact = value;
    return facts;
}

} // namespace

TEST(CommandStates, FollowTheSelection) {
    const SelectionFacts nested = of(kQualifierSet, kReprMap);
    const Case cases[] = {
        {"nothing", {}, "89"},
        {"database", of(kDatabaseContent), "789"},
        {"database without add-ins", with(of(kDatabaseContent), &SelectionFacts::standardHasOneChild),
         "2789"},
        {"add-in", of(kAddInContent), "2789"},
        {"detail style", of(kDetailStyle), "013456789"},
        {"empty category", of(kDetailStyleCategory), "025789"},
        {"full category", with(of(kDetailStyleCategory), &SelectionFacts::entryHasChildren), "02789"},
        {"empty annotation group", of(kAnnotationGroup), "02589"},
        {"empty dimension request group", of(kDimRequestGroup), "02589"},
        {"full qualifier set group", with(of(kQualifierSetGroup), &SelectionFacts::entryHasChildren), "0289"},
        {"detail styles", of(kDetailStylesSection), "2789"},
        {"qualifier sets", of(kQualifiersSection), "289"},
        {"annotations", of(kAnnotationsSection), "289"},
        {"dimension requests", of(kDimRequestsSection), "289"},
        {"filed annotation", of(kAnnotationStrategy, kAnnotationGroup), "034589"},
        {"filed request", of(kDimRequest, kDimRequestGroup), "034589"},
        {"filed set", of(kQualifierSet, kQualifierSetGroup), "034589"},
        {"set of a point selection", of(kQualifierSet, kPointSelection), "034589"},
        {"set of a map entry", nested, "1789"},
        {"view outside a style", of(kViewRequest), "89"},
        {"view of a style", with(of(kViewRequest), &SelectionFacts::insideDetailStyle), "1789"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(enabled(row.facts), row.enabled) << row.selection;
}

TEST(CommandStates, WhatIsReadOnlyCanBeUsedAndExported) {
    const SelectionFacts style = with(of(kDetailStyle), &SelectionFacts::inUserDatabase, false);
    EXPECT_EQ(enabled(style), "1469");
    EXPECT_EQ(enabled(with(style, &SelectionFacts::ownerMode)), "013456789");
    const SelectionFacts filed =
        with(of(kQualifierSet, kQualifierSetGroup), &SelectionFacts::inUserDatabase, false);
    EXPECT_EQ(enabled(filed), "49");
    EXPECT_EQ(enabled({}), "89") << "without a selection there is no owner to ask";
}
