#include "controls/KorLineEdit.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "records/TableDeclarations.h"
#include "services/KorExchangeUtilities.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMHandOver.h"
#include "shell/EditorFixture.h"

#include <QTextEdit>

// Leaving the window while changes are not stored.

namespace {

class Leaving : public EditorFixture {
protected:
    ~Leaving() override { KorDSMDialogFactory::options().asksBeforeLeaving = false; }

    /// Opens the editor with one change pending.
    void change() {
        open();
        m_result = -1;
        changePosition();
    }
    /// Answers the next question by the button of this text, and notes what it said.
    void answer(const char* text) {
        answerNext([this, text](QWidget* modal) {
            const auto* box = qobject_cast<QMessageBox*>(modal);
            ASSERT_NE(box, nullptr);
            m_said = box->text() + "\n" + box->informativeText();
            for (QAbstractButton* button : box->buttons())
                if (button->text() == text)
                    return button->click();
            ADD_FAILURE() << "no button " << text;
        });
    }
    /// Types into the drawing title, without finishing it.
    void typeTitle() {
        showTab(1);
        auto* title = pageControl<QWidget>(1012)->findChild<QTextEdit*>();
        title->setFocus();
        QTest::keyClicks(title, "Shop ");
    }
    std::string storedPosition() {
        m_databases.reset();
        return stored("user.dsdb", kPosition);
    }

    QString m_said;
};

} // namespace

TEST_F(Leaving, EscapeNeverClosesWhileSomethingIsPending) {
    change();
    press(Qt::Key_F, Qt::ControlModifier);
    auto* filter = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(filter, nullptr);
    QTest::keyClicks(filter, "HB");
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_TRUE(filter->text().isEmpty());
    press(Qt::Key_Escape);
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_TRUE(isPending());
    typeTitle();
    click(button(kCancel));
    EXPECT_EQ(m_result, QDialog::Rejected) << "a host that asks nothing: dropped at once";
    EXPECT_FALSE(isPending()) << "also what was only typed";
    open();
    m_result = -1;
    press(Qt::Key_Escape);
    EXPECT_EQ(m_result, QDialog::Rejected) << "nothing is pending";
}

TEST_F(Leaving, CancelAndTheCloseButtonAskWhereTheQuestionIsOn) {
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    change();
    answer("&Go on editing");
    click(button(kCancel));
    EXPECT_TRUE(m_said.startsWith("One change")) << m_said.toStdString();
    EXPECT_TRUE(m_said.contains("HB post 1:15")) << "the step is named: " << m_said.toStdString();
    answer("&Go on editing");
    EXPECT_FALSE(m_dialog->close());
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_TRUE(isPending());
    answer("&Drop");
    m_dialog->close();
    EXPECT_EQ(m_result, QDialog::Rejected);
    EXPECT_FALSE(isPending());
    change();
    typeTitle(); // not finished yet, and counted all the same
    answer("&Keep");
    click(button(kCancel));
    EXPECT_TRUE(m_said.startsWith("2 changes")) << m_said.toStdString();
    EXPECT_EQ(m_result, QDialog::Accepted);
    close();
    EXPECT_EQ(storedPosition(), "4");
}

TEST_F(Leaving, WhatAFieldShowsAndDoesNotStoreIsNotLeftWithoutAWord) {
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    open();
    m_result = -1;
    select({"User", "Hallberg: posts and beams", "HB beam, long, 1:10", "HB front, shortened"});
    showTab(2);
    auto* interval = pageControl<QLineEdit>(1095);
    interval->setFocus();
    interval->selectAll();
    QTest::keyClicks(interval, "0");
    answer("&Go on editing");
    click(button(kOk));
    EXPECT_TRUE(m_said.contains("1 mm")) << m_said.toStdString();
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(interval->text(), "0") << "it stays to be corrected";
    answer("&Leave without it");
    click(button(kOk));
    EXPECT_EQ(m_result, QDialog::Accepted);
}

