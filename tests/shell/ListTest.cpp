#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorListCtrl.h"
#include "dialogs/KorDSMDialogNewItem.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QToolButton>

// The list at the right: its rows, and the commands of those that are selected.

namespace {

const std::vector<const char*> kCategory = {"User", "Hallberg: posts and beams"};

class List : public EditorFixture {
protected:
    KorListCtrl& list() { return *control<KorListCtrl>(1003); }
    std::vector<std::string> names(bool onlySelected = false) {
        std::vector<std::string> texts;
        for (int row = 0; row < list().getItemCount(); ++row)
            if (!onlySelected || list().selectionModel()->isRowSelected(row))
                texts.push_back(list().getItemText(row, 0).toStdString());
        return texts;
    }
    QPoint placeOf(const char* name) {
        const auto all = names();
        const auto at = std::ranges::find(all, name) - all.begin();
        return list().visualRect(list().model()->index(static_cast<int>(at), 0)).center();
    }
    void clickRow(const char* name, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, placeOf(name));
    }
    // Offscreen, a closed dialog does not hand the activation back.
    void activate() {
        m_dialog->activateWindow();
        QApplication::processEvents();
    }
    bool isOn(int command) { return control<KorButtonGroup>(1011)->isButtonEnabled(command); }
    bool isStored(const char* name) {
        return m_databases->source(SourceId::user())->table(kTableDetailStyle).find(KorString(name));
    }
    std::string selectedEntry() { return tree().getItemText(tree().selectedItem()).toStdString(); }
    // Chooses a command of the menu that comes up at a row.
    void chooseAt(const char* name, const char* command) {
        chooseInMenu(command);
        const QPoint place = placeOf(name);
        QTest::mouseClick(list().viewport(), Qt::RightButton, {}, place);
        Q_EMIT list().customContextMenuRequested(place);
        QApplication::processEvents(); // the command runs when the menu is gone
    }
};

constexpr int kUseStyle = 1030;
constexpr int kRename = 1034;

} // namespace

TEST_F(List, SeveralRowsAreDeletedByDelInOneStep) {
    open();
    select(kCategory);
    list().sortByColumn(0);
    const std::vector<std::string> before = names();
    clickRow("HB beam 1:15");
    EXPECT_TRUE(isOn(kRename) && isOn(kUseStyle));
    clickRow("HB post 1:15", Qt::ControlModifier);
    EXPECT_FALSE(isOn(kRename) || isOn(kUseStyle) || isOn(kNew));
    EXPECT_TRUE(isOn(kDelete));
    answerNext([](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), "Do you want to delete these 2 definitions?");
        EXPECT_TRUE(box->detailedText().contains("HB beam 1:15"));
        EXPECT_TRUE(box->informativeText().contains("HB front, ")) << "only both of them use it";
        EXPECT_FALSE(box->informativeText().contains("HB section")) << "another style uses it, too";
        click(box->button(QMessageBox::Yes));
    });
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(names(), std::vector<std::string>{"HB beam, long, 1:10"});
    EXPECT_FALSE(isStored("HB beam 1:15") || isStored("HB post 1:15"));
    EXPECT_EQ(selectedEntry(), kCategory.back());
    EXPECT_FALSE(isOn(kDelete)) << "nothing is selected but the category, and it is not empty";
    activate();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(StyleDatabases::current().pending().isEmpty());
    select(kCategory);
    list().sortByColumn(0);
    EXPECT_EQ(names(), before);
}

TEST_F(List, SeveralRowsAreCopiedByOneKeyInOneStep) {
    open();
    select(kCategory);
    const std::vector<std::string> before = names();
    clickRow("HB beam 1:15");
    clickRow("HB post 1:15", Qt::ControlModifier);
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(names().size(), before.size() + 2);
    const std::vector<std::string> copies = names(true);
    ASSERT_EQ(copies.size(), 2u) << "the copies are selected";
    for (const std::string& copy : copies) {
        EXPECT_EQ(std::ranges::find(before, copy), before.end()) << copy;
        EXPECT_TRUE(isStored(copy.c_str()));
    }
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(isPending());
    EXPECT_FALSE(isStored(copies.front().c_str()));
}

