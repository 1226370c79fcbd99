#include "model/ModelFixture.h"

#include "model/items/KorDsmItems.h"

using namespace KorDSMDefines;

namespace {

class Items : public ModelFixture {
protected:
    void SetUp() override {
        ModelFixture::SetUp();
        first.describe(KorDSNDefinitions::kStandardIndex, "Standard");
        second.describe(KorDSNDefinitions::kUserIndex, "User");
    }
    KorDsmViewRequestItem& viewBelow(KorDSMDatabaseItem& parent, std::int32_t key = 4) {
        StructDetViewRequest record;
        record.key = key;
        record.name = "Front";
        auto& item = parent.addChild(std::make_unique<KorDsmViewRequestItem>());
        item.initRecord(record);
        return item;
    }

    KorDsmAddInContentItem first;
    KorDsmAddInContentItem second;
};

} // namespace

TEST_F(Items, RecordsAreEqualOnlyUnderOneAddIn) {
    KorDsmViewRequestItem& view = viewBelow(first);
    EXPECT_TRUE(view.isEqual(viewBelow(first)));
    EXPECT_FALSE(view.isEqual(viewBelow(second)));
    EXPECT_FALSE(view.isEqual(viewBelow(first, 5)));
    KorDsmViewRequestItem loose;
    KorDsmViewRequestItem other;
    EXPECT_TRUE(loose.isEqual(other)) << "outside any add-in only the records count";
    EXPECT_FALSE(loose.isEqual(view));
}

TEST_F(Items, RequestItemsAndWhatIsBelowThemAreEqualOnlyUnderOneIndex) {
    KorDsmAddInRequestItem standard;
    KorDsmAddInRequestItem user(KorDSNDefinitions::kUserIndex);
    EXPECT_TRUE(standard.isEqual(KorDsmAddInRequestItem()));
    EXPECT_FALSE(standard.isEqual(user));
    KorDsmViewRequestItem& view = viewBelow(standard);
    EXPECT_TRUE(view.isEqual(viewBelow(standard)));
    EXPECT_FALSE(view.isEqual(viewBelow(user)));
}

TEST_F(Items, AddedItemsFindTheirTwins) {
    KorDsmViewRequestItem& view = viewBelow(first);
    KorDsmViewRequestItem& twin = viewBelow(first);
    KorDsmViewRequestItem& foreign = viewBelow(second);
    for (KorDsmViewRequestItem* item : {&view, &twin, &foreign})
        structure->appendAddedItemData(std::make_unique<KorDSMTreeItemData>(*item));
    EXPECT_EQ(view.equalItems(), KorArray<KorDSMDatabaseItem*>{&twin});
    EXPECT_EQ(twin.equalItems(), KorArray<KorDSMDatabaseItem*>{&view});
    EXPECT_TRUE(foreign.equalItems().isEmpty());
    structure->deleteAddedItems();
    first.releaseChild(twin);
    EXPECT_TRUE(view.equalItems().isEmpty()) << "an item that goes leaves the lists of its twins";
}

TEST_F(Items, AReplacedRecordDropsWhatHungOnTheOldOne) {
    KorDsmViewRequestItem& view = viewBelow(first);
    KorDsmViewRequestItem& twin = viewBelow(first);
    view.linkEqualItem(twin);
    int entry = 0;
    view.addChild(std::make_unique<KorDsmSystemAndBoxItem>())
        .setEntry(reinterpret_cast<KorTreeHandle>(&entry));
    view.setExpanded();
    view.setEntry(reinterpret_cast<KorTreeHandle>(&entry));
    StructDetViewRequest top;
    top.key = 9;
    top.name = "Top";
    view.setRecord(top);
    EXPECT_TRUE(view.children().isEmpty());
    EXPECT_FALSE(view.isExpanded());
    EXPECT_TRUE(view.equalItems().isEmpty());
    EXPECT_TRUE(twin.equalItems().isEmpty());
    EXPECT_EQ(texts, Names{"Top"});
    EXPECT_EQ(numbers, (std::vector<int>{DsmDeleteEntry::kNumber, DsmInsertPlaceholder::kNumber,
                                         DsmCollapseEntry::kNumber, DsmSetEntryText::kNumber,
                                         DsmAttachItemData::kNumber}));
    numbers.clear();
    view.setRecord(top);
    EXPECT_EQ(numbers, (std::vector<int>{DsmSetEntryText::kNumber, DsmAttachItemData::kNumber}))
        << "what was never opened has nothing to drop";
    KorDsmDetailStyleCategoryItem category;
    category.addChild(std::make_unique<KorDsmDetailStyleItem>());
    category.setRecord({});
    EXPECT_EQ(category.children().length(), 1) << "styles do not hang on the record of their category";
}

