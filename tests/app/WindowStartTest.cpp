#include "app/CommandHere.h"

#include "app/WindowStart.h"
#include "session/DataFolder.h"
#include "support/DatabaseServer.h"
#include "support/LineProxy.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>

using WindowStartTest = CommandHereTest;

TEST_F(WindowStartTest, AFrozenServerIsWaitedForInAWindowAndGivenUpThere) {
    using namespace std::chrono_literals;
    LineProxy line(DatabaseServer::instance().socket());
    line.strikeAt(1, LineProxy::eTrouble::kFreezeBefore, false);
    writeBytes(data() / "sources.ini",
               "[user]\nconnection = " + DatabaseServer::connectionBy(line.folder(), "any") + "\n");
    const LockWaiting patient(60s);
    int turns = 0;
    int clicks = 0;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        ++turns;
        for (QWidget* window : QApplication::topLevelWidgets())
            for (auto* giveUp : window->findChildren<QPushButton*>())
                if (giveUp->isVisible()) {
                    ++clicks;
                    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), QPointF(), Qt::LeftButton,
                                        Qt::NoButton, Qt::NoModifier);
                    QApplication::sendEvent(giveUp, &release);
                }
    });
    user.start(0);
    DataFolder folder(data());
    WindowStart start(nullptr);
    start.open(folder);
    user.stop();
    EXPECT_TRUE(line.hasStruck());
    EXPECT_GT(turns, 2);
    EXPECT_EQ(clicks, 1) << "the first one counts";
    ASSERT_EQ(folder.problems().size(), 1U);
    EXPECT_NE(folder.problems().front().view().find("gave no answer"), std::string_view::npos);
    EXPECT_NE(StyleDatabases::current().source(SourceId::standard()), nullptr);
    EXPECT_EQ(StyleDatabases::current().source(SourceId::user()), nullptr);
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible());
}
