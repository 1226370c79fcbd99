#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "controls/KorLineEdit.h"
#include "controls/KorMFCGridCtrl.h"
#include "dialogs/KorDSMDialogConflicts.h"
#include "support/LockWaiting.h"
#include "support/OtherProgram.h"

#include <QComboBox>
#include <QTextEdit>

// What the user is asked when another program changed the same things.

namespace {

constexpr int kUpperLeft = 1038;
constexpr int kGrid = 2362;
constexpr int kMine = 3;
constexpr int kStored = 4;
const char* const kScale = "SELECT round(1 / scale) FROM view_request WHERE name='HB railing post'";

class Conflicts : public EditorFixture {
protected:
    Conflicts() {
        open();
        select(kStyle);
        showTab(1);
    }

    /// One edit in each of two kinds of records, and what another program stores there.
    void conflict() {
        click(pageControl<QRadioButton>(kBelowDetail));
        changeScale(1.0 / 75);
        storeElsewhere("user.dsdb", "UPDATE detail_style SET title_position=6;"
                                    "UPDATE view_request SET scale=1.0/25");
    }
    void changeScale(double scale) {
        const KorOdbcKey view =
            m_databases->source(SourceId::user())->table(kTableViewRequest).find("HB railing post")->key;
        const KorDSNRequest request(SourceId::user().dsn, SourceId::user().index);
        ASSERT_EQ(KorOdbcMan::setAttribute(kTableViewRequest, view, 10, scale, KorOdbcMan::kThisRow), 1);
    }
    void whenAsked(std::function<void(KorDSMDialogConflicts&, KorMFCGridCtrl&)> answer) {
        whenShown<KorDSMDialogConflicts>([this, answer = std::move(answer)](KorDSMDialogConflicts& dialog) {
            m_asked = true;
            dialog.activateWindow();
            answer(dialog, *KorControls::find<KorMFCGridCtrl>(&dialog, kGrid));
            EXPECT_FALSE(dialog.isVisible());
        });
    }
    /// A button pressed by its key lets go a moment later.
    static void chooseAll(KorDSMDialogConflicts& dialog, Qt::Key key, int column) {
        const auto* grid = KorControls::find<KorMFCGridCtrl>(&dialog, kGrid);
        QTest::keyClick(&dialog, key, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return grid->isCellChecked(0, column); }));
    }
    static std::string line(const KorMFCGridCtrl& grid, int row) {
        std::string text;
        for (int column = 0; column < grid.columnCount(); ++column)
            text += (column ? " | " : "") + grid.getCellText(row, column).toStdString();
        return text;
    }
    /// What the files hold after the window was closed.
    std::pair<std::string, std::string> storedNow() {
        close();
        m_databases.reset();
        return {stored("user.dsdb", kPosition), stored("user.dsdb", kScale)};
    }
    using Stored = std::pair<std::string, std::string>;

    bool m_asked = false;
};

} // namespace

TEST_F(Conflicts, AreSettledValueByValueAtApply) {
    conflict();
    whenAsked([](KorDSMDialogConflicts&, KorMFCGridCtrl& grid) {
        ASSERT_EQ(grid.rowCount(), 2);
        EXPECT_EQ(
            line(grid, 0),
            R"(Detail style "HB post 1:15" | Title position | Above main view | Below detail | Upper left)");
        EXPECT_EQ(line(grid, 1), R"(View request "HB railing post" | Scale | 1:10 | 1:75 | 1:25)");
        EXPECT_TRUE(grid.hasFocus() && grid.isCellChecked(0, kMine) && grid.isCellChecked(1, kMine));
        QTest::keyClick(&grid, Qt::Key_Down);
        QTest::keyClick(&grid, Qt::Key_Right);
        QTest::keyClick(&grid, Qt::Key_Return);
    });
    click(button(kApply));
    EXPECT_TRUE(m_asked && m_dialog->isVisible());
    EXPECT_TRUE(pageControl<QRadioButton>(kBelowDetail)->isChecked());
    EXPECT_EQ(StyleDatabases::current().pending().steps().size(), 1U);
    ASSERT_TRUE(button(kApply)->isEnabled());
    click(button(kApply));
    EXPECT_EQ(storedNow(), (Stored{"4", "25.0"}));
}