TEST_F(Leaving, AfterTheSharedQuestionIsCancelledNothingIsToApply) {
    for (const bool asks : {true, false}) {
        open();
        m_result = -1;
        select(kStyle);
        KorLineEdit* field = nullptr; // the spacing of rows, of an arrangement that several styles use
        for (int tab = 0; !field && tab < 9; ++tab) {
            showTab(tab);
            for (auto* edit : page()->findChildren<KorLineEdit*>())
                field = edit->isVisible() && edit->text().startsWith("12") ? edit : field;
        }
        ASSERT_NE(field, nullptr);
        KorLineEdit& spacing = *field;
        const QString before = spacing.text();
        spacing.setFocus();
        spacing.selectAll();
        QTest::keyClicks(&spacing, asks ? "13" : "12.0");
        EXPECT_TRUE(button(kApply)->isEnabled());
        int asked = 0;
        if (asks)
            whenShown<KorDSMDialogConfirmation>([&asked](KorDSMDialogConfirmation& dialog) {
                ++asked;
                QTest::keyClick(&dialog, Qt::Key_Escape);
            });
        QTest::keyClick(&spacing, Qt::Key_Tab);
        EXPECT_EQ(asked, asks);
        EXPECT_EQ(spacing.text(), before);
        EXPECT_FALSE(isPending() || button(kApply)->isEnabled());
        press(Qt::Key_Escape);
        EXPECT_EQ(m_result, QDialog::Rejected);
    }
}

TEST_F(Leaving, WhoGoesOnEditingGoesOnWithThePage) {
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    change();
    answer("&Go on editing");
    click(button(kUse));
    typeTitle();
    click(button(kApply));
    EXPECT_FALSE(isPending());
    close();
    m_databases.reset();
    EXPECT_EQ(stored("user.dsdb", "SELECT title_format LIKE '%Shop %' FROM detail_style "
                                  "WHERE name='HB post 1:15'"),
              "1");
}

TEST_F(Leaving, UseNamesNoStyleThatIsNotStored) {
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    int status = 0;
    KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue(KorDSMHandOver::kQueue, status, 0);
    const auto copyStyle = [this] {
        open();
        m_result = -1;
        select(kStyle);
        answerNext([this](QWidget* modal) {
            auto* name = KorControls::find<QLineEdit>(modal, 1015);
            name->selectAll();
            name->insert(QStringLiteral("HB post copied"));
            click(KorControls::find<QPushButton>(modal, 1));
        });
        command(kCopy);
        QApplication::processEvents();
        ASSERT_TRUE(isPending());
    };
    copyStyle();
    answer("&Go on editing");
    click(button(kUse));
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_FALSE(queue.has("RESULT1"));
    answer("&Drop");
    click(button(kUse));
    EXPECT_EQ(m_result, QDialog::Accepted);
    EXPECT_FALSE(queue.has("RESULT1")) << "the copy is gone";
    EXPECT_FALSE(isPending());
    copyStyle();
    storeElsewhere("user.dsdb", "UPDATE detail_style SET description='theirs' WHERE name='HB post 1:15'");
    answer("&Keep");
    click(button(kUse));
    EXPECT_FALSE(isPending());
    const std::string named =
        std::to_string(queue.getInt("RESULT1")) + " " + std::to_string(queue.getInt("RESULT2"));
    close();
    m_databases.reset();
    EXPECT_EQ(stored("user.dsdb", "SELECT m.detail_key || ' ' || m.number FROM detail_master m "
                                  "JOIN detail_style s ON s.key = m.style WHERE s.name = 'HB post copied'"),
              named);
}

TEST_F(Leaving, ConsentToChangeASharedRecordHoldsUntilAnotherOneIsSelected) {
    open();
    const auto* arrangement = StyleDatabases::current()
                                  .source(SourceId::user())
                                  ->table(kTableViewArrangeStrategy)
                                  .find(static_cast<const StructDetailStyle*>(StyleDatabases::current()
                                                                                  .source(SourceId::user())
                                                                                  ->table(kTableDetailStyle)
                                                                                  .find("HB post 1:15"))
                                            ->arrangeStrategyKey);
    int asked = 0;
    QTimer answers;
    QObject::connect(&answers, &QTimer::timeout, [&asked] {
        if (auto* dialog = qobject_cast<KorDSMDialogConfirmation*>(QApplication::activeModalWidget())) {
            ++asked;
            dialog->accept();
        }
    });
    answers.start();
    const int column = findTable(kTableViewArrangeStrategy)->column("frame_margin")->number;
    double margin = 20;
    for (const auto& [place, expected] : {std::pair(kStyle, 1), std::pair(kStyle, 1), std::pair(kView, 2)}) {
        select(place);
        EXPECT_TRUE(KorDSMGuardedWrite::setAttributeValue(kTableViewArrangeStrategy,
                                                          KorOdbcKey(arrangement->key), column, margin++)
                        .isStored());
        EXPECT_EQ(asked, expected);
    }
}
