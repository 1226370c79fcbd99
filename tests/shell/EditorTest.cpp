#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "controls/KorButtonGroupMenu.h"
#include "controls/KorListCtrl.h"
#include "controls/VELComboTree.h"
#include "operations/KorOdbcMan.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "session/KorDSMHandOver.h"

#include <QLabel>
#include <QMenu>
#include <QTextEdit>
#include <sqlite3.h>

namespace {

int pendingSteps() {
    return static_cast<int>(StyleDatabases::current().pending().steps().size());
}

} // namespace

TEST_F(EditorFixture, AChangedTitlePositionIsStoredByApplyAndFoundAgain) {
    open();
    select(kStyle);
    showTab(1);
    EXPECT_TRUE(pageControl<QRadioButton>(kAboveMainView)->isChecked());
    EXPECT_FALSE(button(kApply)->isEnabled());
    click(pageControl<QRadioButton>(kAboveMainView));
    EXPECT_EQ(pendingSteps(), 0);
    click(pageControl<QRadioButton>(kBelowDetail));
    EXPECT_EQ(pendingSteps(), 1);
    ASSERT_TRUE(button(kApply)->isEnabled());
    click(button(kApply));
    EXPECT_FALSE(button(kApply)->isEnabled());
    EXPECT_TRUE(KorDSMDataStructure::m_bApplyWasPressed);
    // What was applied stays, whatever Cancel takes back afterwards.
    click(pageControl<QRadioButton>(kAboveMainView));
    click(button(kCancel));
    EXPECT_EQ(m_result, QDialog::Rejected);
    close();
    m_databases.reset();
    EXPECT_EQ(stored("user.dsdb", kPosition), "4");

    KorDSMDialogFactory::getDSMDataStructure().emptyDataStructure();
    open();
    EXPECT_EQ(selected(), "HB post 1:15");
    showTab(1);
    EXPECT_TRUE(pageControl<QRadioButton>(kBelowDetail)->isChecked());
}

TEST_F(EditorFixture, ATitleThatIsBeingTypedIsStoredByOk) {
    open();
    select(kStyle);
    showTab(1);
    auto* edit = pageControl<QWidget>(1012)->findChild<QTextEdit*>();
    edit->setFocus();
    QTest::keyClicks(edit, "Shop ");
    EXPECT_EQ(pendingSteps(), 0);
    EXPECT_TRUE(button(kApply)->isEnabled());
    click(button(kOk));
    EXPECT_EQ(m_result, QDialog::Accepted);
    EXPECT_EQ(KorOdbcMan::m_DSMResetDetViewRequestCache, 1);
    close();
    m_databases.reset();
    EXPECT_EQ(stored("user.dsdb", "SELECT title_format LIKE '%Shop%' FROM detail_style "
                                  "WHERE name='HB post 1:15'"),
              "1");
}

TEST_F(EditorFixture, TheWaysOutTellTheHostWhatToReload) {
    const auto told = [this](int way, bool change) {
        open();
        select(kStyle);
        showTab(1);
        if (change)
            click(pageControl<QRadioButton>(kBelowDetail));
        KorOdbcMan::m_DSMReloadInfo = KorOdbcMan::m_DSMResetDetViewRequestCache = 0;
        click(button(way));
        return std::pair(KorOdbcMan::m_DSMReloadInfo, KorOdbcMan::m_DSMResetDetViewRequestCache);
    };
    using Flags = std::pair<int, int>; // reload, drop the cache of view requests
    EXPECT_EQ(told(kOk, false), Flags(1, 0));
    EXPECT_EQ(told(kCancel, true), Flags(1, 0));
    EXPECT_EQ(told(kUse, false), Flags(0, 0));
    EXPECT_EQ(told(kOk, true), Flags(1, 1));
}

