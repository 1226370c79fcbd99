#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "controls/KorButtonGroupMenu.h"
#include "controls/KorListCtrl.h"
#include "controls/VELComboTree.h"

#include <QComboBox>
#include <QLabel>
#include <QMenu>

#include <algorithm>

// What the window says and allows belongs to what is selected.

namespace {

constexpr int kStatus = 1007;

class Selection : public EditorFixture {
protected:
    std::string status() {
        return KorControls::find<QLabel>(control<QWidget>(1005), kStatus)->text().toStdString();
    }
    std::string readOnly() {
        for (const auto* label : control<QWidget>(1005)->findChildren<QLabel*>())
            if (label->text().contains("can be read, not changed"))
                return label->text().toStdString();
        return {};
    }
    // The item commands that are on, by their buttons.
    std::vector<int> commands() {
        std::vector<int> on;
        for (const int id : {1029, 1030, 1032, 1033, 1034, 1035, 1037, 1039})
            if (control<KorButtonGroup>(1011)->isButtonEnabled(id))
                on.push_back(id);
        return on;
    }
    void showOneSource() {
        control<KorButtonGroupMenu>(1233)->menuButton()->menu()->actions().front()->trigger();
    }
};

} // namespace

TEST_F(Selection, OfARootTouchesNothingOfTheEntryBefore) {
    open();
    select(kStyle);
    showTab(1);
    EXPECT_EQ(status(), "Detail style");
    ASSERT_FALSE(commands().empty());
    ASSERT_TRUE(button(1098)->isEnabled());
    KorTabPage* shown = page();
    tree().selectItem(tree().getRoot());
    EXPECT_EQ(page(), shown) << "the right side stays";
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(commands(), std::vector<int>{});
    EXPECT_FALSE(button(1098)->isEnabled());
    EXPECT_EQ(status(), "Detail styles");
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Delete);
    press(Qt::Key_D, Qt::ControlModifier);
    press(Qt::Key_F2);
    EXPECT_FALSE(isPending());
    select(kStyle);
    EXPECT_EQ(status(), "Detail style");
    EXPECT_TRUE(button(1098)->isEnabled());

    select({"Standard", "General"});
    EXPECT_NE(readOnly().find("Standard"), std::string::npos) << readOnly();
    tree().selectItem(tree().getRoot());
    EXPECT_EQ(readOnly(), "");
}

TEST_F(Selection, OfAnotherSourceByTheComboIsThatOfItsRoot) {
    open();
    const KorTreeHandle general = select({"Standard", "General"});
    tree().expand(general);
    tree().selectItem(tree().getChildItem(general));
    showOneSource();
    EXPECT_EQ(status(), "Detail style category");
    EXPECT_NE(readOnly(), "");
    auto* combo = control<VELComboTree>(1200);
    ASSERT_TRUE(combo->selectPath("User"));
    Q_EMIT combo->entrySelected(combo->selectedEntry());
    EXPECT_EQ(tree().selectedItem(), tree().getRoot());
    EXPECT_EQ(status(), "");
    EXPECT_EQ(readOnly(), "");
    EXPECT_EQ(control<KorListCtrl>(1003)->getItemText(0, 0).view(), "Hallberg: posts and beams");
}

TEST_F(Selection, StatusFollowsTheViewThatIsChosenForTheSlot) {
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    select(kView);
    showTab(0);
    EXPECT_EQ(status(), "HB front");
    constexpr int kViews = 1020;
    QComboBox* views = nullptr;
    for (auto* candidate : page()->findChildren<QComboBox*>())
        if (KorControls::id(candidate) == kViews)
            views = candidate;
    ASSERT_NE(views, nullptr);
    views->setFocus();
    QTest::keyClick(views, Qt::Key_Down);
    QApplication::processEvents();
    EXPECT_NE(status(), "HB front");
    EXPECT_EQ(status(), selected());
}

TEST_F(Selection, OfADatabaseListsWhatItsTreeShows) {
    open();
    select({"User"});
    auto* list = control<KorListCtrl>(1003);
    ASSERT_EQ(list->getItemCount(), 3);
    EXPECT_EQ(list->getItemText(0, 0).view(), "Hallberg: posts and beams");
    list->setCurrentIndex(list->model()->index(0, 0));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(selected(), "Hallberg: posts and beams");
    EXPECT_EQ(list->model()->headerData(0, Qt::Horizontal).toString(), "Category");
}

