#include "shell/LockNotice.h"
#include "data/StyleDatabases.h"

#include "data/store/LockWait.h"
#include "services/KorHostReport.h"
#include "shell/EditorFixture.h"
#include "support/LockWaiting.h"

#include <QComboBox>
#include <QLabel>

// What the window does while another program has locked a database.

namespace {

class LockedDatabase : public EditorFixture {
protected:
    LockedDatabase() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
    }

    /// Makes a change and applies it while the User database is locked; `whileWaiting` is called with the
    /// number of its call until the wait is over.
    void applyWhileLocked(std::function<void(int)> whileWaiting) {
        whileLocked([this] { click(button(kApply)); }, std::move(whileWaiting));
    }
    void whileLocked(const std::function<void()>& act, std::function<void(int)> whileWaiting) {
        m_whileWaiting = std::move(whileWaiting);
        m_calls = 0;
        m_refusal.clear();
        m_timer.start(0);
        act();
        QApplication::processEvents(); // what waited meanwhile
        m_timer.stop();
    }
    void change() {
        open();
        changePosition();
    }
    QLabel* sentence() { return control<QLabel>(LockNotice::kSentence); }

    LockWaiting m_forLong{std::chrono::hours(1)};
    QTimer m_timer;
    QString m_refusal;
    int m_calls = 0;

private:
    void look() {
        if (LockWait::isWaiting())
            return m_whileWaiting(++m_calls);
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            m_refusal += box->text() + box->informativeText();
            box->close();
        }
    }

    std::function<void(int)> m_whileWaiting;
};

} // namespace

TEST_F(LockedDatabase, IsWaitedForWithASentenceUntilTheUserGivesUp) {
    change();
    OtherProgram other(path("user.dsdb"));
    other.run("BEGIN IMMEDIATE");
    applyWhileLocked([this](int call) {
        EXPECT_TRUE(sentence()->isVisible());
        EXPECT_TRUE(sentence()->text().contains("user.dsdb")) << sentence()->text().toStdString();
        if (call == 1) { // nothing but giving up is heard
            KorHostReport::add("to be shown later");
            QApplication::postEvent(m_dialog.get(), new QEvent(QEvent::WindowActivate));
            click(button(kCancel));
            press(Qt::Key_Z, Qt::ControlModifier);
            EXPECT_FALSE(m_dialog->close());
        } else if (call == 3) {
            press(Qt::Key_Escape);
        }
    });
    EXPECT_EQ(m_calls, 3);
    EXPECT_TRUE(m_refusal.contains("locked by another program")) << m_refusal.toStdString();
    EXPECT_TRUE(m_refusal.endsWith("to be shown later")) << m_refusal.toStdString();
    EXPECT_FALSE(sentence()->isVisible());
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_TRUE(isPending());

    applyWhileLocked([this](int) { QTest::mouseClick(button(LockNotice::kGiveUp), Qt::LeftButton); });
    EXPECT_EQ(m_calls, 1);
    EXPECT_TRUE(m_refusal.contains("locked by another program")) << m_refusal.toStdString();

    applyWhileLocked([&](int) { other.run("COMMIT"); });
    EXPECT_EQ(m_refusal, "");
    EXPECT_FALSE(isPending());
    EXPECT_FALSE(sentence()->isVisible());
}

TEST_F(LockedDatabase, IsAskedAboutByTheWindowWhileItLives) {
    int asked = 0;
    const LockWaiting elsewhere(std::chrono::hours(1), [&](const std::string&, std::chrono::milliseconds) {
        ++asked;
        return false;
    });
    change();
    OtherProgram other(path("user.dsdb"));
    other.run("BEGIN IMMEDIATE");
    applyWhileLocked([this](int) { press(Qt::Key_Escape); });
    EXPECT_EQ(m_calls, 1);
    EXPECT_EQ(asked, 0);
    const auto tryToBegin = [] {
        LockWait::nextCommand();
        EXPECT_FALSE(StyleDatabases::current().source(SourceId::user())->store().begin());
    };
    m_dialog->hide();
    tryToBegin();
    m_dialog->show();
    EXPECT_EQ(asked, 1) << "there is no status line to be seen";
    close();
    tryToBegin();
    EXPECT_EQ(asked, 2);
}

TEST_F(LockedDatabase, SentenceAndCursorOfALongWaitGoThoughAShortOneFollows) {
    open();
    const LockWait::Ask ask = LockWait::setAsk({});
    LockWait::setAsk(ask);
    for (const auto waited : {std::chrono::seconds(1), std::chrono::seconds(0)}) {
        EXPECT_TRUE(ask("a file", waited));
        EXPECT_TRUE(sentence()->isVisible());
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
    }
    QApplication::processEvents();
    EXPECT_FALSE(sentence()->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(LockedDatabase, SaysAtOnceWhyAChangeThatMayConcernOthersIsNotWritten) {
    open();
    select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB front"});
    showTab(1);
    OtherProgram other(path("user.dsdb"));
    other.run("BEGIN EXCLUSIVE");
    whileLocked([this] { QTest::keyClick(pageControl<QComboBox>(1097), Qt::Key_Down); },
                [this](int) { press(Qt::Key_Escape); });
    EXPECT_TRUE(m_refusal.contains("locked by another program")) << m_refusal.toStdString();
    EXPECT_FALSE(isPending());
}
