#include "shell/EditorFixture.h"

#include "controls/VELComboTree.h"
#include "dialogs/KorDSMDialogInUse.h"

#include <QComboBox>

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
    select(kStyle);
    showTab(0);
    const auto choiceOf = [](QWidget* page, const char* name) -> QComboBox* {
        for (auto* box : page->findChildren<QComboBox*>())
            if (box->currentText() == QLatin1String(name))
                return box;
        return nullptr;
    };
    const auto rename = [&](QWidget* page, const char* from, const char* to) {
        constexpr int kRename = 3;
        const QComboBox* box = choiceOf(page, from);
        ASSERT_NE(box, nullptr);
        answerNext([to](QWidget* modal) { typeName(modal, to); });
        QWidget* line = box->parentWidget()->parentWidget(); // with the buttons beside it
        click(line->findChild<KorButtonGroup*>()->button(kRename));
    };
    rename(page(), "A3 landscape", "A3 across");
    EXPECT_TRUE(choiceOf(page(), "A3 across"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(choiceOf(page(), "A3 landscape"));

    KorDSMMainDialog other(nullptr);
    other.OnInitDialog();
    other.show();
    QApplication::processEvents();
    rename(KorControls::find<KorTabCtrl>(&other, 1002)->currentPage(), "A3 landscape", "A3 wide");
    click(KorControls::find(&other, kOk));
    select(kStyle);
    EXPECT_TRUE(choiceOf(page(), "A3 wide"));
}

TEST_F(EditorFixture, WhatStandsInNoTreeIsDeletedBesideItsChoice) {
    constexpr int kMakeOne = 1, kDeleteChosen = 5;
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    select(kStyle);
    showTab(0);
    const auto boxes = page()->findChildren<QComboBox*>();
    const auto found = std::ranges::find(boxes, QStringLiteral("A3 landscape"), &QComboBox::currentText);
    ASSERT_NE(found, boxes.end());
    const QComboBox& box = **found;
    const auto pressBeside = [&box](int id) {
        click(box.parentWidget()->parentWidget()->findChild<KorButtonGroup*>()->button(id));
    };
    bool isRefused = false;
    whenShown<KorDSMDialogInUse>([&isRefused](KorDSMDialogInUse& dialog) {
        isRefused = true;
        dialog.reject();
    });
    pressBeside(kDeleteChosen);
    EXPECT_TRUE(isRefused) << "other styles use it, too";
    EXPECT_EQ(box.currentText(), "A3 landscape");
    answerNext([](QWidget* modal) { typeName(modal, "Rows for a trial"); });
    pressBeside(kMakeOne);
    EXPECT_EQ(box.currentText(), "Rows for a trial");
    pressBeside(kDeleteChosen);
    EXPECT_EQ(box.currentText(), "None");
    EXPECT_EQ(box.findText("Rows for a trial"), -1);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.currentText(), "Rows for a trial");
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
