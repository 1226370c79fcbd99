#include "controls/KorButtonGroupMenu.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/VELComboTree.h"
#include "data/StyleDatabases.h"
#include "dialogs/KorDSMDialog.h"
#include "dialogs/KorDSMDialogAddView.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "services/CKorHelp.h"
#include "shell/CommandHelp.h"
#include "shell/EditorFixture.h"
#include "shell/HelpWindow.h"

#include <QComboBox>
#include <QMenu>
#include <QToolBar>
#include <QTreeWidget>

#include <fstream>

namespace {

bool has(const std::string& name) {
    return StyleDatabases::current().source(SourceId::user())->table(kTableDetailStyle).find(KorString(name));
}

} // namespace

TEST_F(EditorFixture, TheUndoMenuNamesTheStepsAndTakesBackAllDownToTheOneChosen) {
    open();
    select(kStyle);
    showTab(1);
    auto* strip = control<KorButtonGroup>(1211);
    EXPECT_FALSE(strip->isButtonEnabled(1));
    click(pageControl<QRadioButton>(kBelowDetail));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(pageControl<QRadioButton>(kAboveMainView)->isChecked());
    EXPECT_FALSE(button(kApply)->isEnabled());
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(pageControl<QRadioButton>(kBelowDetail)->isChecked());
    EXPECT_TRUE(button(kApply)->isEnabled());
    showTab(3);
    click(pageControl<QRadioButton>(2310));
    ASSERT_TRUE(strip->isButtonEnabled(1));
    QMenu* menu = strip->button(1)->menu();
    Q_EMIT menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 2);
    EXPECT_EQ(menu->actions()[1]->text(), "change of Title position of \"HB post 1:15\"");
    menu->actions()[1]->trigger();
    EXPECT_FALSE(isPending());
    EXPECT_FALSE(strip->isButtonEnabled(1));
    click(strip->button(2));
    showTab(1);
    EXPECT_TRUE(pageControl<QRadioButton>(kBelowDetail)->isChecked());
    click(button(3));
    EXPECT_FALSE(strip->isButtonEnabled(1)) << "what is stored is taken back no more";
    EXPECT_FALSE(strip->isButtonEnabled(2));
}

TEST_F(EditorFixture, APageLetsGoOfWhatUndoTakesAwayEvenOutOfSight) {
    open();
    select(kStyle);
    answerNext([](QWidget* modal) { typeName(modal, "HB post 1:20"); });
    command(kCopy);
    EXPECT_TRUE(page()->isVisible());
    control<QLineEdit>(1210)->setText("railing");
    click(control<KorButtonGroup>(1211)->button(1));
    EXPECT_FALSE(has("HB post 1:20"));
    EXPECT_EQ(selected(), "HB post 1:15") << "where it was copied";
    EXPECT_EQ(page()->getData().as<KorDSMDatabaseItem>(), KorDSMSectionTree::itemOf(tree().selectedItem()));
}

TEST_F(EditorFixture, ANewStyleComesIntoItsCategoryAndARecordInUseStays) {
    open();
    select({"User", "Hallberg: railings"});
    answerNext([](QWidget* modal) { typeName(modal, "HB railing 1:5", 2304); });
    command(kNew);
    EXPECT_TRUE(has("HB railing 1:5"));
    EXPECT_EQ(tree().getItemText(tree().getParentItem(tree().selectedItem())).view(), "Hallberg: railings");

    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    const auto group = select({"User"});
    tree().expand(group);
    const auto filed = tree().getChildItem(group);
    tree().expand(filed);
    tree().selectItem(tree().getChildItem(filed));
    const std::string name = selected();
    bool refused = false;
    answerNext([&refused](QWidget* modal) {
        refused = qobject_cast<KorDSMDialogInUse*>(modal) != nullptr;
        QTest::keyClick(modal, Qt::Key_Escape);
    });
    command(kDelete);
    EXPECT_TRUE(refused);
    EXPECT_EQ(selected(), name);
}