TEST_F(EditorFixture, EverySectionShowsItsRecordsAndEveryPageOpens) {
    open();
    auto* sections = control<KorButtonGroupMenu>(1233)->buttonGroup();
    for (int i = 0; i < KorDSMDefines::kNumberOfSections; ++i) {
        click(sections->button(sections->buttonId(i)));
        EXPECT_EQ(KorDSMDialogFactory::getDSMDataStructure().getSelectedSection(), i);
        const auto addIn = select({"Standard", "General"});
        EXPECT_GT(control<KorListCtrl>(1003)->getItemCount(), 3);
        tree().expand(addIn);
        const auto group = tree().getChildItem(addIn);
        tree().selectItem(group);
        EXPECT_GT(control<KorListCtrl>(1003)->getItemCount(), 0);
        tree().expandBranch(tree().getChildItem((tree().expand(group), group)));
        for (auto entry = group; entry; entry = tree().getChildItem(entry)) {
            tree().selectItem(entry);
            for (int tab = 0; page() && page()->isVisible() && tab < 5; ++tab)
                showTab(tab);
        }
    }
}

TEST_F(EditorFixture, TheHistoryLeadsBackForwardAndUpAcrossSections) {
    open();
    const auto style = select(kStyle);
    const auto view = select(kView);
    auto* strip = control<KorButtonGroup>(1012);
    auto* sections = control<KorButtonGroupMenu>(1233)->buttonGroup();
    click(sections->button(sections->buttonId(2)));
    const auto annotation = select({"Standard", "General"});
    EXPECT_FALSE(strip->isButtonEnabled(1041));
    click(strip->button(1042));
    click(strip->button(1042));
    EXPECT_EQ(tree().selectedItem(), view);
    click(strip->button(1042));
    EXPECT_EQ(tree().selectedItem(), style);
    EXPECT_TRUE(strip->isButtonEnabled(1041));
    click(strip->button(1041));
    EXPECT_EQ(tree().selectedItem(), view);
    click(strip->button(1040));
    EXPECT_EQ(tree().selectedItem(), style);
    EXPECT_NE(annotation, nullptr);
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(tree().selectedItem(), view);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(tree().selectedItem(), style);
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(control<QLineEdit>(1210)->hasFocus());
}

TEST_F(EditorFixture, BySourceTheComboDecidesWhatTheTreeShows) {
    open();
    select(kStyle);
    auto* combo = control<VELComboTree>(1200);
    EXPECT_FALSE(combo->isEnabled());
    auto* options = control<KorButtonGroupMenu>(1233);
    QAction* fullTree = options->menuButton()->menu()->actions().front();
    fullTree->trigger();
    bool stored = true;
    KOSettings::getInstance().readBool(KOSettings::getKeyDSM(), "ShowFullTree", stored);
    EXPECT_FALSE(stored);
    ASSERT_TRUE(combo->isEnabled());
    EXPECT_EQ(tree().getItemText(tree().getRoot()).view(), "User");
    EXPECT_EQ(selected(), "HB post 1:15");
    // The arrow keys step through the sources.
    combo->setFocus();
    for (const char* group : {"Hallberg: posts and beams", "User"}) {
        EXPECT_TRUE(combo->getSelectedPath().view().ends_with(group));
        QTest::keyClick(combo, Qt::Key_Up);
    }
    EXPECT_EQ(tree().getItemText(tree().getRoot()).view(), "Shop fabrication, imperial");
    fullTree->trigger();
    EXPECT_FALSE(combo->isEnabled());
    EXPECT_EQ(tree().getItemText(tree().getRoot()).view(), "Detail styles");
}

TEST_F(EditorFixture, UseHandsTheStyleOverAndKeepsWhatIsPending) {
    open();
    changePosition();
    click(button(kUse));
    EXPECT_EQ(m_result, QDialog::Accepted);
    int status = 0;
    EXPECT_EQ(
        KorExchangeUtilities::getNamedQueue(KorDSMHandOver::kQueue, status, 0).getString("RESULT3").view(),
        "User");
    EXPECT_EQ(pendingSteps(), 1);
    open();
    EXPECT_TRUE(button(kApply)->isEnabled());
    showTab(1);
    EXPECT_TRUE(pageControl<QRadioButton>(kBelowDetail)->isChecked());
}

TEST_F(EditorFixture, NoPageOfOneSectionStaysOpenOverTheDatabaseOfAnother) {
    open();
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    select({"Standard", "General"});
    m_dialog->switchSection(KorDSMDefines::kViewDetailStyles);
    select(kStyle);
    control<KorButtonGroupMenu>(1233)->menuButton()->menu()->actions().front()->trigger();
    EXPECT_TRUE(page()->isVisible());
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    EXPECT_EQ(tree().selectedItem(), tree().getRoot());
    EXPECT_FALSE(control<KorTabCtrl>(1002)->isVisible());
    EXPECT_GT(control<KorListCtrl>(1003)->getItemCount(), 0);
}

