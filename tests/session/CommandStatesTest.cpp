#include "session/KorDSMCommandStates.h"
#include "session/SampleSession.h"

#include <algorithm>

using namespace KorDSMDefines;

namespace {

struct Case {
    const char* selection;
    SelectionFacts facts;
    std::string enabled; ///< indexes of the buttons that are on, in ascending order
};

std::string buttonsOf(const CommandStates& states) {
    std::string buttons;
    for (std::size_t i = 0; i < states.enabled.size(); ++i)
        if (states.enabled[i])
            buttons += std::to_string(i);
    return buttons;
}

std::string enabled(const SelectionFacts& facts) {
    return buttonsOf(commandStates(facts));
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
        {"full category", with(of(kDetailStyleCategory), &SelectionFacts::entryHasChildren), "026789"},
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
    for (const Case& row : cases) {
        EXPECT_EQ(enabled(row.facts), row.enabled) << row.selection;
        const SelectionFacts readOnly = with(row.facts, &SelectionFacts::inUserDatabase, false);
        std::string left = row.enabled;
        if (row.facts.type)
            std::erase_if(
                left, [](char button) { return std::string("023578").find(button) != std::string::npos; });
        EXPECT_EQ(enabled(readOnly), left) << row.selection;
        EXPECT_EQ(enabled(with(readOnly, &SelectionFacts::ownerMode)), row.enabled) << row.selection;
    }
}

TEST(CommandStates, OfATypeDependOnNothingElse) {
    const auto everywhere = [](eItemType type, const std::string& expected,
                               std::initializer_list<bool SelectionFacts::*> facts,
                               std::initializer_list<eItemType> exceptBelow = {}) {
        for (int parent = kDatabaseContent; parent <= kNoType; ++parent) {
            if (std::ranges::find(exceptBelow, parent) != exceptBelow.end())
                continue;
            SelectionFacts selected = of(type, static_cast<eItemType>(parent));
            EXPECT_EQ(enabled(selected), expected) << type << " below " << parent;
            for (const auto fact : facts)
                selected.*fact = true;
            EXPECT_EQ(enabled(selected), expected) << type << " below " << parent;
        }
    };
    using Facts = SelectionFacts;
    everywhere(kAddInContent, "2789", {&Facts::standardHasOneChild, &Facts::entryHasChildren});
    everywhere(kDetailStyle, "013456789", {&Facts::entryHasChildren, &Facts::insideDetailStyle});
    everywhere(kQualifiersSection, "289", {&Facts::standardHasOneChild, &Facts::entryHasChildren});
    for (const eItemType type : {kAnnotationStrategy, kDimRequest, kQualifierSet})
        everywhere(type, "1789", {&Facts::entryHasChildren, &Facts::insideDetailStyle},
                   {kAnnotationGroup, kDimRequestGroup, kQualifierSetGroup, kPointSelection});
    for (const eItemType type : {kViewRequest, kSystemAndBox, kReprMapRule, kViewDimensioning, kReprMap,
                                 kAppearance, kAnnotationArrangement, kPointSelection})
        everywhere(type, "89", {&Facts::entryHasChildren, &Facts::standardHasOneChild});
}

TEST(CommandStates, OfSeveralAreHelpAndWhatCanBeDoneWithEach) {
    const SelectionFacts style = of(kDetailStyle);
    const SelectionFacts full = with(of(kDetailStyleCategory), &SelectionFacts::entryHasChildren);
    EXPECT_EQ(buttonsOf(commandStates({style, style})), "3569");
    EXPECT_EQ(buttonsOf(commandStates({style, full})), "69");
    EXPECT_EQ(buttonsOf(commandStates(std::vector{full})), enabled(full));
    EXPECT_EQ(buttonsOf(commandStates(std::vector<SelectionFacts>())), "89");
}

namespace {

/// The facts of items as they lie in the sections.
class ItemFacts : public SampleSession {};

} // namespace

TEST_F(ItemFacts, SayWhereAnItemLiesAndWhatLiesBelowIt) {
    KorDSMDatabaseItem& post = item<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    const SelectionFacts view = selectionFactsOf(*post.children()[0], false);
    EXPECT_EQ(view.type, kViewRequest);
    EXPECT_EQ(view.parentType, kDetailStyle);
    EXPECT_TRUE(view.insideDetailStyle && view.inUserDatabase && view.standardHasOneChild);
    EXPECT_FALSE(view.ownerMode || view.entryHasChildren);
    EXPECT_TRUE(selectionFactsOf(*post.children()[0], true).entryHasChildren) << "it could be opened";
    KorDSMDatabaseItem& category = *post.parent();
    EXPECT_FALSE(selectionFactsOf(category, false).insideDetailStyle);
    EXPECT_FALSE(commandStates(selectionFactsOf(category, false))[eItemCommand::kDelete]) << "it is full";

    KorDSMDatabaseItem& foreign = *structure.getSection(kViewDetailStyles)->children()[0]->children()[0];
    EXPECT_FALSE(selectionFactsOf(foreign, false).inUserDatabase);
    EXPECT_FALSE(commandStates(selectionFactsOf(foreign, false))[eItemCommand::kImport]);
    databases.setOwnerMode(true);
    EXPECT_TRUE(commandStates(selectionFactsOf(foreign, false))[eItemCommand::kImport]);
    installAddIns({"bridges"});
    KorDsmSectionItem& section = *structure.getSection(kViewDetailStyles);
    EXPECT_FALSE(selectionFactsOf(section, false).standardHasOneChild);
}
