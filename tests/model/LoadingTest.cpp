#include "model/ModelFixture.h"

#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMItemPlacing.h"
#include "model/KorProgressCtrl.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorODBCDetStyle.h"

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
    // Views are counted without being made, and are as their rows are when somebody looks.
    const KorDSMDatabaseItem& plate = *columns.children()[0];
    EXPECT_EQ(plate.childCount(), 2);
    EXPECT_TRUE(plate.madeChildren().isEmpty());
    {
        const KorDSNRequest request(kUser.dsn, kUser.index);
        databases.setCell(kTableViewRequest,
                          KorOdbcKey(row<StructDetViewRequest>(kUser, "Base plate top")->key), 1,
                          KorString("Cap"));
    }
    EXPECT_EQ(namesBelow(plate), (Names{"Base plate front", "Cap"}));
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
    EXPECT_FALSE(content.isExpanded());

    const KorDSNRequest request(kUser.dsn, kUser.index);
    KorDSMDialogFactory::expandQualifiersAddInContent(&content);
    EXPECT_EQ(namesBelow(content), (Names{"Welds", "Bolts"})) << "records go into the groups that are there";
    EXPECT_EQ(namesBelow(*content.children()[0]), Names{"All welds"});
    EXPECT_EQ(namesBelow(*content.children()[1]), Names{"All bolts"});
    KorDSMDialogFactory::expandQualifiersAddInContent(&content);
    EXPECT_EQ(namesBelow(*content.children()[0]), Names{"All welds"}) << "what is there is not loaded again";
    EXPECT_TRUE(content.isExpanded());
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
    load();
    EXPECT_EQ(namesBelow(userContent(kViewDetailStyles)), Names{"Old"});
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

TEST_F(Loading, TheFirstOfSeveralMastersFilesAStyleAndOneWithoutIsLeftOut) {
    addStyle(kUser, "Seen", 1);
    add<StructDetailStyle>(kUser, "Nameless to the host");
    StructDetailMaster second;
    second.styleKey = row<StructDetailStyle>(kUser, "Seen")->key;
    second.categoryKey = add<StructDetBaseCategory>(kUser, "Others");
    add(kUser, "Seen again", second);
    load();
    EXPECT_EQ(namesBelow(*userContent(kViewDetailStyles).children()[0]), Names{"Seen"});
    EXPECT_TRUE(userContent(kViewDetailStyles).children()[1]->children().isEmpty());
}

TEST_F(Loading, DatabasesAndTheirContentsHaveTheirNames) {
    load();
    for (const eViewSections section : kLoadingOrder) {
        const KorDSMDatabaseItem& node = *structure->getSection(section);
        EXPECT_EQ(namesBelow(node), (Names{Prompts::ups(21021), Prompts::ups(21022)}));
        EXPECT_EQ(namesBelow(*node.children()[0]), Names{Prompts::ups(21023)});
        EXPECT_EQ(namesBelow(*node.children()[1]), Names{Prompts::ups(21022)});
    }
}

TEST_F(Loading, AnAnnotationBringsItsType) {
    StructDetAnnotationType type;
    type.annotationKind = 3;
    StructDetObjAnnotationStrategy strategy;
    strategy.annotationTypeKey = add(kUser, "Bolt marks", type);
    strategy.groupKey = add<StructDetObjAnnotationGroup>(kUser, "Marks");
    add(kUser, "Bolts", strategy);
    load();
    auto& content = static_cast<KorDsmAnnotationsAddInItem&>(userContent(kViewAnnotations));
    const KorDSNRequest request(kUser.dsn, kUser.index);
    KorDSMDialogFactory::expandAnnotationsAddInContent(&content);
    auto* item = static_cast<KorDsmAnnotationStrategyItem*>(content.children()[0]->children()[0]);
    EXPECT_EQ(item->annotationType().name, "Bolt marks");
    EXPECT_EQ(item->annotationType().annotationKind, 3);
}

TEST_F(Loading, AGroupThatComesLaterStandsAtThePlaceOfItsKey) {
    KorDsmQualifierSetsAddInItem content;
    for (const std::int32_t key : {5, 9, 3}) {
        StructDetObjQualifierSetGroup group;
        group.key = key;
        group.name = KorString::number(key);
        EXPECT_EQ(
            KorDSMItemPlacing::place(content, *KorDSMFamilies::of(kQualifierSetGroup), group).recordKey(),
            key);
    }
    EXPECT_EQ(namesBelow(content), (Names{"3", "5", "9"}));
}

TEST_F(Loading, OpeningForgetsTheItemsOfTheLastRun) {
    load();
    KorDsmViewRequestItem before;
    KorDsmViewRequestItem after;
    structure->appendAddedItemData(std::make_unique<KorDSMTreeItemData>(before));
    load();
    structure->appendAddedItemData(std::make_unique<KorDSMTreeItemData>(after));
    EXPECT_TRUE(after.equalItems().isEmpty());
}

TEST_F(Loading, OptionsAreOnUntilTheyAreSwitchedOffAndThenStayOff) {
    EXPECT_TRUE(structure->getShowFullTree() && structure->getUseFullExpand() && structure->getShowWarning());
    structure->setShowFullTree(false);
    structure->setShowWarning(false);
    const KorDSMDataStructure next;
    EXPECT_TRUE(!next.getShowFullTree() && next.getUseFullExpand() && !next.getShowWarning());
    structure->setUseFullExpand(false);
    EXPECT_FALSE(KorDSMDataStructure().getUseFullExpand());
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
