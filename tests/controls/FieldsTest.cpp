#include "controls/KorComboBitmap.h"
#include "controls/KorComboBox.h"
#include "controls/KorControls.h"
#include "controls/KorLineEdit.h"
#include "support/Widgets.h"

#include <QAction>
#include <QDialog>
#include <QPushButton>

namespace {

class Fields : public testing::Test {
protected:
    Fields() {
        auto* layout = new QVBoxLayout(&dialog);
        layout->addWidget(edit = new KorLineEdit);
        layout->addWidget(combo = new KorComboBox);
        layout->addWidget(ok = new QPushButton(QStringLiteral("OK")));
        ok->setDefault(true);
        combo->addItems({QStringLiteral("a"), QStringLiteral("b")});
        edit->setText(QStringLiteral("10"));
        QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
        QObject::connect(edit, &KorLineEdit::committed, edit,
                         [this](const QString& t) { committed.append(t); });
        showActive(dialog);
        edit->setFocus();
        edit->selectAll();
    }

    QDialog dialog;
    KorLineEdit* edit;
    KorComboBox* combo;
    QPushButton* ok;
    QStringList committed;
};

} // namespace

TEST_F(Fields, ReturnCommitsOnceAndDoesNotCloseTheDialog) {
    QTest::keyClicks(edit, "20");
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Return);
    combo->setFocus();
    EXPECT_EQ(committed, QStringList{QStringLiteral("20")});
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(Fields, TypingIntoAComboSearchesAndEnterChooses) {
    combo->clear();
    for (int color = 0; color < 60; ++color)
        combo->addItem(QString::number(color) + QStringLiteral(" colour"));
    combo->addItem(QStringLiteral("Base plate"));
    combo->addItem(QStringLiteral("Plate"));
    std::vector<int> activated;
    QObject::connect(combo, &QComboBox::activated, combo, [&](int entry) { activated.push_back(entry); });
    const auto choose = [&](const char* text) {
        combo->setFocus();
        QTest::keyClick(combo, text[0]);
        auto* search = combo->findChild<QLineEdit*>();
        ASSERT_NE(search, nullptr);
        QTest::keyClicks(search, text + 1);
        EXPECT_EQ(search->text(), text);
        QTest::keyClick(search, Qt::Key_Return);
    };
    choose("plate");
    EXPECT_EQ(activated, std::vector{61}) << "once, and the one that is called so";
    choose("5");
    EXPECT_EQ(combo->currentText(), "5 colour");
    QTest::keyClick(combo, 'b');
    QTest::keyClick(combo->findChild<QLineEdit*>(), Qt::Key_Escape);
    QTest::keyClick(combo->findChild<QLineEdit*>(), Qt::Key_Escape);
    EXPECT_EQ(combo->currentText(), "5 colour");
    EXPECT_EQ(activated.size(), 2u);
}

TEST_F(Fields, TypingIntoTheOpenListOfAShortComboSearches) {
    combo->clear();
    combo->addItems({QStringLiteral("Base plate"), QStringLiteral("Rail"), QStringLiteral("End plate")});
    combo->showPopup();
    QTest::keyClick(combo->view(), 'e');
    auto* search = combo->findChild<QLineEdit*>();
    ASSERT_NE(search, nullptr);
    QTest::keyClicks(search, "nd");
    EXPECT_EQ(combo->currentIndex(), 0);
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(combo->currentText(), "End plate");
}

TEST_F(Fields, LeavingTheFieldCommits) {
    QTest::keyClicks(edit, "30");
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(committed, QStringList{QStringLiteral("30")});
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(committed.size(), 1) << "an unchanged text is no change";
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, "40");
    KorControls::commitEdits(&dialog);
    EXPECT_EQ(committed, (QStringList{QStringLiteral("30"), QStringLiteral("40")}));
}

TEST_F(Fields, UndoBelongsToTheTextUntilItCounts) {
    int undone = 0;
    QAction undo;
    undo.setShortcut(QKeySequence::Undo);
    QObject::connect(&undo, &QAction::triggered, &dialog, [&undone] { ++undone; });
    dialog.addAction(&undo);
    edit->selectAll();
    QTest::keyClicks(edit, "60");
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(edit->text(), QStringLiteral("60"));
    EXPECT_EQ(undone, 0);
    edit->selectAll();
    QTest::keyClicks(edit, "70");
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone, 1);
    EXPECT_EQ(edit->text(), QStringLiteral("70")) << "what the window takes back, it shows itself";
}

TEST_F(Fields, EscapeRestoresFirstAndClosesThen) {
    QTest::keyClicks(edit, "50");
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_EQ(edit->text(), QStringLiteral("10"));
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(committed.isEmpty());
}

TEST_F(Fields, CancellingTheDialogWithAHalfTypedTextCommitsNothing) {
    QTest::keyClicks(edit, "60");
    dialog.reject();
    EXPECT_TRUE(committed.isEmpty());
}

TEST_F(Fields, TheWheelChangesAComboOnlyWithTheFocus) {
    turnWheel(*combo);
    EXPECT_EQ(combo->currentIndex(), 0);
    combo->setFocus();
    turnWheel(*combo);
    EXPECT_EQ(combo->currentIndex(), 1);
}

TEST(ComboBitmap, ChoicesStandForNumbers) {
    KorComboBitmap combo;
    combo.addBitmap(1311, "left", 5);
    combo.addBitmap(1312, "right", 7);
    int told = -1;
    QObject::connect(&combo, &KorComboBitmap::valueSelected, &combo, [&](int value) { told = value; });
    combo.selectValue(5);
    EXPECT_EQ(told, -1);
    combo.show();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(told, 7);
    combo.selectValue(6);
    EXPECT_EQ(combo.selectedValue(), -1);
}