TEST_F(Conflicts, EscapeKeepsAllOfMineWhateverWasChosen) {
    conflict();
    whenAsked([](KorDSMDialogConflicts& dialog, KorMFCGridCtrl& grid) {
        chooseAll(dialog, Qt::Key_S, kStored);
        EXPECT_TRUE(grid.isCellChecked(1, kStored));
        QTest::keyClick(&grid, Qt::Key_Escape);
    });
    comeBack();
    ASSERT_TRUE(m_asked);
    EXPECT_TRUE(pageControl<QRadioButton>(kBelowDetail)->isChecked());
    click(button(kApply));
    EXPECT_EQ(storedNow(), (Stored{"4", "75.0"}));
}

TEST_F(Conflicts, OfAllOneAnswerIsOneKeyAndWhatIsGoneIsOnlyTold) {
    conflict();
    storeElsewhere("user.dsdb", "DELETE FROM view_request WHERE name='HB railing post'");
    whenAsked([](KorDSMDialogConflicts& dialog, KorMFCGridCtrl& grid) {
        ASSERT_EQ(grid.rowCount(), 2);
        EXPECT_EQ(line(grid, 1), "View request \"HB railing post\" | Scale | 1:10 | 1:75 | "
                                 "The record was deleted. Your change is not made.");
        chooseAll(dialog, Qt::Key_S, kStored);
        EXPECT_FALSE(grid.isCellChecked(1, kMine) || grid.isCellChecked(1, kStored));
        chooseAll(dialog, Qt::Key_M, kMine);
        chooseAll(dialog, Qt::Key_S, kStored);
        click(KorControls::find<QPushButton>(&dialog, kOk));
    });
    click(button(kApply));
    EXPECT_TRUE(m_asked && pageControl<QRadioButton>(kUpperLeft)->isChecked());
    EXPECT_FALSE(button(kApply)->isEnabled());
    EXPECT_EQ(storedNow(), (Stored{"6", ""}));
}

TEST_F(Conflicts, WhatIsBeingTypedIsAskedAboutToo) {
    for (const bool inField : {true, false}) {
        showTab(inField ? 0 : 1);
        QWidget* edit = inField ? pageControl<QWidget>(6003) // description
                                : static_cast<QWidget*>(pageControl<QWidget>(1012)->findChild<QTextEdit*>());
        ASSERT_NE(edit, nullptr);
        edit->setFocus();
        QTest::keyClicks(edit, "mine ");
        storeElsewhere("user.dsdb", inField ? "UPDATE detail_style SET description='theirs'"
                                            : "UPDATE detail_style SET title_format='{L1}theirs'");
        m_asked = false;
        whenAsked([](KorDSMDialogConflicts& dialog, KorMFCGridCtrl& grid) {
            EXPECT_TRUE(line(grid, 0).find("| theirs") != std::string::npos) << line(grid, 0);
            EXPECT_TRUE(line(grid, 0).find("mine") != std::string::npos) << line(grid, 0);
            chooseAll(dialog, Qt::Key_S, kStored);
            click(KorControls::find<QPushButton>(&dialog, kOk));
        });
        if (inField)
            comeBack();
        else
            click(button(kApply));
        EXPECT_TRUE(m_asked) << inField;
        EXPECT_TRUE(StyleDatabases::current().pending().isEmpty());
    }
    close();
    m_databases.reset();
    EXPECT_EQ(stored("user.dsdb", "SELECT description FROM detail_style WHERE name='HB post 1:15'"),
              "theirs");
}

TEST_F(Conflicts, WhatIsStoredWhileApplyWaitsIsReadBeforeMineIsStored) {
    click(pageControl<QRadioButton>(kBelowDetail));
    {
        OtherProgram other(path("user.dsdb"));
        other.run("BEGIN IMMEDIATE; UPDATE view_request SET scale=1.0/25");
        const LockWaiting forLong(std::chrono::hours(1), [&](const std::string&, std::chrono::milliseconds) {
            other.run("COMMIT");
            return true;
        });
        click(button(kApply));
    }
    EXPECT_FALSE(button(kApply)->isEnabled());
    EXPECT_EQ(storedNow(), (Stored{"4", "25.0"}));
}
