#include "shell/EditorFixture.h"

#include "controls/VELComboTree.h"

// Every change of items reaches all parts of the window.

namespace {

// The combo of the section that is shown.
VELComboTree* sourceCombo(QWidget& window) {
    for (auto* combo : window.findChildren<VELComboTree*>())
        if (combo->isVisibleTo(&window))
            return combo;
    return nullptr;
}

KorString pathOf(std::initializer_list<const char*> names) {
    KorString path;
    for (const char* name : names)
        path = path.isEmpty() ? KorString(name) : path + VELComboTree::GetPathDelimiter() + KorString(name);
    return path;
}

} // namespace

TEST_F(EditorFixture, ListsOfPagesFollowANewNameThatIsTakenBackOrStoredByAnotherWindow) {
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    select(kView);
    showTab(0);
    constexpr int kViews = 1020;
    constexpr int kRename = 1104;
    const KorString path = pathOf({"Hallberg: posts and beams", "HB front"});
    const auto shown = [this] { return pageControl<VELComboTree>(kViews)->getSelectedPath(); };
    const auto rename = [this](QWidget* page, const char* name) {
        answerNext([name](QWidget* modal) { typeName(modal, name); });
        click(KorControls::find(page, kRename));
    };
    ASSERT_EQ(shown().view(), path.view());
    rename(page(), "Quay front");
    EXPECT_NE(shown().view(), path.view());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown().view(), path.view());

    KorDSMMainDialog other(nullptr);
    other.OnInitDialog();
    other.show();
    QApplication::processEvents();
    KorDSMDatabaseItem* view = KorDSMSectionTree::itemOf(other.currentTree().control()->selectedItem());
    ASSERT_TRUE(view && view->getDisplayName() == KorString("HB front"));
    rename(KorControls::find<KorTabCtrl>(&other, 1002)->currentPage(), "Pier front");
    click(KorControls::find(&other, kOk));
    select({"User", "Hallberg: posts and beams", "HB post 1:15", "Pier front"});
    EXPECT_EQ(shown().view(), pathOf({"Hallberg: posts and beams", "Pier front"}).view());
}

TEST_F(EditorFixture, SourceComboAndCommandsFollowDeletionAndUndoOfACategory) {
    open();
    auto* strip = control<KorButtonGroup>(1011);
    VELComboTree* combo = sourceCombo(*m_dialog);
    ASSERT_NE(combo, nullptr);
    const KorString path = pathOf({"User", "Hallberg: railings"});
    ASSERT_NE(combo->findEntry(path), nullptr);
    const auto category = select({"User", "Hallberg: railings"});
    tree().expand(category);
    int styles = 0;
    while (tree().childCount(category) > 0) {
        tree().selectItem(tree().getChildItem(category));
        answerYes();
        command(kDelete);
        ++styles;
    }
    tree().selectItem(category);
    ASSERT_TRUE(strip->isButtonEnabled(kDelete));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(tree().childCount(category), 1);
    tree().selectItem(category);
    EXPECT_FALSE(strip->isButtonEnabled(kDelete)) << "the style would be shown nowhere";
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tree().selectedItem(), category);
    ASSERT_TRUE(strip->isButtonEnabled(kDelete));

    answerYes();
    command(kDelete);
    EXPECT_EQ(combo->findEntry(path), nullptr);
    press(Qt::Key_Z, Qt::ControlModifier);
    const KorTreeHandle back = combo->findEntry(path);
    ASSERT_NE(back, nullptr);
    const auto shown = select({"User", "Hallberg: railings"});
    EXPECT_EQ(combo->getEntryData(back).as<KorDSMDatabaseItem>(), KorDSMSectionTree::itemOf(shown));
    EXPECT_EQ(combo->getSelectedPath().view(), path.view());
    for (int step = 0; step < styles; ++step)
        press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(tree().childCount(shown), styles);
    EXPECT_FALSE(isPending());
}