TEST_F(Selection, IsReachedFromTheFilterByKeysAndAnEmptyResultHasAWord) {
    open();
    select({"Standard"});
    auto* filter = control<QLineEdit>(1210);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) {
        filter->setFocus();
        filter->setText("railings");
        QTest::keyClick(filter, key);
        EXPECT_TRUE(tree().hasFocus());
        EXPECT_EQ(selected(), "Hallberg: railings");
        select({"User"});
    }
    filter->setFocus();
    const std::string before = status();
    filter->setText("nowhere");
    EXPECT_EQ(status(), "No name contains \"nowhere\"");
    QTest::keyClick(filter, Qt::Key_Down);
    EXPECT_TRUE(filter->hasFocus());
    filter->clear();
    EXPECT_EQ(status(), before);
}

TEST_F(Selection, ThatTheFilterHidesTakesItsPageAndCommandsAlongUntilItIsSeenAgain) {
    open();
    select({"User"});
    const std::vector<int> ofDatabase = commands();
    EXPECT_TRUE(std::ranges::count(ofDatabase, kImport) == 1);
    const KorTreeHandle style = select(kStyle);
    showTab(1);
    auto* filter = control<QLineEdit>(1210);
    const auto expectHidden = [&](bool hidden) {
        EXPECT_EQ(page() == nullptr, hidden);
        EXPECT_EQ(commands() == ofDatabase, hidden) << "what needs no selection goes on";
        EXPECT_EQ(button(1098)->isEnabled(), !hidden);
        EXPECT_EQ(status(), hidden ? filter->text() == "nowhere" ? "No name contains \"nowhere\""
                                                                 : "The filter hides \"HB post 1:15\""
                                   : "Detail style");
    };
    for (const char* other : {"railings", "nowhere"}) {
        filter->setText("rail");
        filter->setText("post 1:15");
        expectHidden(false);
        filter->setText("railings");
        expectHidden(true);
        tree().setFocus();
        QTest::keyClick(&tree(), Qt::Key_Delete);
        press(Qt::Key_F2);
        EXPECT_TRUE(StyleDatabases::current().pending().isEmpty());
        filter->setFocus();
        filter->setText(other);
        press(Qt::Key_Escape);
        expectHidden(false);
        EXPECT_EQ(tree().selectedItem(), style);
        EXPECT_TRUE(page()->isVisible());
    }
    filter->setText("railings");
    showOneSource();
    EXPECT_EQ(tree().getItemText(tree().selectedItem()).view(), "HB post 1:15");
    EXPECT_TRUE(page()->isVisible());
}

TEST_F(Selection, WhatIsRenamedOutOfTheFilterStaysAndWhatIsDeletedOutOfItLeavesAWord) {
    open();
    auto* filter = control<QLineEdit>(1210);
    filter->setFocus();
    filter->setText("gates");
    QTest::keyClick(filter, Qt::Key_Return);
    ASSERT_EQ(selected(), "HB railing, gates");
    answerNext([](QWidget* modal) { typeName(modal, "HB doors"); });
    press(Qt::Key_F2);
    EXPECT_EQ(selected(), "HB doors");
    EXPECT_FALSE(tree().isHidden(tree().selectedItem()));
    EXPECT_EQ(status(), "Detail style");
    press(Qt::Key_F5);
    EXPECT_EQ(selected(), "HB doors");

    tree().setFocus();
    answerYes();
    QTest::keyClick(&tree(), Qt::Key_Delete);
    ASSERT_TRUE(isPending());
    EXPECT_EQ(status(), "No name contains \"gates\"");
    EXPECT_EQ(tree().selectedItem(), nullptr);
    EXPECT_EQ(control<KorListCtrl>(1003)->getItemCount(), 0) << "nothing is selected, and nothing is listed";
    EXPECT_TRUE(control<KorButtonGroup>(1011)->isButtonEnabled(kImport));
    filter->clear();
    EXPECT_EQ(selected(), "Hallberg: railings");
    filter->setText("doors");
    EXPECT_EQ(status(), "No name contains \"doors\"");
}

TEST_F(Selection, WhatWasOpenAndWhatWasFoundIsOpenWhenTheFilterGoes) {
    open();
    const KorTreeHandle open = select({"User", "Hallberg: posts and beams"});
    tree().expand(open);
    auto* filter = control<QLineEdit>(1210);
    filter->setFocus();
    filter->setText("gates");
    QTest::keyClick(filter, Qt::Key_Return);
    const KorTreeHandle found = tree().selectedItem();
    ASSERT_EQ(tree().getItemText(found).view(), "HB railing, gates");
    tree().expand(found);
    press(Qt::Key_Escape);
    EXPECT_EQ(filter->text(), "");
    EXPECT_TRUE(tree().isExpanded(open));
    EXPECT_TRUE(tree().isExpanded(tree().getParentItem(found)));
    EXPECT_TRUE(tree().isExpanded(found));
    EXPECT_EQ(tree().selectedItem(), found);
}
