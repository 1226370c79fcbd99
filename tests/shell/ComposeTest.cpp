#include "shell/EditorFixture.h"

#include "controls/KorMFCGridCtrl.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "dialogs/KorDSMDialogDeepCopy.h"
#include "dialogs/KorDSMDialogDimensionSettings.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"

#include <QLabel>
#include <QMenu>
#include <QTreeWidget>

namespace {

// Styles put together and taken over in the window.
class Compose : public EditorFixture {
protected:
    Compose() {
        open();
        KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    }

    void choose(const char* command) {
        chooseInMenu(command);
        Q_EMIT tree().contextMenuRequested(tree().selectedItem(), m_dialog->pos());
        QApplication::processEvents();
    }
    void answerName(const char* name) {
        whenShown<KorDSMDialogNewItem>([name](KorDSMDialogNewItem& dialog) { typeName(&dialog, name); });
    }
    template <typename R>
    const R* row(const char* name) {
        return static_cast<const R*>(
            m_databases->source(SourceId::user())->table(tableOf<R>).find(KorString(name)));
    }
    std::string parentOfSelected() {
        return tree().getItemText(tree().getParentItem(tree().selectedItem())).toStdString();
    }
    KorMFCGridCtrl& grid() { return *page()->findChild<KorMFCGridCtrl*>(); }
};

} // namespace