TEST_F(EditorFixture, ADraggedStyleIsFiledWhereItIsDroppedAndRefusedInAnotherDatabase) {
    open();
    select(kView);
    EXPECT_FALSE(tree().isDragAllowed());
    const auto style = select(kStyle);
    EXPECT_TRUE(tree().isDragAllowed());
    const auto railings = child(child(tree().getRoot(), "User"), "Hallberg: railings");
    Q_EMIT tree().dropRequested(style, railings);
    const auto moved = tree().selectedItem();
    EXPECT_EQ(tree().getParentItem(moved), railings);
    EXPECT_EQ(tree().getItemText(moved).view(), "HB post 1:15");
    const auto standard = child(child(tree().getRoot(), "Standard"), "General");
    tree().expand(standard);
    bool refused = false;
    answerNext([&refused](QWidget* modal) {
        refused = qobject_cast<QMessageBox*>(modal) != nullptr;
        QTest::keyClick(modal, Qt::Key_Escape);
    });
    Q_EMIT tree().dropRequested(moved, tree().getChildItem(standard));
    EXPECT_TRUE(refused);
    EXPECT_EQ(tree().getParentItem(moved), railings);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(isPending());
    EXPECT_NE(select(kStyle), nullptr);
}

TEST_F(EditorFixture, OddNamesAreKeptAsTheyWereTyped) {
    const QString odd =
        QString::fromUtf8("100 %s \"x\" 'y' \\n {a} \xD7\xA9\xD7\x9C ") + QString(10000, u'z');
    open();
    select(kStyle);
    answerNext([&odd](QWidget* modal) {
        auto* edit = KorControls::find<QLineEdit>(modal, 1015);
        edit->selectAll();
        edit->insert(odd);
        QTest::mouseClick(KorControls::find<QPushButton>(modal, 1), Qt::LeftButton);
    });
    press(Qt::Key_F2);
    EXPECT_TRUE(has(odd.toStdString()));
    EXPECT_EQ(selected(), odd.toStdString());
    answerNext([this](QWidget* question) {
        EXPECT_LT(question->width(), m_dialog->width()) << "no name makes a window larger than the screen";
        QTest::keyClick(question, Qt::Key_Escape);
    });
    command(kDelete);
    EXPECT_TRUE(has(odd.toStdString()));
    showTab(1);
    click(button(1));
    close();
    m_databases.reset();
    EXPECT_EQ(stored("user.dsdb", "SELECT name FROM detail_style WHERE key=1"), odd.toStdString());
}

TEST_F(EditorFixture, AStyleGoesIntoAFileAndComesInAgainUnlessEscapeIsPressed) {
    const std::string file = (m_folder.path() / "beam.dsdb").string();
    open();
    const auto general = select({"Standard", "General"});
    tree().expand(general);
    const auto category = tree().getChildItem(general);
    tree().expand(category);
    tree().selectItem(tree().getChildItem(category));
    const std::string name = selected();
    QString said;
    answerNext([&](QWidget* dialog) { nameFile(dialog, file); });
    readNextMessage(said);
    command(kExport);
    EXPECT_TRUE(said.contains(QString::fromStdString(name))) << said.toStdString();
    EXPECT_TRUE(std::filesystem::exists(file));

    select(kStyle);
    importFile(file, [this](KorDSMDialogImport& dialog) {
        EXPECT_FALSE(isPending()) << "looking changes nothing";
        auto* escape = new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, {});
        QApplication::postEvent(m_dialog.get(), escape, Qt::LowEventPriority);
        click(KorControls::find(&dialog, 1));
    });
    EXPECT_FALSE(isPending());
    EXPECT_TRUE(m_dialog->isVisible());

    readNextMessage(said);
    importFile(file, [](KorDSMDialogImport& dialog) {
        auto* style = KorControls::find<QTreeWidget>(&dialog, 2374)->topLevelItem(0)->child(0);
        style->setCheckState(0, Qt::Unchecked);
        QApplication::processEvents();
        EXPECT_FALSE(KorControls::find(&dialog, 1)->isEnabled()) << "nothing is chosen";
        style->setCheckState(0, Qt::Checked);
        QApplication::processEvents();
        click(KorControls::find(&dialog, 1));
    });
    EXPECT_TRUE(said.startsWith("1 detail style was imported.")) << said.toStdString();
    EXPECT_TRUE(isPending());
    EXPECT_EQ(selected(), name);

    // Nothing new would come, but what came before still has to be applied.
    importFile(file, [](KorDSMDialogImport& dialog) {
        EXPECT_FALSE(KorControls::find(&dialog, 1)->isEnabled());
        dialog.reject();
    });
    EXPECT_TRUE(button(kApply)->isEnabled());
    EXPECT_EQ(KorDSMDialogFactory::getDSMDataStructure().getUpdateStatus(),
              KorDSMDataStructure::kReloadRequested);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(isPending());
}

