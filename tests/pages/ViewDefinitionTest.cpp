#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "model/KorDSMDependencies.h"
#include "model/KorDSMSectionLoader.h"
#include "pages/KorDSMPageViewDefinition.h"
#include "pages/PageFixture.h"
#include "pages/RecordButtons.h"
#include "pages/SelectionFills.h"

#include <QAbstractItemView>
#include <QToolButton>

#include <set>

namespace {

constexpr int kViews = 1020;

class ViewDefinition : public PageFixture {
protected:
    KorDsmDetailStyleItem& style(const char* name) {
        auto& made = item<KorDsmDetailStyleItem>(name);
        KorDSMSectionLoader::loadDetailStylesDependencies(&made);
        return made;
    }
    KorDsmViewRequestItem& viewOf(KorDsmDetailStyleItem& owner, int place) {
        return static_cast<KorDsmViewRequestItem&>(*owner.children()[place]);
    }
    KorDsmViewRequestItem& expanded(const char* name) {
        auto& view = item<KorDsmViewRequestItem>(name);
        KorDSMDependencies::createChildren(view);
        return view;
    }
    static int slotColumn(int place) { return KorOdbcMan::m_numberOfColumns[kTableDetailStyle] + place; }
    void nextView() { QTest::keyClick(&control(kViews), Qt::Key_Down); }
    std::string path() {
        return control<VELComboTree>(kViews).getSelectedPath().replaced("\x1f", "/").toStdString();
    }
    void notify(int code, int action, const char* name) {
        DsmListChanged notice;
        notice.senderPageCode = code;
        notice.action = action;
        notice.name = name;
        page().onMessage(notice);
    }
    void onMessage(const KorMessage& message) override {
        PageFixture::onMessage(message);
        if (message.number == DsmGoToChild::kNumber)
            m_wentTo.push_back(static_cast<const DsmGoToChild&>(message).childIndex);
        if (message.number == DsmSetEntryText::kNumber)
            m_entryText = static_cast<const DsmSetEntryText&>(message).text.toStdString();
    }

