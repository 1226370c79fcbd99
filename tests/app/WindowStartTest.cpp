#include "app/CommandHere.h"

#include "app/EditCommand.h"
#include "app/WindowStart.h"
#include "base/EditorSession.h"
#include "data/store/odbc/OdbcDatabase.h"
#include "session/DataFolder.h"
#include "support/DatabaseServer.h"
#include "support/LineProxy.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>

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

TEST_F(WindowStartTest, AStyleOnAServerIsFoundWhenItsPasswordWasGivenAndASecondStartFindsTheQuestion) {
    const EditorSession withNothingLoaded;
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", "offscreen"); // else a window is refused where there is no display
    DatabaseServer& server = DatabaseServer::instance();
    const std::string schema = server.newSchema();
    const QString connection = QString::fromStdString(server.connection(schema));
    EXPECT_EQ(run({"server", "create", connection}).exitCode, 0);
    EXPECT_EQ(run({"copy-database", named("data/user.dsdb"), connection}).exitCode, 0);
    OdbcDatabase owner(ServerAddress::parse(server.connection(schema), "a test").value, {});
    EXPECT_EQ(owner.connect().error, "");
    EXPECT_EQ(owner
                  .execute("CREATE ROLE guarded LOGIN PASSWORD 'right' IN ROLE \"" + schema +
                           "_editor\"; UPDATE " + schema +
                           ".detail_style SET name = 'Only there' WHERE name = 'Beam'")
                  .error,
              "");
    writeBytes(data() / "sources.ini",
               "[user]\nconnection = " + server.connection(schema, DatabaseServer::kGuarded) + "\n");
    qputenv("XDG_RUNTIME_DIR", named("").toUtf8());
    environment.insert("XDG_RUNTIME_DIR", named(""));
    std::filesystem::copy_file(data() / "standard.dsdb", folder() / "mail.dsdb");
    QProcess second;
    second.setProcessEnvironment(environment);
    QStringList selected;
    int turnsInEditor = 0;
    bool isFolderNamed = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        auto* field = dialog ? dialog->findChild<QLineEdit*>() : nullptr;
        if (field && second.program().isEmpty()) {
            second.start(DETAILSTYLES_PROGRAM,
                         {"--data", QString::fromStdString(data().string()), named("mail.dsdb")});
        } else if (field && field->echoMode() == QLineEdit::Password) {
            if (second.state() != QProcess::NotRunning)
                return;
            field->setText("right");
            for (auto* button : dialog->findChildren<QPushButton*>())
                if (button->isDefault())
                    button->click();
        } else if (dialog) {
            for (const auto* tree : dialog->findChildren<QTreeView*>())
                if (const QString name = tree->currentIndex().data().toString();
                    tree->isVisible() && !selected.contains(name))
                    selected << name;
            if (dialog->windowTitle().endsWith(QString::fromStdString(data().filename().string())))
                isFolderNamed = true;
            if (selected.contains("Beam") || ++turnsInEditor > 100'000)
                dialog->reject();
        }
    });
    user.start(0);
    EditOptions options;
    options.style.name = "Only there";
    DataFolder folder(data());
    WindowStart start(nullptr);
    EXPECT_FALSE(leaveToAnother(start, folder, options)) << "there is none";
    start.open(folder);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(second.readAll().startsWith("The editor is open already"));
    testing::internal::CaptureStderr();
    EXPECT_EQ(openEditor(start, folder, options), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("Only there"), std::string::npos) << "it was found";
    EXPECT_TRUE(isFolderNamed) << "windows of several folders can be told apart";
    EXPECT_TRUE(selected.contains("Beam")) << "what the second start was to show";
    if (platform.isNull())
        qunsetenv("QT_QPA_PLATFORM");
    else
        qputenv("QT_QPA_PLATFORM", platform);
}