TEST_F(EditorFixture, WhatARecordRefersToFollowsInTheTreeAndIsTakenBack) {
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    const auto request = select(
        {"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB chain", "HB holes, running"});
    showTab(0);
    tree().expand(request);
    const std::vector<std::string> before = inView("HB holes, running");
    ASSERT_EQ(before.size(), 2U);
    constexpr int kEndPoints = 6014;
    auto* points = pageControl<QComboBox>(kEndPoints);
    points->setFocus();
    QTest::keyClick(points, Qt::Key_Down);
    tree().expand(request);
    const std::vector<std::string> after = inView("HB holes, running");
    ASSERT_EQ(after.size(), 3U);
    EXPECT_EQ(after.back(), points->currentText().toStdString());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(points->currentIndex(), 0);
    tree().expand(request);
    EXPECT_EQ(inView("HB holes, running"), before);
}

TEST_F(EditorFixture, HelpOpensBesideTheEditorAndLeadsBack) {
    open();
    press(Qt::Key_F1);
    auto* help = m_dialog->findChild<HelpWindow*>();
    ASSERT_NE(help, nullptr);
    const QString terms = help->windowTitle();
    QList<QAction*> tools = help->findChild<QToolBar*>()->actions();
    EXPECT_FALSE(tools[0]->isEnabled());
    tools[2]->trigger();
    EXPECT_NE(help->windowTitle(), terms);
    tools[0]->trigger();
    EXPECT_EQ(help->windowTitle(), terms);
    EXPECT_TRUE(m_dialog->isVisible());
    const QWidget* contents = help->findChild<QToolBar*>()->widgetForAction(tools[2]);
    const QPoint place = contents->mapTo(help, contents->rect().center());
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());

    // A modal dialog lets its help through, and has the keys again after it.
    select(kStyle);
    whenShown<KorDSMDialog>([&](KorDSMDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_F1);
        ASSERT_TRUE(QTest::qWaitForWindowActive(help));
        const QString asked = help->windowTitle();
        QTest::mouseClick(help->windowHandle(), Qt::LeftButton, {}, place);
        EXPECT_NE(help->windowTitle(), asked);
        QTest::keyClick(help, Qt::Key_Escape);
        EXPECT_FALSE(help->isVisible());
        EXPECT_TRUE(dialog.isActiveWindow());
        QTest::keyClick(&dialog, Qt::Key_F1);
        dialog.reject();
    });
    command(kCopy);
    EXPECT_FALSE(help->isVisible()) << "it was not there before";
    press(Qt::Key_F1);
    EXPECT_TRUE(help->isVisible());
}

TEST_F(EditorFixture, KeysLeadFromTheTreeToEachPageAndStore) {
    open();
    EXPECT_EQ(QApplication::focusWidget(), &tree());
    select(kStyle);
    const KorTabPage* first = page();
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_NE(page(), first);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    for (int stops = 0; stops < 9 && !qobject_cast<QRadioButton*>(QApplication::focusWidget()); ++stops)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pageControl<QRadioButton>(kAboveMainView)) << "the chosen one";
    press(Qt::Key_F6, Qt::ShiftModifier);
    press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(page(), first);
    EXPECT_EQ(QApplication::focusWidget(), &tree());
    press(Qt::Key_F6);
    EXPECT_TRUE(control<KorTabCtrl>(1002)->isAncestorOf(QApplication::focusWidget()));
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &tree());
    changePosition();
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(m_result, QDialog::Accepted);
    EXPECT_FALSE(isPending());
}