TEST_F(EditorFixture, TheWindowComesBackInItsSize) {
    open().resize(1111, 700);
    close();
    KorDSMMainDialog again(nullptr);
    again.OnInitDialog();
    EXPECT_EQ(again.size(), QSize(1111, 700));
}

TEST_F(EditorFixture, TheFilterKeepsMatchesWithWhatIsAboveThemAndEscapeClearsIt) {
    open();
    select({"User", "Hallberg: site drawings"});
    tree().expand(tree().selectedItem());
    select(kStyle);
    auto* filter = control<QLineEdit>(1210);
    filter->setFocus();
    QTest::keyClicks(filter, "RAILING");
    EXPECT_EQ(inView("User"), std::vector<std::string>{"Hallberg: railings"});
    EXPECT_EQ(page(), nullptr) << "nobody edits what is out of sight";
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_TRUE(filter->text().isEmpty());
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(selected(), "HB post 1:15");
    KorTreeHandle user = child(tree().getRoot(), "User");
    EXPECT_EQ(inView("User").size(), 3U);
    EXPECT_TRUE(tree().isExpanded(child(user, "Hallberg: site drawings")));
    EXPECT_FALSE(tree().isExpanded(child(user, "Hallberg: railings")));

    // Where one has been before is still there, out of sight or not.
    QTest::keyClicks(filter, "railing");
    click(control<KorButtonGroup>(1012)->button(1042));
    EXPECT_EQ(selected(), "Hallberg: site drawings");
    EXPECT_TRUE(filter->text().isEmpty());
    filter->setFocus();
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_FALSE(m_dialog->isVisible());
}

TEST_F(EditorFixture, WhatIsFoundCanBeDeletedAndBroughtBackWithTheFilterSet) {
    open();
    auto* filter = control<QLineEdit>(1210);
    QTest::keyClicks(filter, "beam,");
    const std::vector<std::string> found = inView("Hallberg: posts and beams");
    ASSERT_EQ(found, std::vector<std::string>{"HB beam, long, 1:10"});
    select({"User", "Hallberg: posts and beams", "HB beam, long, 1:10"});
    answerYes();
    command(kDelete);
    EXPECT_TRUE(inView("Hallberg: posts and beams").empty());
    EXPECT_EQ(filter->text(), "beam,");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(inView("Hallberg: posts and beams"), found);
}

TEST_F(EditorFixture, TheTabKeyWalksFromTheSectionsThroughTreeAndPageToTheButtons) {
    open();
    select(kStyle);
    showTab(0);
    // The numbers of the controls where Tab stops, from the filter on around to it; 0 for those without.
    const auto walk = [this](Qt::Key key) {
        std::vector<int> stops;
        QWidget* filter = control<QLineEdit>(1210);
        filter->setFocus();
        do {
            stops.push_back(KorControls::id(QApplication::focusWidget()));
            QTest::keyClick(QApplication::focusWidget(), key);
        } while (QApplication::focusWidget() != filter && stops.size() < 40);
        std::erase(stops, 0);
        return stops;
    };
    // This page was made only when it was shown.
    const std::vector<int> style = {1210, 1000, 6003, 6009, 6100, 6101, 6002, 6102, 6103, 6104, 6105, 6106,
                                    6107, 6010, 6108, 6011, 6113, 6114, 6115, 6116, 1098, 1,    2,    1089};
    EXPECT_EQ(walk(Qt::Key_Tab), style);
    std::vector<int> back = walk(Qt::Key_Backtab);
    std::reverse(back.begin() + 1, back.end());
    EXPECT_EQ(back, style);
    select(kView);
    showTab(0);
    EXPECT_EQ(walk(Qt::Key_Tab), (std::vector<int>{1210, 1000, 1020, 1208, 1104, 1011, 1012, 1013, 1014, 1015,
                                                   1016, 1098, 1, 2, 1089}));
}
