#include "controls/label/DrawingColorMenu.h"
#include "controls/label/DrawingColors.h"
#include "controls/label/LabelCombo.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "support/Accessibility.h"
#include "support/RandomLabels.h"
#include "support/Widgets.h"

#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>
#include <QTextEdit>

namespace {

// A page with two designers and a field behind them.
class LabelDesigner : public testing::Test {
protected:
    void SetUp() override {
        auto* column = new QVBoxLayout(&page);
        for (QWidget* part : std::initializer_list<QWidget*>{designer, other, behind})
            column->addWidget(part);
        designer->SetObjectTypeKey(17);
        designer->SetDefaultFont("DejaVu Sans");
        designer->SetDefaultSize(3.5);
        designer->SetListOfSizes({2.5, 3.5, 7});
        other->SetDefaultFont("DejaVu Serif");
        QObject::connect(designer, &VELLabelDesignerCtrlWrap::changed, &page, [this] { ++edits; });
        page.show();
        designer->setFocus();
        showActive(page);
    }

    std::string text() const { return designer->GetString().toStdString(); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
    }
    void toEnd() { press(Qt::Key_End, Qt::ControlModifier); }
    void type(const char* letters) { QTest::keyClicks(QApplication::focusWidget(), letters); }

    // Presses keys in the menu that has opened; without a window manager nobody else activates the page then.
    void inMenu(std::initializer_list<int> keys) {
        for (const int key : keys) {
            QWidget* menu = QApplication::activePopupWidget();
            ASSERT_TRUE(menu);
            QTest::keyClick(menu->focusWidget() ? menu->focusWidget() : menu, Qt::Key(key));
        }
        showActive(page);
        EXPECT_EQ(QApplication::focusWidget(), field);
    }

    QMenu* variables() {
        for (QMenu* menu : designer->findChildren<QMenu*>()) {
            if (!qobject_cast<DrawingColorMenu*>(menu))
                return menu;
        }
        return nullptr;
    }

    QWidget page;
    VELLabelDesignerCtrlWrap* designer = new VELLabelDesignerCtrlWrap;
    VELLabelDesignerCtrlWrap* other = new VELLabelDesignerCtrlWrap;
    QLineEdit* behind = new QLineEdit;
    QTextEdit* field = designer->findChild<QTextEdit*>();
    int edits = 0;
};

} // namespace

TEST_F(LabelDesigner, MakesATitleWithTheKeyboardAlone) {
    press(Qt::Key_B, Qt::ControlModifier);
    type("Part {");
    press(Qt::Key_Space, Qt::ControlModifier);
    inMenu({Qt::Key_Down, Qt::Key_Return});
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_Return);
    press(Qt::Key_I, Qt::ControlModifier);
    press(Qt::Key_U, Qt::ControlModifier);
    type("x");
    EXPECT_EQ(text(), "{L1}{b=1}Part {{{number}{b=0}{br}{i=1;u=1}x");
    EXPECT_GE(edits, 9);
}

TEST_F(LabelDesigner, FormatsTheSelectionByItsTools) {
    designer->SetString("{L1}a{name}b");
    toEnd();
    press(Qt::Key_Left, Qt::ShiftModifier);
    press(Qt::Key_Left, Qt::ShiftModifier);
    const auto combos = designer->findChildren<LabelCombo*>();
    ASSERT_EQ(combos.size(), 2);
    QTest::keyClick(combos[0], Qt::Key_End);
    QTest::keyClick(combos[1], Qt::Key_End);
    auto* palette = designer->findChild<DrawingColorMenu*>();
    palette->popup(QPoint());
    inMenu({Qt::Key_Home, Qt::Key_Right, Qt::Key_Return});
    EXPECT_FALSE(palette->isVisible());
    const std::string font = combos[0]->currentText().toStdString();
    EXPECT_NE(font, "DejaVu Sans");
    EXPECT_EQ(combos[0]->toolTip(), LabelDesignerTexts().font);
    EXPECT_EQ(text(), "{L1}a{font=" + font + ";size=7;color=2}{name}b");

    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(combos[1]->currentData().toDouble(), 3.5);
    designer->SetString("{L1}{size=4.2;font=Nowhere}a");
    EXPECT_EQ(combos[0]->currentText(), "Nowhere");
    EXPECT_EQ(combos[0]->toolTip(), LabelDesignerTexts().fontMissing);
    EXPECT_EQ(combos[1]->currentText(), QLocale().toString(4.2) + " mm");
    designer->SetGUIIUnits([](double size) { return QString::number(size / 25.4, 'f', 3) + '"'; });
    EXPECT_EQ(combos[1]->currentText(), "0.165\"");
}

