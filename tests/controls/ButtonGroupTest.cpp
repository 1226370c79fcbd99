#include "controls/KorButtonGroup.h"
#include "controls/KorButtonGroupMenu.h"
#include "support/Widgets.h"

#include <QMenu>
#include <QToolButton>

namespace {

class ButtonGroup : public testing::Test {
protected:
    ButtonGroup() {
        for (const int id : {1029, 1030, 1032})
            strip.addButton(id, KorString("Button ") + KorString::number(id), QIcon());
        QObject::connect(&strip, &KorButtonGroup::buttonPressed, &strip,
                         [this](int id) { pressed.push_back(id); });
        showActive(strip);
    }

    KorButtonGroup strip;
    std::vector<int> pressed;
};

} // namespace

TEST_F(ButtonGroup, ButtonsAreReachedByMouseAndArrowKeys) {
    QTest::mouseClick(strip.button(1030), Qt::LeftButton);
    strip.enableButton(1030, false);
    strip.button(1029)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(strip.button(1029), Qt::Key_Right);
    EXPECT_TRUE(strip.button(1032)->hasFocus()) << "a disabled button is passed over";
    QTest::keyClick(strip.button(1032), Qt::Key_Return);
    QTest::mouseClick(strip.button(1030), Qt::LeftButton);
    EXPECT_EQ(pressed, (std::vector{1030, 1032}));
    int stops = 0;
    for (const int id : {1029, 1030, 1032})
        stops += (strip.button(id)->focusPolicy() & Qt::TabFocus) ? 1 : 0;
    EXPECT_EQ(stops, 1) << "the strip is one stop of the Tab key";
    EXPECT_EQ(strip.button(1029)->accessibleName(), QStringLiteral("Button 1029"));
}

TEST_F(ButtonGroup, DisablingTheStripKeepsEachButtonsOwnState) {
    strip.enableButton(1030, false);
    strip.enableWindow(false);
    strip.enableButton(1032, true);
    EXPECT_FALSE(strip.button(1032)->isEnabled());
    EXPECT_TRUE(strip.isButtonEnabled(1032));
    strip.enableWindow(true);
    EXPECT_TRUE(strip.button(1029)->isEnabled());
    EXPECT_FALSE(strip.button(1030)->isEnabled());
}

TEST_F(ButtonGroup, OneButtonOfACheckableStripIsDown) {
    strip.setCheckable(true);
    strip.setCheckedButton(1030);
    EXPECT_TRUE(pressed.empty());
    QTest::mouseClick(strip.button(1032), Qt::LeftButton);
    QTest::mouseClick(strip.button(1032), Qt::LeftButton);
    EXPECT_EQ(strip.checkedButton(), 1032);
    EXPECT_EQ(pressed, (std::vector{1032, 1032}));
}

TEST(ButtonGroupMenu, ItemsAreCheckedByTheUserAndTheProgram) {
    KorButtonGroupMenu menu;
    menu.setMenuButton(1089, "Options", QIcon());
    EXPECT_EQ(menu.addMenuItem("Full tree"), 0);
    EXPECT_EQ(menu.addMenuItem("Warn"), 1);
    std::vector<std::pair<int, bool>> told;
    QObject::connect(&menu, &KorButtonGroupMenu::toggled, &menu,
                     [&](int index, bool checked) { told.emplace_back(index, checked); });
    menu.setCheck(0, true);
    EXPECT_TRUE(told.empty());
    auto* popup = menu.findChild<QMenu*>();
    popup->popup(QPoint(0, 0));
    QTest::mouseClick(popup, Qt::LeftButton, {}, popup->actionGeometry(popup->actions()[1]).center());
    EXPECT_EQ(told, (std::vector<std::pair<int, bool>>{{1, true}}));
    EXPECT_TRUE(menu.isChecked(0));
    EXPECT_TRUE(menu.isChecked(1));
}