    std::vector<int> m_wentTo;
    std::string m_entryText;
};

TEST_F(ViewDefinition, WhatAViewChoosesIsMadeBesideItsChoice) {
    auto& view = expanded("HB railing post");
    TabContent group("Tabs", "Group");
    group.addPage(new KorDSMPageViewDefinition(&m_window));
    group.createPages();
    show(group, view);
    const auto makers = page().findChildren<RecordButtons*>();
    ASSERT_EQ(makers.size(), 3);
    answerName("Box of the post");
    QTest::mouseClick(makers[0]->findChildren<QToolButton*>()[0], Qt::LeftButton);
    EXPECT_EQ(rowOfKey<StructDetViewRequest>(view.recordKey())->systemAndBoxKey,
              row<StructDetViewSystemAndBox>("Box of the post").key);
    EXPECT_EQ(control<QComboBox>(1011).currentText(), "Box of the post");
}

// A reference is written once, and what hangs on it in the tree is replaced at the view and at its twin.
TEST_F(ViewDefinition, AChosenReferenceReplacesWhatHangsOnIt) {
    auto& view = expanded("HB railing post");
    auto& twin = expanded("HB railing post");
    view.linkEqualItem(twin);
    open<KorDSMPageViewDefinition>(view);
    EXPECT_EQ(textOf(1011), "Assembly, cut");
    const struct {
        int combo, column, child;
        const char* name;
        std::int32_t key;
    } choices[] = {{1011, 2, 0, "Storey", row<StructDetViewSystemAndBox>("Storey").key},
                   {1013, 3, 1, "HB site", row<StructDetObjReprMap>("HB site").key},
                   {1015, 6, 2, "HB bays", row<StructDetViewDimStrategy>("HB bays").key}};
    for (const auto& choice : choices) {
        choose(choice.combo, choice.name);
        EXPECT_TRUE(wroteOnly(view, choice.column, std::int64_t{choice.key})) << choice.name;
        EXPECT_EQ(view.children()[choice.child]->recordKey(), choice.key);
        EXPECT_EQ(twin.children()[choice.child]->recordKey(), choice.key);
        EXPECT_EQ(twin.getRecord(), view.getRecord());
        takeBack(view);
    }
    auto& combo = control<QComboBox>(1011);
    EXPECT_EQ(combo.itemText(0), "Assembly, cut");
    EXPECT_EQ(combo.itemText(combo.count() - 1), "Storey");
}

// Another view goes into the place of the style that the selected one has, even if the style shows it twice.
TEST_F(ViewDefinition, AnotherViewTakesThePlaceInTheStyle) {
    auto& owner = style("HB post 1:15");
    const std::int32_t front = row<StructDetViewRequest>("HB front").key;
    const std::int32_t shortened = row<StructDetViewRequest>("HB front, shortened").key;
    arrange(owner, slotColumn(1), std::int64_t{front});
    viewOf(owner, 1).setRecord(viewOf(owner, 0).getRecord());
    open<KorDSMPageViewDefinition>(viewOf(owner, 1));
    EXPECT_EQ(path(), "Hallberg: posts and beams/HB front");
    nextView();
    EXPECT_TRUE(wroteOnly(owner, slotColumn(1), std::int64_t{shortened}));
    EXPECT_EQ(viewOf(owner, 0).recordKey(), front);
    EXPECT_EQ(viewOf(owner, 1).recordKey(), shortened);
    EXPECT_EQ(owner.getRecord().getViewRequestAt(1), shortened);
    EXPECT_EQ(told<DsmMarkOtherPages>(), 1);

    takeBack(owner);
    auto& alone = item<KorDsmViewRequestItem>("HB front");
    show(alone);
    EXPECT_FALSE(isEnabled(kViews) || isEnabled(1208)) << "it stands in no style";
    EXPECT_EQ(alone.recordKey(), front);
}

TEST_F(ViewDefinition, ACopyTakesThePlaceOfItsOriginalWithItsCategories) {
    auto& owner = style("HB post 1:15");
    auto& view = viewOf(owner, 0);
    open<KorDSMPageViewDefinition>(view);
    answerName("Quay front");
    click(1208);
    const auto& copy = row<StructDetViewRequest>("Quay front");
    EXPECT_EQ(view.getRecord(), copy);
    EXPECT_EQ(owner.getRecord().getViewRequestAt(0), copy.key);
    EXPECT_EQ(copy.systemAndBoxKey, row<StructDetViewRequest>("HB front").systemAndBoxKey);
    EXPECT_EQ(path(), "Hallberg: posts and beams/Quay front");
    EXPECT_TRUE(m_asked.empty());
    databases.undo();
    EXPECT_TRUE(wroteNothing()) << "the copy is one step";
}

TEST_F(ViewDefinition, ANewNameReachesTwinsTreeAndCombo) {
    auto& view = item<KorDsmViewRequestItem>("HB railing post");
    auto& twin = item<KorDsmViewRequestItem>("HB railing post");
    view.linkEqualItem(twin);
    open<KorDSMPageViewDefinition>(view);
    answerName("Post");
    click(1104);
    EXPECT_TRUE(wroteOnly(view, 1, KorString("Post")));
    EXPECT_EQ(twin.getRecord().name, KorString("Post"));
    EXPECT_EQ(m_entryText, "Post");
    EXPECT_EQ(path(), "Hallberg: railings/Post");
}

// A source that can only be read can still be walked through, past references that point nowhere; its own
// names are listed.
TEST_F(ViewDefinition, GoToWorksInEverySource) {
    auto& view = item<KorDsmViewRequestItem>("HB front");
    arrange(view, 2, std::int64_t{987654});
    open<KorDSMPageViewDefinition>(view);
    EXPECT_FALSE(isEnabled(1012)) << "it leads nowhere";
    click(1014);
    click(1016);
    EXPECT_EQ(m_wentTo, (std::vector<int>{0, 1}));

    useSource(SourceId::standard());
    show(item<KorDsmViewRequestItem>("Part, front"));
    for (const int id : {kViews, 1208, 1104, 1011, 1013, 1015})
        EXPECT_FALSE(isEnabled(id)) << id;
    EXPECT_EQ(textOf(1013), "Single part");
    EXPECT_EQ(path(), "Columns/Part, front");
    click(1016);
    EXPECT_EQ(m_wentTo.back(), 2);
}

TEST_F(ViewDefinition, NoticesKeepTheListsCurrent) {
    open<KorDSMPageViewDefinition>(item<KorDsmViewRequestItem>("HB railing post"));
    auto& boxes = control<QComboBox>(1011);
    const int count = boxes.count();
    notify(KorDSMDefines::kSystemAndBox, DsmListChanged::kAdded, "Crane");
    EXPECT_EQ(boxes.itemText(3), "Assembly, top");
    EXPECT_EQ(boxes.itemText(4), "Crane");
    notify(KorDSMDefines::kSystemAndBox, DsmListChanged::kRenamed, "Zone");
    EXPECT_EQ(boxes.currentText(), "Zone");
    EXPECT_EQ(boxes.findText("Assembly, cut"), -1);
    EXPECT_EQ(boxes.count(), count + 1);
    notify(KorDSMDefines::kViewDimensioning, DsmListChanged::kRenamed, "Chains");
    EXPECT_EQ(textOf(1015), "Chains");
    notify(5, DsmListChanged::kRenamed, "Post");
    EXPECT_EQ(path(), "Hallberg: railings/Post");
    EXPECT_TRUE(wroteNothing());
    notify(5, DsmListChanged::kReload, "");
    show(item<KorDsmViewRequestItem>("HB railing post"));
    EXPECT_EQ(path(), "Hallberg: railings/HB railing post");
}

TEST_F(ViewDefinition, ListsAreFilledAnewOnceWhenThatIsAskedFor) {
    auto& view = item<KorDsmViewRequestItem>("HB railing post");
    auto& opened = open<KorDSMPageViewDefinition>(view);
    const auto showsAfter = [&](void (*ask)(KorDSMPage&), const char* name) {
        store(kTableSystemAndBox, view.getRecord().systemAndBoxKey, 1, KorString(name));
        show(view);
        EXPECT_EQ(control<QComboBox>(1011).findText(name), -1) << "nobody asked";
        ask(opened);
        show(view);
        EXPECT_EQ(textOf(1011), name);
        EXPECT_FALSE(opened.needsRefresh());
    };
    showsAfter([](KorDSMPage& shown) { shown.requestRefresh(true); }, "Refreshed");
    showsAfter([](KorDSMPage& shown) { shown.requestInit(); }, "Filled");
}

TEST_F(ViewDefinition, OfTwoBoxesOfOneNameEachCanBeShownAndChosen) {
    const std::int32_t first = row<StructDetViewSystemAndBox>().key;
    const KorString name = row<StructDetViewSystemAndBox>().name;
    const std::int32_t second = row<StructDetViewSystemAndBox>("Storey").key;
    store(kTableSystemAndBox, second, 1, name);
    auto& view = item<KorDsmViewRequestItem>("HB railing post");
    arrange(view, 2, std::int64_t{0});
    open<KorDSMPageViewDefinition>(view);
    auto& boxes = control<QComboBox>(1011);
    std::set<std::int32_t> written;
    for (int i = 0; i < boxes.count(); ++i) {
        if (fromQt(boxes.itemText(i)) != name)
            continue;
        boxes.setFocus();
        boxes.showPopup();
        boxes.view()->setCurrentIndex(boxes.model()->index(i, 0));
        QTest::keyClick(boxes.view(), Qt::Key_Return);
        written.insert(view.getRecord().systemAndBoxKey);
        show(view);
        EXPECT_EQ(boxes.currentIndex(), i);
    }
    EXPECT_EQ(written, (std::set{first, second}));
}

// Views without a category have a group of their own, and no group can be chosen as if it were a record.
TEST_F(ViewDefinition, SelectionTreesHoldEveryRecordOnce) {
    auto& filing = row<StructDetViewRequestCategory>("HB top");
    databases.remove(kTableViewRequestCategory, KorOdbcKey(filing.key));
    open<KorDSMPageViewDefinition>(item<KorDsmViewRequestItem>("HB top"));
    EXPECT_EQ(path(), "Without category/HB top");

    const std::pair<SelectionFills::eFill, eTableType> fills[] = {
        {SelectionFills::kQualifierSets, kTableQualifierSet},
        {SelectionFills::kAnnotationStrategies, kTableAnnotationStrategy},
        {SelectionFills::kDimRequests, kTableDimRequest},
        {SelectionFills::kPointSelections, kTablePointSelection},
        {SelectionFills::kViewRequests, kTableViewRequest}};
    for (const auto& [what, table] : fills) {
        VELComboTree tree;
        SelectionFills::fill(what, tree);
        int records = 0;
        const std::function<void(KorTreeHandle)> walk = [&](KorTreeHandle parent) {
            for (int i = 0; i < tree.childCount(parent); ++i) {
                const KorTreeHandle entry = tree.getChildAt(parent, i);
                const bool isRecord = databases.here()->table(table).find(entry->text) && entry->selectable;
                records += isRecord;
                EXPECT_TRUE(isRecord || !entry->selectable) << entry->text.toStdString();
                walk(entry);
            }
        };
        walk(nullptr);
        EXPECT_EQ(records, databases.here()->table(table).rows().size()) << what;
    }
    EXPECT_GT(told<DsmProgress>(), 5);
}

} // namespace