TEST_F(Compose, AStandardStyleComesOverByTheKeyThatCopiesElsewhere) {
    select({"Standard", "General", "Assemblies", "Assembly, general"});
    QString summary;
    whenShown<KorDSMDialogDeepCopy>([&summary](KorDSMDialogDeepCopy& dialog) {
        summary = KorControls::find<QLabel>(&dialog, 2380)->text();
        EXPECT_FALSE(KorControls::find<QTreeWidget>(&dialog, 2374)->isVisible());
        EXPECT_FALSE(isPending()) << "looking changes nothing";
        click(KorControls::find(&dialog, 1));
    });
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(summary.contains(QStringLiteral(" new"))) << summary.toStdString();
    EXPECT_EQ(selected(), "Assembly, general");
    EXPECT_TRUE(isPending());
    tree().expand(tree().selectedItem());
    EXPECT_NE(tree().getChildItem(tree().selectedItem()), nullptr);
    ASSERT_NE(row<StructDetailStyle>("Assembly, general"), nullptr);

    // What the User database has by now is not copied again.
    select({"Standard", "General", "Assemblies", "Assembly, general"});
    whenShown<KorDSMDialogDeepCopy>([](KorDSMDialogDeepCopy& dialog) {
        EXPECT_FALSE(KorControls::find(&dialog, 1)->isEnabled());
        click(KorControls::find(&dialog, 2));
    });
    press(Qt::Key_D, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(row<StructDetailStyle>("Assembly, general"), nullptr);
    EXPECT_FALSE(isPending());
}

TEST_F(Compose, WhatIsToComeIntoTheUserDatabaseIsChosenThere) {
    constexpr int kDeepCopy = 1032;
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    select({"User", "Hallberg: workshop"});
    QString first;
    whenShown<KorDSMDialogDeepCopy>([&first](KorDSMDialogDeepCopy& dialog) {
        EXPECT_FALSE(KorControls::find(&dialog, 1)->isEnabled()) << "nothing is chosen yet";
        auto* choice = KorControls::find<QTreeWidget>(&dialog, 2374);
        QTreeWidgetItem* group = choice->topLevelItem(0);
        first = group->child(0)->text(0);
        group->child(0)->setCheckState(0, Qt::Checked);
        QApplication::processEvents();
        click(KorControls::find(&dialog, 1));
    });
    command(kDeepCopy);
    EXPECT_EQ(selected(), first.toStdString());
    EXPECT_EQ(parentOfSelected(), "Hallberg: workshop");
    EXPECT_NE(row<StructDetObjQualifierSet>(first.toUtf8().constData()), nullptr);

    // Where an empty database begins.
    select({"User"});
    int rows = 0;
    whenShown<KorDSMDialogDeepCopy>([&rows](KorDSMDialogDeepCopy& dialog) {
        rows = KorControls::find<QTreeWidget>(&dialog, 2374)->topLevelItemCount();
        dialog.reject();
    });
    choose("Copy from Standard…");
    EXPECT_GT(rows, 1);
}

TEST_F(Compose, UndoAndRedoLeadToTheListWhereTheStepWasMade) {
    select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB workshop"});
    grid().selectRows({0, 1, 2});
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_EQ(grid().rowCount(), 0);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(selected(), "HB workshop") << "not one of the entries that came back";
    for (const int rows : {0, 3}) {
        select({"Standard"});
        press(Qt::Key_Z, rows == 3 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(selected(), "HB workshop");
        EXPECT_EQ(parentOfSelected(), "HB front");
        EXPECT_EQ(grid().rowCount(), rows);
    }
    EXPECT_FALSE(isPending());
}

TEST_F(Compose, UndoOfACopyOfAllThatStylesUseStaysInTheirSection) {
    select({"User"});
    whenShown<KorDSMDialogDeepCopy>([](KorDSMDialogDeepCopy& dialog) {
        auto* choice = KorControls::find<QTreeWidget>(&dialog, 2374);
        choice->topLevelItem(0)->setCheckState(0, Qt::Checked);
        QApplication::processEvents();
        click(KorControls::find(&dialog, 1));
    });
    press(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    const std::string copied = selected();
    for (const char* expected : {"User", copied.c_str(), "User"}) {
        press(Qt::Key_Z, isPending() ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(selected(), expected);
    }
}

TEST_F(Compose, AStyleDroppedOnAnotherSourceIsCopiedThere) {
    const KorTreeHandle target = select({"User", "Hallberg: railings"});
    const KorTreeHandle style = select({"Standard", "General", "Assemblies", "Assembly, general"});
    whenShown<KorDSMDialogDeepCopy>([](KorDSMDialogDeepCopy& dialog) {
        EXPECT_EQ(dialog.wish().to, SourceId::user());
        click(KorControls::find(&dialog, 1));
    });
    Q_EMIT tree().dropRequested(style, target);
    EXPECT_NE(row<StructDetailStyle>("Assembly, general"), nullptr);
}

TEST_F(Compose, DimensionSettingsAreChangedInTheirDialogAndOnlyShownWhereTheyCannotBe) {
    constexpr int kSettings = 1038;
    const auto value = [](QDialog& dialog) {
        return KorControls::find<QTreeWidget>(&dialog, 2411)->topLevelItem(0)->child(3);
    };
    select({"User"});
    whenShown<KorDSMDialogDimensionSettings>([&value](KorDSMDialogDimensionSettings& dialog) {
        auto& rows = *KorControls::find<QTreeWidget>(&dialog, 2411);
        rows.setCurrentItem(value(dialog), 0);
        QTest::keyClick(&rows, Qt::Key_Right);
        EXPECT_EQ(rows.currentColumn(), 1);
        rows.setCurrentItem(value(dialog), 0);
        QTest::keyClick(&rows, Qt::Key_F2);
        auto* typed = rows.viewport()->findChild<QLineEdit*>();
        ASSERT_NE(typed, nullptr) << "the key edits the value from any column";
        typed->setText("9");
        QTest::keyClick(typed, Qt::Key_Return);
        click(KorControls::find(&dialog, 1));
    });
    command(kSettings);
    EXPECT_EQ(row<StructNumericDefault>("C40_DimLineDistance")->value, 9.0);
    EXPECT_TRUE(button(kApply)->isEnabled());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(isPending());
    select({"Standard", "General"});
    whenShown<KorDSMDialogDimensionSettings>([&value](KorDSMDialogDimensionSettings& dialog) {
        EXPECT_FALSE(value(dialog)->flags().testFlag(Qt::ItemIsEditable));
        EXPECT_FALSE(KorControls::find(&dialog, 1)->isEnabled());
        dialog.reject();
    });
    choose("Dimension settings…");
}

TEST_F(Compose, GroupsAreMadeAndRenamedAndWhatOthersUseIsRenamedCopiedAndKept) {
    select({"User"});
    answerName("Hallberg: stairs");
    choose("New category…");
    EXPECT_EQ(selected(), "Hallberg: stairs");
    answerName("Hallberg: stairs and ladders");
    press(Qt::Key_F2);
    EXPECT_EQ(selected(), "Hallberg: stairs and ladders");
    EXPECT_NE(row<StructDetBaseCategory>("Hallberg: stairs and ladders"), nullptr);

    select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB workshop"});
    answerName("HB workshop map");
    press(Qt::Key_F2);
    EXPECT_EQ(selected(), "HB workshop map");
    answerName("HB front map");
    choose("A copy for \"HB front\" alone…");
    const auto* copy = row<StructDetObjReprMap>("HB front map");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(row<StructDetViewRequest>("HB front")->reprMapKey, copy->key);
    EXPECT_EQ(row<StructDetViewRequest>("HB side")->reprMapKey,
              row<StructDetObjReprMap>("HB workshop map")->key);
    EXPECT_EQ(grid().rowCount(), 3) << "its entries are copied along";
    select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB side", "HB workshop map"});
    whenShown<KorDSMDialogInUse>([](KorDSMDialogInUse& dialog) { dialog.reject(); });
    choose("Delete");
    EXPECT_NE(row<StructDetObjReprMap>("HB workshop map"), nullptr) << "it is in use";
    bool isRefused = false;
    whenShown<KorDSMDialogInUse>([&isRefused](KorDSMDialogInUse& dialog) {
        isRefused = true;
        dialog.reject();
    });
    m_dialog->activateWindow();
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Delete);
    EXPECT_TRUE(isRefused) << "the key does the same";
    answerName("HB side map");
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(row<StructDetViewRequest>("HB side")->reprMapKey, row<StructDetObjReprMap>("HB side map")->key);
}

TEST_F(Compose, ASharedRecordIsCopiedForOneUserWhenItIsChanged) {
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(true);
    select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB side", "HB workshop"});
    whenShown<KorDSMDialogConfirmation>([this](KorDSMDialogConfirmation& dialog) {
        whenShown<KorDSMDialogNewItem>([](KorDSMDialogNewItem& asked) { typeName(&asked, "HB side map"); });
        click(KorControls::find(&dialog, 1244));
    });
    constexpr int kShowsRest = 5890;
    ASSERT_EQ(row<StructDetObjReprMap>("HB workshop")->hideUnmatched, 1);
    click(pageControl<QRadioButton>(kShowsRest));
    EXPECT_TRUE(QTest::qWaitFor([&] { return row<StructDetObjReprMap>("HB side map") != nullptr; }));
    const auto* copy = row<StructDetObjReprMap>("HB side map");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(selected(), "HB side map");
    EXPECT_EQ(copy->hideUnmatched, 0) << "what was to be changed is changed there";
    EXPECT_EQ(row<StructDetObjReprMap>("HB workshop")->hideUnmatched, 1);
    EXPECT_EQ(row<StructDetViewRequest>("HB side")->reprMapKey, copy->key);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(isPending()) << "one step";
}

TEST_F(Compose, WhatCannotBeChangedSaysSoAndOffersEachCommandOnce) {
    select({"Standard", "General", "Assemblies", "Assembly, general"});
    EXPECT_TRUE(control<KorButtonGroup>(1011)->button(kCopy)->toolTip().contains("can be read, not changed"));
    QStringList entries;
    QTimer::singleShot(0, qApp, [&entries] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (const QAction* action : menu->actions())
            if (action->isVisible())
                entries << QString(action->text()).remove(u'&') + action->shortcut().toString();
        menu->close();
    });
    Q_EMIT tree().contextMenuRequested(tree().selectedItem(), m_dialog->pos());
    EXPECT_EQ(entries.filter("Ctrl+D").size(), 1) << entries.join(u'\n').toStdString();
    EXPECT_EQ(entries.filter("imension settings").size(), 1) << entries.join(u'\n').toStdString();
}

TEST_F(Compose, WhatAViewInAListUsesIsOpenedBelowThatView) {
    select({"User", "Hallberg: posts and beams", "HB beam 1:15"});
    showTab(4);
    for (int row = 0; row < grid().rowCount() && grid().getCellText(row, 0) != "HB top"; ++row)
        grid().setCurrentCell(row + 1, 0);
    const QAbstractItemModel& cells = *grid().model();
    for (int column = 0; column < grid().columnCount(); ++column)
        if (cells.headerData(column, Qt::Horizontal) == QStringLiteral("Representation map"))
            grid().setCurrentCell(grid().currentRow(), column);
    QTest::keyClick(&grid(), Qt::Key_Return);
    EXPECT_EQ(selected(), "HB workshop");
    EXPECT_EQ(parentOfSelected(), "HB top");
    EXPECT_EQ(tree().getItemText(tree().getParentItem(tree().getParentItem(tree().selectedItem()))),
              "HB beam 1:15");
}

TEST_F(Compose, TheTreesFollowTheListOfAMap) {
    const auto map = select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB workshop"});
    tree().expand(map);
    EXPECT_EQ(inView("HB workshop"), (std::vector<std::string>{"Main part", "Fitted parts", "Holes"}));
    grid().selectRows({0});
    QTest::keyClick(&grid(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(selected(), "HB workshop");
    EXPECT_EQ(grid().selectedRows(), std::vector{1});
    tree().expand(tree().selectedItem());
    EXPECT_EQ(inView("HB workshop"), (std::vector<std::string>{"Fitted parts", "Main part", "Holes"}));
    QTest::keyClick(&grid(), Qt::Key_Return);
    EXPECT_EQ(selected(), "Main part");
    EXPECT_EQ(parentOfSelected(), "HB workshop");
}