// In both languages, at its button and in the menus.
TEST_F(EditorFixture, F1OpensTheHelpOfEachCommand) {
    open();
    std::string said;
    const auto expectHelp = [&said](const QObject* command, const QString& name) {
        said.clear();
        EXPECT_TRUE(CommandHelp::show(command)) << name.toStdString();
        const std::filesystem::path page = said.substr(0, said.find('#'));
        const std::string place = said.substr(std::min(said.find('#'), said.size() - 1) + 1);
        EXPECT_TRUE(!place.empty() || page.stem() != "_Drawing_Style_Manager") << name.toStdString();
        for (const char* language : {"en", "de"}) {
            std::ifstream in(page.parent_path().parent_path() / language / page.filename());
            const std::string text{std::istreambuf_iterator<char>(in), {}};
            EXPECT_NE(text.find(place.empty() ? "<h1>" : "<a name=\"" + place + "\""), std::string::npos)
                << said << language;
        }
    };
    CKorHelp::setViewer([&said](const std::filesystem::path& page, const KorString& place) {
        said = page.string() + '#' + place.toStdString();
    });
    int buttons = 0;
    for (const int strip : {1011, 1012, 1211, 1212})
        for (const QToolButton* each : control<QWidget>(strip)->findChildren<QToolButton*>()) {
            expectHelp(each, each->accessibleName());
            ++buttons;
        }
    EXPECT_GE(buttons, 16);
    for (const Path& path : {kStyle, kView, Path{"User", "Hallberg: posts and beams"}, Path{"User"}}) {
        select(path);
        QTimer::singleShot(0, m_dialog.get(), [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions())
                if (!action->isSeparator())
                    expectHelp(action, action->text());
            const QList<QAction*> actions = menu->actions();
            menu->setActiveAction(*std::ranges::find_if(actions, &QAction::isEnabled));
            said.clear();
            QTest::keyClick(menu, Qt::Key_F1);
            EXPECT_NE(said.find("#command-"), std::string::npos) << said;
        });
        Q_EMIT tree().contextMenuRequested(tree().selectedItem(), m_dialog->pos());
    }
    for (QAction* action : control<KorButtonGroupMenu>(1233)->checkMenu()->actions())
        if (!action->isSeparator())
            expectHelp(action, action->text());
    select(kStyle);
    control<KorButtonGroup>(1011)->button(kCopy)->setFocus();
    press(Qt::Key_F1);
    EXPECT_TRUE(said.ends_with("#command-33560")) << said;
}

