#include "session/KorDSMItemContent.h"
#include "session/KorDSMNameSearch.h"
#include "session/SampleSession.h"

using namespace KorDSMDefines;

namespace {

class NameSearch : public SampleSession {
protected:
    std::vector<std::string> find(eViewSections section, const char* text) {
        std::vector<std::string> names;
        const int count = search.find(*structure.getSection(section), text);
        for (const KorDSMDatabaseItem* found : search.first(count))
            names.push_back(found->getDisplayName().toStdString());
        EXPECT_EQ(static_cast<int>(names.size()), count);
        return names;
    }

    KorDSMNameSearch search;
};

} // namespace

TEST_F(NameSearch, FindsWhatHasTheTextAndLetsPassWhatLiesAboveAndBelow) {
    auto& style = item<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    auto& railings = item<StructDetBaseCategory>(SourceId::user(), "Hallberg: railings");
    EXPECT_TRUE(search.passes(railings));
    EXPECT_EQ(find(kViewDetailStyles, " hb POST 1:15 "), std::vector<std::string>{"HB post 1:15"});
    EXPECT_EQ(search.first(1), std::vector<KorDSMDatabaseItem*>{&style});
    EXPECT_TRUE(search.passes(style));
    EXPECT_TRUE(search.passes(*style.parent()));
    EXPECT_TRUE(search.passes(*style.children()[0]));
    EXPECT_FALSE(search.passes(railings));
    EXPECT_TRUE(find(kViewDetailStyles, "no such name").empty());
    EXPECT_TRUE(search.first(1).empty());
    EXPECT_FALSE(search.passes(style));
    search.clear();
    EXPECT_TRUE(search.passes(railings));
}

TEST_F(NameSearch, ReadsWhatWasNotOpenedAndFollowsNewNames) {
    KorDsmAddInContentItem& content =
        *KorDSMItemPath::findAddIn(*structure.getSection(kViewQualifiers), SourceId::user());
    EXPECT_TRUE(KorDSMItemContent::canBeOpened(content, false));
    ASSERT_FALSE(find(kViewQualifiers, "").empty());
    EXPECT_TRUE(content.isExpanded());
    KorDSMDatabaseItem& set = *content.children()[0]->children()[0];
    set.setName("Quite another name");
    EXPECT_TRUE(find(kViewQualifiers, "quite another").empty());
    search.namesChanged();
    EXPECT_EQ(find(kViewQualifiers, "quite another"), std::vector<std::string>{"Quite another name"});
}

TEST_F(NameSearch, WhatARecordDependsOnOpensInTurnOnlyWithFullExpansion) {
    KorDSMDatabaseItem& view = *item<StructDetailStyle>(SourceId::user(), "HB post 1:15").children()[0];
    EXPECT_TRUE(KorDSMItemContent::canBeOpened(view, false));
    for (KorDSMDatabaseItem* part : expand(view)) {
        const bool hasMore = KorDSMItemContent::canBeOpened(*part, true);
        EXPECT_EQ(hasMore, KorDSMDependencies::canHaveDependents(part->type()));
        EXPECT_FALSE(KorDSMItemContent::canBeOpened(*part, false));
    }
}

TEST_F(NameSearch, OpeningAStyleShowsItsViewsAsTheyAreNow) {
    KorDSMDatabaseItem& style = item<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    databases.setCurrentSource(SourceId::user());
    ASSERT_EQ(
        databases.setCell(kTableViewRequest, KorOdbcKey(style.children()[0]->recordKey()), 1, "Quay front"),
        WriteResult::kWritten);
    KorDSMItemContent::loadChildren(style);
    EXPECT_EQ(style.children()[0]->getDisplayName(), "Quay front");
}