TEST_F(Items, ADimensionRequestShowsItsNewName) {
    KorDsmDimRequestItem item;
    item.setName("Holes along X");
    EXPECT_EQ(item.getDisplayName(), "Holes along X");
    EXPECT_EQ(texts, Names{"Holes along X"});
}

TEST_F(Items, AnArrangementStandsForOneOfItsRecords) {
    KorDsmAnnotationArrangementItem control;
    KorDsmAnnotationArrangementItem strategy(true);
    StructDetArrangerControl controlRecord;
    controlRecord.key = 3;
    control.updateRecord(controlRecord);
    StructDetArrangerStrategy strategyRecord;
    strategyRecord.key = 8;
    strategy.updateRecord(strategyRecord);
    EXPECT_EQ(control.recordKey(), 3);
    EXPECT_EQ(control.tableType(), kTableArrangerControl);
    EXPECT_FALSE(control.usesNewArranger());
    EXPECT_EQ(strategy.recordKey(), 8);
    EXPECT_EQ(strategy.tableType(), kTableArrangerStrategy);
    EXPECT_TRUE(strategy.usesNewArranger());
    EXPECT_FALSE(control.isEqual(strategy));
    const auto below = [&](KorDSMDatabaseItem& parent) -> KorDsmAnnotationArrangementItem& {
        auto& item = parent.addChild(std::make_unique<KorDsmAnnotationArrangementItem>());
        item.updateRecord(controlRecord);
        return item;
    };
    EXPECT_TRUE(below(first).isEqual(below(first)));
    EXPECT_FALSE(below(first).isEqual(below(second)));
}

TEST_F(Items, ACloneShowsTheSame) {
    KorDsmAnnotationStrategyItem item;
    StructDetObjAnnotationStrategy record;
    record.key = 7;
    item.initRecord(record);
    StructDetAnnotationType type;
    type.name = "Bolt marks";
    item.setAnnotationType(type);
    const std::unique_ptr<KorDSMDatabaseItem> clone = item.clone();
    EXPECT_EQ(clone->recordKey(), 7);
    EXPECT_EQ(static_cast<KorDsmAnnotationStrategyItem&>(*clone).annotationType().name, "Bolt marks");
}

TEST_F(Items, AMapEntryTakesEachOfItsRecordsOnce) {
    std::vector<std::string> failed;
    KorAssert::setSink([&](const char* expression, const char*, int) { failed.push_back(expression); });
    KorDsmReprMapItem entry;
    entry.createQualifierSet(std::make_unique<KorDsmQualifierSetItem>());
    EXPECT_TRUE(failed.empty());
    entry.createQualifierSet(std::make_unique<KorDsmQualifierSetItem>());
    EXPECT_EQ(failed, std::vector<std::string>{"m_QualifierSet == NULL"});
    failed.clear();
    entry.createAppearance(std::make_unique<KorDsmAppearanceItem>());
    entry.createAnnotationStrategy(std::make_unique<KorDsmAnnotationStrategyItem>());
    entry.setExpanded();
    entry.setRecord({});
    entry.createQualifierSet(std::make_unique<KorDsmQualifierSetItem>());
    entry.createAppearance(std::make_unique<KorDsmAppearanceItem>());
    entry.createAnnotationStrategy(std::make_unique<KorDsmAnnotationStrategyItem>());
    KorAssert::setSink({});
    EXPECT_TRUE(failed.empty()) << "those of the record before are gone";
}

TEST_F(Items, IconsStandAtTheirFixedPlaces) {
    loadGlobalIcons();
    ASSERT_EQ(m_GlobalIcons.length(), 25);
    constexpr std::pair<int, int> kPlaces[] = {{0, 1162},  {1, 393},   {6, 383},   {10, 1057}, {11, 1056},
                                               {12, 1055}, {13, 1067}, {14, 1054}, {16, 1059}, {18, 1062},
                                               {19, 1060}, {20, 1063}, {21, 1064}, {22, 1066}, {23, 1065}};
    for (const auto& [index, resource] : kPlaces)
        EXPECT_EQ(m_GlobalIcons[index].resource, resource) << index;
    EXPECT_EQ(m_GlobalIcons[kIconHost].file, "appicon.svg");
    EXPECT_EQ(m_GlobalIcons[kIconInstallation].file, "icons/standard.svg");
}
