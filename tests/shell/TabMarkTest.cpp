#include "shell/EditorFixture.h"

#include "controls/KorLineEdit.h"
#include "controls/KorListCtrl.h"
#include "pages/PageHead.h"

#include <QTabBar>
#include <QTextEdit>

namespace {

constexpr int kDesigner = 1012;
constexpr int kCategories = 1011;

const std::vector<const char*> kOtherStyle = {"User", "Hallberg: posts and beams", "HB beam 1:15"};
const std::vector<const char*> kStandard = {"Standard", "General", "Beams"};

class TabMarkTest : public EditorFixture {
protected:
    /// The indexes of the tabs that are marked, as in "1 3".
    std::string marked() {
        const auto* bar = control<KorTabCtrl>(1002)->findChild<QTabBar*>();
        std::string indexes;
        for (int i = 0; i < bar->count(); ++i)
            if (bar->tabText(i).endsWith(" *"))
                indexes += (indexes.empty() ? "" : " ") + std::to_string(i);
        return indexes;
    }
    void undo() { press(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
};

} // namespace

TEST_F(TabMarkTest, MarksThePageOfTheRecordThatHasChangesNotKeptYet) {
    open();
    select(kStyle);
    showTab(1);
    EXPECT_EQ(marked(), "");
    click(pageControl<QRadioButton>(kBelowDetail));
    EXPECT_EQ(marked(), "1");
    click(pageControl<QRadioButton>(kAboveMainView));
    EXPECT_EQ(marked(), "") << "it is again what is stored";
    click(pageControl<QRadioButton>(kBelowDetail));
    select(kOtherStyle);
    EXPECT_EQ(marked(), "");
    select(kStandard);
    EXPECT_EQ(marked(), "");
    select(kStyle);
    EXPECT_EQ(marked(), "1");
    undo();
    EXPECT_EQ(marked(), "");
    undo();
    EXPECT_EQ(marked(), "1");
    undo();
    EXPECT_EQ(marked(), "");
    redo();
    EXPECT_EQ(marked(), "1");
    click(button(kApply));
    EXPECT_EQ(marked(), "");
}

TEST_F(TabMarkTest, ATitleCountsWhileItIsTyped) {
    open();
    select(kStyle);
    showTab(1);
    auto* title = pageControl<QWidget>(kDesigner)->findChild<QTextEdit*>();
    title->setFocus();
    QTest::keyClicks(title, "X");
    EXPECT_EQ(marked(), "1");
    EXPECT_TRUE(button(kApply)->isEnabled());
    QTest::keyClick(title, Qt::Key_Backspace);
    EXPECT_EQ(marked(), "");
    EXPECT_FALSE(button(kApply)->isEnabled());
    QTest::keyClick(title, Qt::Key_Return);
    QTest::keyClicks(title, "line");
    EXPECT_TRUE(button(kApply)->isEnabled());
    for (int i = 0; i < 9; ++i)
        QTest::keyClick(title, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(marked(), "");
    EXPECT_FALSE(button(kApply)->isEnabled());
    QTest::keyClicks(title, "X");
    showTab(2);
    EXPECT_EQ(marked(), "1");
}

TEST_F(TabMarkTest, ANameCountsWhileItIsTypedAndUntilItIsKept) {
    open();
    select(kStyle);
    showTab(1);
    auto* name = page()->findChild<PageHead*>()->findChild<KorLineEdit*>();
    name->setFocus();
    QTest::keyClick(name, Qt::Key_End);
    QTest::keyClicks(name, "a");
    EXPECT_EQ(marked(), "1");
    QTest::keyClick(name, Qt::Key_Escape);
    EXPECT_EQ(marked(), "");
    QTest::keyClicks(name, "HB column");
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(marked(), "0 1 2 3 4") << "it stands above each page";
    undo();
    EXPECT_EQ(marked(), "");
}

TEST_F(TabMarkTest, AChangeThatOtherPagesMustShowMarksItsOwnPageOnly) {
    open();
    select(kView);
    showTab(4);
    auto* list = pageControl<KorListCtrl>(kCategories);
    list->setFocus();
    list->setCurrentIndex(list->model()->index(0, 0));
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(marked(), "4");
    const TabContent* group = control<KorTabCtrl>(1002)->currentContent();
    for (int i = 0; i < group->pageCount(); ++i)
        EXPECT_EQ(static_cast<KorDSMPage*>(group->page(i))->needsRefresh(), i != 4) << "page " << i;
    undo();
    EXPECT_EQ(marked(), "");
}

TEST_F(TabMarkTest, ACategoryThatChangesAnywhereLetsTheListOfViewsBeFilledAnew) {
    open();
    select(kStyle);
    const KorDSMPage* definition = m_dialog->pages().page(2004);
    EXPECT_FALSE(definition->needsRefresh());
    KorDSMMainWindow::sendMessage(DsmCategoriesChanged());
    EXPECT_TRUE(definition->needsRefresh());
}
