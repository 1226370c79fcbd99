#include "model/ModelFixture.h"

#include "data/KorODBCDetStyle.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorProgressCtrl.h"

using namespace KorDSMDefines;

namespace {

class Loading : public ModelFixture {
protected:
    void TearDown() override {
        KorProgressCtrl::install({});
        KorOdbcMan::m_DSMNewReloadInfo = 0;
        ModelFixture::TearDown();
    }
};

} // namespace

TEST_F(Loading, CategoriesComeByNameWithThoseThatNoStyleUses) {
    add<StructDetBaseCategory>(kUser, "Zinc");
    addStyle(kUser, "Base plate", 1); // makes the category "Columns"
    addStyle(kUser, "Anchor", 2);
    add<StructDetBaseCategory>(kUser, "Bracing");
    load();
    const KorDSMDatabaseItem& content = userContent(kViewDetailStyles);
    EXPECT_EQ(namesBelow(content), (Names{"Bracing", "Columns", "Zinc"}));
    const KorDSMDatabaseItem& columns = *content.children()[1];
    EXPECT_EQ(namesBelow(columns), (Names{"Base plate", "Anchor"})) << "both styles under one category";
    EXPECT_EQ(namesBelow(*columns.children()[0]), (Names{"Base plate front", "Base plate top"}));
    EXPECT_TRUE(content.children()[0]->children().isEmpty());
}

TEST_F(Loading, GroupsComeByKeyAndTheirRecordsWhenTheAddInIsOpened) {
    const auto later = add<StructDetObjQualifierSetGroup>(kUser, "Welds");
    const auto last = add<StructDetObjQualifierSetGroup>(kUser, "Bolts");
    StructDetObjQualifierSet set;
    set.groupKey = last;
    add(kUser, "All bolts", set);
    set.groupKey = later;
    add(kUser, "All welds", set);
    load();
    auto& content = static_cast<KorDsmQualifierSetsAddInItem&>(userContent(kViewQualifiers));
    EXPECT_EQ(namesBelow(content), (Names{"Welds", "Bolts"}));
    EXPECT_TRUE(content.children()[0]->children().isEmpty());
    EXPECT_FALSE(content.m_bExpanded);

    const KorDSNRequest request(kUser.dsn, kUser.index);
    KorDSMDialogFactory::expandQualifiersAddInContent(&content);
    EXPECT_EQ(namesBelow(content), (Names{"Welds", "Bolts"})) << "records go into the groups that are there";
    EXPECT_EQ(namesBelow(*content.children()[0]), Names{"All welds"});
    EXPECT_EQ(namesBelow(*content.children()[1]), Names{"All bolts"});
    EXPECT_TRUE(content.m_bExpanded);
    ASSERT_GE(progress.size(), 4U);
    EXPECT_EQ(progress.front(), DsmProgress::kStart);
    EXPECT_EQ(progress[1], DsmProgress::kStep);
    EXPECT_EQ(progress.back(), DsmProgress::kDone);
}

TEST_F(Loading, ContentIsKeptUntilAReloadIsAskedFor) {
    add<StructDetBaseCategory>(kUser, "Old");
    load();
    EXPECT_EQ(structure->getUpdateStatus(), KorDSMDataStructure::kUpToDate);
    add<StructDetBaseCategory>(kUser, "New");
    structure->setUpdateStatus(KorDSMDataStructure::kKeepContent);
    load();
    EXPECT_EQ(namesBelow(userContent(kViewDetailStyles)), Names{"Old"});
    KorOdbcMan::m_DSMNewReloadInfo = 1;
    load();
    EXPECT_EQ(namesBelow(userContent(kViewDetailStyles)), (Names{"New", "Old"}));
    EXPECT_EQ(KorOdbcMan::m_DSMNewReloadInfo, 0);
    EXPECT_EQ(structure->getUpdateStatus(), KorDSMDataStructure::kUpToDate);
}

TEST_F(Loading, ProgressCountsTheStylesOfAllSources) {
    addStyle(kStandard, "First", 1);
    addStyle(kStandard, "Second", 2);
    addStyle(kUser, "Third", 1);
    addStyle(kUser, "Fourth", 2);
    std::vector<int> percents;
    KorString activated;
    int resets = 0;
    KorProgressCtrl::install({[&](const KorString& text) { activated = text; },
                              [&](int percent) { percents.push_back(percent); }, [&] { ++resets; }});
    load();
    EXPECT_EQ(percents, (std::vector{0, 25, 50, 75, 100}));
    EXPECT_EQ(activated, KorString::format("%s %s", {Prompts::ups(21034), Prompts::ups(21001)}));
    EXPECT_EQ(resets, 1);
}

TEST_F(Loading, StylesWithoutMasterOrCategoryAreLeftOut) {
    addStyle(kUser, "Seen", 1);
    add<StructDetailStyle>(kUser, "Nameless to the host");
    load();
    EXPECT_EQ(namesBelow(*userContent(kViewDetailStyles).children()[0]), Names{"Seen"});
}

TEST_F(Loading, EmptyingKeepsPathsAndOptionsAndForgetsTargets) {
    load();
    structure->getSelectedPath(kViewQualifiers).append("Qualifier sets");
    structure->setShowWarning(false);
    structure->setTargetDatabase(kViewAnnotations, KorDSNDefinitions::kUser);
    structure->setSelectedSection(kViewDimRequests);
    structure->emptyDataStructure();
    EXPECT_EQ(structure->getSelectedPath(kViewQualifiers).length(), 1);
    EXPECT_FALSE(structure->getShowWarning());
    EXPECT_EQ(structure->getTargetDatabase(kViewAnnotations), KorDSNDefinitions::kStandard);
    EXPECT_EQ(structure->getSelectedSection(), kViewDetailStyles);
    EXPECT_TRUE(structure->getDetailStylesSection()->children().isEmpty());
    EXPECT_EQ(structure->getUpdateStatus(), KorDSMDataStructure::kEmptied);
}