TEST_F(LabelDesigner, TreatsAVariableAsOneLetter) {
    designer->SetString("{L1}{u=1}{name}{number}");
    toEnd();
    type("x");
    EXPECT_EQ(text(), "{L1}{u=1}{name}{number}x");
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    EXPECT_EQ(text(), "{L1}{u=1}{name}");

    const QRect start = field->cursorRect(QTextCursor(field->document()));
    QTest::mouseClick(field->viewport(), Qt::LeftButton, {}, start.center() + QPoint(12, 0));
    EXPECT_EQ(field->textCursor().selectedText(), QString(QChar::ObjectReplacementCharacter));
    type("y");
    EXPECT_EQ(text(), "{L1}{u=1}y");
}

TEST_F(LabelDesigner, TakesEditsBackToTheVeryBytesStored) {
    const char* stored = "{L1}{color=7}{b=1}{b=0}{name}{color=3}{i=1}";
    designer->SetString(stored);
    toEnd();
    type("abc");
    EXPECT_EQ(text(), "{L1}{color=7}{name}abc");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text(), stored);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(text(), "{L1}{color=7}{name}abc");
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Backspace);
    EXPECT_EQ(text(), stored);
    EXPECT_EQ(edits, 8);
}

TEST_F(LabelDesigner, AddsToAnyLabelWithoutChangingTheRest) {
    const LabelStyle defaults{"DejaVu Sans", 3.5, 3};
    RandomLabels labels(815);
    for (int i = 0; i < 150; ++i) {
        LabelRuns runs = labels.make();
        const KorString stored = LabelFormat::write(runs, defaults);
        designer->SetString(stored);
        ASSERT_EQ(designer->GetString(), stored);
        toEnd();
        type("x");
        LabelFormat::append(runs, {LabelRun::kText, "x", runs.empty() ? defaults : runs.back().style});
        ASSERT_EQ(LabelFormat::parse(designer->GetString(), defaults).runs, runs) << stored.c_str();
        press(Qt::Key_Backspace);
        ASSERT_EQ(designer->GetString(), stored);
    }
}

TEST_F(LabelDesigner, KeepsEveryTextThatNobodyEdits) {
    for (const char* stored : {"", "{L1}", "old title\r\nof two lines\n", "{name} {L1}", "{L2}{name:upper}",
                               "{L1}{wrong", "{L1}caf\xe9", "caf\xe9\xff",
                               "{L1}a\xef\xbf\xbc"
                               "b\xe2\x80\xa9"
                               "c\xc2\xa0",
                               "{L1}{size=1e99}"}) {
        designer->SetString(stored);
        designer->SetDefaultSize(5);
        designer->SetBkColor(0xFFFFFF);
        designer->Enable(false);
        designer->Enable(true);
        EXPECT_EQ(text(), stored);
    }
    EXPECT_EQ(edits, 0);
    designer->SetString("old {title}\nof two lines");
    toEnd();
    type("!");
    EXPECT_EQ(text(), "{L1}old {{title}}{br}of two lines!");
}

TEST_F(LabelDesigner, EditsWhatItDoesNotUnderstandOnlyAsText) {
    designer->SetString("{L1}{wrong");
    toEnd();
    type("x");
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_EQ(text(), "{L1}{wrong");
    EXPECT_EQ(edits, 0);

    auto* asText = designer->findChild<QPushButton*>("editAsText");
    ASSERT_TRUE(asText->isVisible());
    QTest::mouseClick(asText, Qt::LeftButton);
    toEnd();
    type("}");
    EXPECT_EQ(text(), "{L1}{wrong}");
    designer->SetString(designer->GetString());
    EXPECT_FALSE(asText->isVisible());
    toEnd();
    type("!");
    EXPECT_EQ(text(), "{L1}{wrong}!");
}