TEST_F(List, WhatOnlyTheDeletedOnesUseGoesInTheSameStepWhereThatIsWanted) {
    open();
    select(kCategory);
    const auto deleteBoth = [this](bool too) {
        clickRow("HB beam 1:15");
        clickRow("HB post 1:15", Qt::ControlModifier);
        answerNext([too](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            ASSERT_TRUE(box && box->checkBox());
            EXPECT_FALSE(box->checkBox()->isChecked());
            box->checkBox()->setChecked(too);
            click(box->button(QMessageBox::Yes));
        });
        QTest::keyClick(&list(), Qt::Key_Delete);
    };
    const auto isThere = [](const char* view) {
        return StyleDatabases::current()
                   .source(SourceId::user())
                   ->table(kTableViewRequest)
                   .find(KorString(view)) != nullptr;
    };
    deleteBoth(false);
    EXPECT_TRUE(isThere("HB front"));
    activate();
    press(Qt::Key_Z, Qt::ControlModifier);
    select(kCategory);
    deleteBoth(true);
    EXPECT_FALSE(isThere("HB front"));
    EXPECT_TRUE(isThere("HB section")) << "another style uses it, too";
    activate();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(isPending()) << "one step brings all back";
    EXPECT_TRUE(isThere("HB front"));
}

TEST_F(List, TheCommandsOfARowAreThoseOfItsEntryAndItStaysSelected) {
    open();
    select(kCategory);
    list().sortByColumn(0, Qt::DescendingOrder);
    whenShown<KorDSMDialogNewItem>([](QDialog& dialog) { typeName(&dialog, "A beam"); });
    chooseAt("HB beam 1:15", "Rename");
    EXPECT_TRUE(isStored("A beam"));
    EXPECT_EQ(names(), (std::vector<std::string>{"HB post 1:15", "HB beam, long, 1:10", "A beam"}));
    EXPECT_EQ(names(true), std::vector<std::string>{"A beam"});
    EXPECT_EQ(selectedEntry(), kCategory.back());
    // Whoever goes back to the tree means its entry.
    activate();
    list().setFocus();
    tree().setFocus();
    EXPECT_EQ(names(true), std::vector<std::string>{});
    EXPECT_FALSE(isOn(kRename)) << "categories are not renamed here";
    activate();
    clickRow("A beam");
    answerNext([](QWidget* modal) { typeName(modal, "A beam again"); });
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(selectedEntry(), "A beam again");
}

TEST_F(List, ARowIsOpenedByDoubleClickReturnAndItsMenu) {
    open();
    const auto doubleClick = [this] {
        clickRow("HB beam 1:15");
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, placeOf("HB beam 1:15"));
    };
    const auto pressReturn = [this] {
        clickRow("HB beam 1:15");
        QTest::keyClick(&list(), Qt::Key_Return);
    };
    for (const std::function<void()>& open : {std::function<void()>(doubleClick), {pressReturn}, {[this] {
                                                  chooseAt("HB beam 1:15", "Open");
                                              }}}) {
        select(kCategory);
        open();
        EXPECT_EQ(selectedEntry(), "HB beam 1:15");
        EXPECT_NE(page(), nullptr);
    }
}

TEST_F(List, OfASectionThatWasNotOpenedKnowsWhatIsInItsGroups) {
    open();
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    select({"User"});
    const auto rows = names();
    ASSERT_FALSE(rows.empty());
    EXPECT_NE(list().getItemText(0, 1).view(), "0");
    clickRow(rows.front().c_str());
    EXPECT_FALSE(isOn(kDelete)) << "a group with something in it";
}

TEST_F(List, IsSortedByAClickOnAHeaderWhichOtherListsAndTheNextWindowKeep) {
    open();
    select(kCategory);
    const auto clickHeader = [this] {
        QHeaderView& header = *list().header();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          {header.sectionViewportPosition(0) + 20, header.height() / 2});
    };
    clickHeader();
    const auto ascending = names();
    EXPECT_EQ(ascending, (std::vector<std::string>{"HB beam 1:15", "HB beam, long, 1:10", "HB post 1:15"}));
    clickHeader();
    const std::vector<std::string> descending(ascending.rbegin(), ascending.rend());
    EXPECT_EQ(names(), descending);
    select({"User"});
    auto groups = names();
    EXPECT_TRUE(groups.size() > 1 && std::ranges::is_sorted(groups, std::greater()));
    open();
    select(kCategory);
    EXPECT_EQ(names(), descending);
}
