#include "model/ModelFixture.h"

#include "model/KorDSMDependencies.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorDSNManager.h"

namespace {

/// Items of records in the User database.
class Dependencies : public ModelFixture {
protected:
    void SetUp() override {
        ModelFixture::SetUp();
        databases.setCurrentSource(kUser);
    }
    template <typename Item>
    void open(Item& item, const KorString& name) {
        item.initRecord(*row<typename Item::Record>(kUser, name));
        KorDSMDependencies::createChildren(item);
    }
};

} // namespace

TEST_F(Dependencies, AViewShowsWhatItUsesOnceInTheOrderOfItsColumns) {
    addStyle(kUser, "Post", 1);
    StructDetViewRequest view;
    view.systemAndBoxKey = add<StructDetViewSystemAndBox>(kUser, "Whole");
    view.reprMapKey = row<StructDetObjReprMap>(kUser, "Steel")->key;
    view.dimStrategyKey = add<StructDetViewDimStrategy>(kUser, "Lengths");
    add(kUser, "All", view);
    KorDsmViewRequestItem item;
    open(item, "All");
    KorDSMDependencies::createChildren(item);
    EXPECT_EQ(namesBelow(item), (Names{"Whole", "Steel", "Lengths"}));
    EXPECT_TRUE(item.isExpanded());
    KorDSMDatabaseItem& map = *item.children()[1];
    KorDSMDependencies::createChildren(map);
    EXPECT_EQ(namesBelow(map), (Names{"Beams", "Rest"}));
    KorDSMDependencies::createChildren(*map.children()[0]);
    EXPECT_EQ(namesBelow(*map.children()[0]), (Names{"Beams", "Solid"}));
}

TEST_F(Dependencies, ADimensionRequestShowsItsPointsFromStartToEnd) {
    StructDetViewDimRequestLinear request;
    request.endPointsKey = add<StructDetViewDimPointSelection>(kUser, "End");
    request.innerPointsKey = add<StructDetViewDimPointSelection>(kUser, "Holes");
    request.startPointsKey = add<StructDetViewDimPointSelection>(kUser, "Start");
    add(kUser, "Along X", request);
    KorDsmDimRequestItem item;
    open(item, "Along X");
    EXPECT_EQ(namesBelow(item), (Names{"Start", "Holes", "End"}));
}

TEST_F(Dependencies, AnAnnotationShowsBothKindsOfArrangement) {
    StructDetObjAnnotationStrategy annotation;
    annotation.arrangerStrategyKey = add<StructDetArrangerStrategy>(kUser, "New kind");
    annotation.arrangerControlKey = add<StructDetArrangerControl>(kUser, "Old kind");
    add(kUser, "Mark", annotation);
    KorDsmAnnotationStrategyItem item;
    open(item, "Mark");
    EXPECT_EQ(namesBelow(item), (Names{"Old kind", "New kind"}));
    EXPECT_EQ(item.children()[0]->tableType(), kTableArrangerControl);
    EXPECT_EQ(item.children()[1]->tableType(), kTableArrangerStrategy);
}

TEST_F(Dependencies, ARecordIsReadAgainAndOneThatIsGoneIsTold) {
    const std::int32_t key = add<StructDetViewDimPointSelection>(kUser, "End");
    KorDsmPointSelectionItem item;
    open(item, "End");
    ASSERT_EQ(set(kUser, kTablePointSelection, key, 1, KorString("Far end")), WriteResult::kWritten);
    EXPECT_TRUE(KorDSMDependencies::refreshRecord(item));
    EXPECT_EQ(item.getDisplayName(), "Far end");
    ASSERT_EQ(databases.remove(kTablePointSelection, KorOdbcKey(key)), WriteResult::kWritten);
    EXPECT_FALSE(KorDSMDependencies::refreshRecord(item));
}