TEST_F(LabelDesigner, CopiesVariablesAndTheirLooksAndTakesForeignTextAsText) {
    designer->SetString("{L1}{size=7}{name}{br}{b=1} a");
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Name\n a");
    other->setFocus();
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(other->GetString(), "{L1}{font=DejaVu Sans;size=7}{name}{br}{b=1} a");

    auto* foreign = new QMimeData;
    foreign->setHtml("<b>{name}</b>");
    foreign->setText("{name}\n2");
    QApplication::clipboard()->setMimeData(foreign);
    designer->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text(), "{L1}{size=7;b=1}{{name}}{br}2");
}

TEST_F(LabelDesigner, TakesDroppedVariables) {
    other->SetString("{L1}{b=1}{name}");
    other->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    designer->SetString("{L1}ab");
    const QMimeData* dragged = QApplication::clipboard()->mimeData();
    QTextCursor between(field->document());
    between.setPosition(1);
    const QPoint place = field->cursorRect(between).center();
    QDragEnterEvent enter(place, Qt::CopyAction, dragged, Qt::LeftButton, {});
    QApplication::sendEvent(field->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, dragged, Qt::LeftButton, {});
    QApplication::sendEvent(field->viewport(), &drop);
    EXPECT_EQ(text(), "{L1}a{font=DejaVu Serif;size=5;b=1}{name}{font=DejaVu Sans;size=3.5;b=0}b");
}

TEST_F(LabelDesigner, CanOnlyBeLookedAtWhileDisabled) {
    designer->SetString("{L1}{name}");
    designer->Enable(false);
    press(Qt::Key_A, Qt::ControlModifier);
    type("x");
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_V, Qt::ControlModifier);
    press(Qt::Key_Delete);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Name");
    for (QWidget* tool : designer->findChildren<LabelCombo*>())
        EXPECT_FALSE(tool->isEnabled());
    EXPECT_EQ(text(), "{L1}{name}");
    designer->Enable(true);
    press(Qt::Key_End, Qt::ControlModifier);
    type("x");
    EXPECT_EQ(text(), "{L1}{name}x");
}

TEST_F(LabelDesigner, IsWalkedByTabAndLeavesTheWheelToThePage) {
    type("a");
    const auto combos = designer->findChildren<LabelCombo*>();
    combos[0]->setFocus();
    for (int i = 0; i < 7; ++i) {
        EXPECT_FALSE(QApplication::focusWidget()->accessibleName().isEmpty());
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(QApplication::focusWidget(), field);
    press(Qt::Key_Tab);
    EXPECT_TRUE(other->isAncestorOf(QApplication::focusWidget()));
    turnWheel(*combos[1]);
    EXPECT_EQ(combos[1]->currentData().toDouble(), 3.5);
    EXPECT_EQ(text(), "{L1}a");
}

TEST_F(LabelDesigner, OffersTheVariablesOfItsPlace) {
    const auto offers = [this](const char* caption) {
        const auto actions = variables()->actions();
        return std::ranges::any_of(actions, [&](QAction* action) { return action->text() == caption; });
    };
    EXPECT_TRUE(offers("Quantity") && !offers("View"));
    designer->SetObjectTypeKey(22);
    EXPECT_TRUE(!offers("Quantity") && offers("View"));
    designer->SetObjectTypeKey(1);
    EXPECT_TRUE(offers("Quantity") && offers("View"));
}

TEST_F(LabelDesigner, AsksForTooltips) {
    QPoint asked;
    QObject::connect(designer, &VELLabelDesignerCtrlWrap::tooltipRequested, &page,
                     [&](VELTooltipRequest& request) { asked = request.mousePoint; });
    const QPoint point = field->viewport()->mapToGlobal(QPoint(20, 20));
    QHelpEvent help(QEvent::ToolTip, {20, 20}, point);
    QApplication::sendEvent(field->viewport(), &help);
    EXPECT_EQ(asked, point);
}

TEST(DrawingColors, CanBeReadOnEveryBackground) {
    for (const QColor& background : {QColor(Qt::black), QColor(Qt::white), QColor(33, 40, 48),
                                     QColor(Qt::gray), QColor(Qt::yellow), QColor(Qt::blue)}) {
        for (int number = -1; number <= 300; ++number) {
            const QColor color = DrawingColors::readable(number, background);
            EXPECT_GE(wcagContrast(color, background), 4.5)
                << number << " on " << background.name().toStdString();
        }
    }
    EXPECT_EQ(DrawingColors::readable(1, Qt::black), QColor(255, 0, 0));
    EXPECT_EQ(DrawingColors::readable(7, Qt::white), QColor(Qt::black));
}