TEST_F(EditorFixture, AStyleGetsLosesAndReordersItsViews) {
    open();
    const auto choose = [this](const char* command) {
        chooseInMenu(command);
        Q_EMIT tree().contextMenuRequested(tree().selectedItem(), m_dialog->pos());
    };
    const auto views = [this] { return inView("HB post 1:15"); };
    using Names = std::vector<std::string>;
    const Names before = {"HB front", "HB side", "HB section"};
    select(kView);
    EXPECT_EQ(views(), before);
    choose("Move view down");
    EXPECT_EQ(views(), (Names{"HB side", "HB front", "HB section"}));
    EXPECT_EQ(selected(), "HB front");
    choose("Remove view from the style");
    EXPECT_EQ(views(), (Names{"HB side", "HB section"}));
    EXPECT_EQ(selected(), "HB post 1:15");
    select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB side"});
    const auto answer = [](int radio, const char* view) {
        whenShown<KorDSMDialogAddView>([radio, view](KorDSMDialogAddView& dialog) {
            click(KorControls::find(&dialog, radio));
            auto* combo = KorControls::find<VELComboTree>(&dialog, 2395);
            ASSERT_TRUE(combo->selectName(view));
            Q_EMIT combo->entrySelected(combo->selectedEntry());
            click(KorControls::find(&dialog, 1));
        });
    };
    answer(2391, "HB top");
    choose("Add view…");
    EXPECT_EQ(views(), (Names{"HB side", "HB top", "HB section"}));
    EXPECT_EQ(selected(), "HB top");
    EXPECT_TRUE(page()->isVisible());

    // The same in the list on the style's page, and across styles.
    select({"User", "Hallberg: posts and beams", "HB post 1:15"});
    showTab(4);
    auto& grid = *page()->findChild<KorMFCGridCtrl*>();
    grid.selectRows({0});
    answer(2392, "HB section");
    QTest::keyClick(&grid, Qt::Key_Insert);
    EXPECT_EQ(views(), (Names{"HB side", "HB section 1", "HB top", "HB section"}));
    QTest::keyClick(&grid, Qt::Key_End, Qt::AltModifier);
    EXPECT_EQ(views(), (Names{"HB side", "HB top", "HB section", "HB section 1"}));
    EXPECT_EQ(grid.selectedRows(), std::vector{3});
    QTest::keyClick(&grid, Qt::Key_X, Qt::ControlModifier);
    grid.selectRows({0});
    QTest::keyClick(&grid, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(views(), (Names{"HB side", "HB section 1", "HB top", "HB section"}));
    for (int step = 0; step < 7; ++step)
        press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(views(), before);
    EXPECT_FALSE(isPending());
    click(button(2));
}

TEST_F(EditorFixture, ViewsAndClippingStrategiesAreRenamedByTheSameKeyOnTheirPages) {
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    select({"User", "Hallberg: posts and beams", "HB beam, long, 1:10", "HB front, shortened"});
    showTab(0);
    answerNext([](QWidget* modal) { typeName(modal, "HB front, cut"); });
    press(Qt::Key_F2);
    EXPECT_EQ(selected(), "HB front, cut");
    showTab(2);
    auto* strategy = pageControl<QComboBox>(1091);
    answerNext([](QWidget* modal) { typeName(modal, "HB very long beams"); });
    QTest::keyClick(strategy, Qt::Key_F2);
    EXPECT_EQ(strategy->currentText(), "HB very long beams");
    for (const int tab : {2, 3}) {
        showTab(tab);
        const std::string name = "HB front, cut " + std::to_string(tab);
        answerNext([&name](QWidget* modal) { typeName(modal, name.c_str()); });
        m_dialog->activateWindow();
        QTest::keyClick(&tree(), Qt::Key_F2);
        EXPECT_EQ(selected(), name) << "in the tree it is the view";
    }
}

TEST_F(EditorFixture, WhatIsCopiedWhereItIsUsedComesIntoItsOwnSectionToo) {
    open();
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    tree().expand(select({"User", "Hallberg: workshop"}));
    const std::vector<std::string> before = inView("Hallberg: workshop");
    m_dialog->switchSection(KorDSMDefines::kViewDetailStyles);
    const auto isOffered = [this] {
        const QList<QComboBox*> boxes = page()->findChildren<QComboBox*>();
        return std::ranges::any_of(boxes, [](const QComboBox* box) {
            return box->findText("HB copied profile", Qt::MatchEndsWith) >= 0;
        });
    };
    const Path points = {"User",     "Hallberg: posts and beams", "HB post 1:15", "HB front",
                         "HB chain", "HB holes, running",         "HB start"};
    const auto entry = select(points);
    EXPECT_FALSE(isOffered());
    tree().selectItem(child(entry, "HB main profile"));
    answerNext([](QWidget* modal) { typeName(modal, "HB copied profile"); });
    command(kCopy);
    EXPECT_EQ(selected(), "HB copied profile");
    select(points);
    EXPECT_TRUE(isOffered());
    tree().selectItem(child(entry, "HB copied profile"));
    EXPECT_EQ(inView("HB start").size(), 2U);
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    EXPECT_EQ(inView("Hallberg: workshop").size(), before.size() + 1);
    select({"User", "Hallberg: workshop", "HB copied profile"});

    // Deleted in the one section it is gone in the other.
    m_dialog->switchSection(KorDSMDefines::kViewDetailStyles);
    answerYes();
    command(kDelete);
    EXPECT_EQ(inView("HB start").size(), 1U);
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    EXPECT_EQ(inView("Hallberg: workshop"), before);
    EXPECT_EQ(selected(), "Hallberg: workshop");
}
