#include "app/OpenWindow.h"
#include "app/ProgramFixture.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMDialogFactory.h"
#include "services/KorHostReport.h"
#include "support/OtherProgram.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMimeDatabase>
#include <QProcess>
#include <QUrl>

namespace fs = std::filesystem;

using DesktopTest = ProgramTest;

TEST_F(DesktopTest, AStyleDatabaseIsKnownByItsHeaderAndAPlainDatabaseIsNotTaken) {
    const fs::path packages = folder() / "share" / "mime" / "packages";
    fs::create_directories(packages);
    for (const fs::path& types : {fs::path(SOURCE_DIR) / "packaging" / "arpa.home.detailstyles.mime.xml",
                                  fs::path("/usr/share/mime/packages/freedesktop.org.xml")})
        fs::copy_file(types, packages / types.filename());
    qputenv("XDG_DATA_DIRS", QByteArray::fromStdString((folder() / "share").string()));
    fs::copy_file(data() / "user.dsdb", folder() / "sent by mail");
    fs::create_directories(folder() / "plain");
    OtherProgram(folder() / "plain" / "database").run("CREATE TABLE t (a)");
    QMimeDatabase types;
    const auto typeOf = [&types](const fs::path& file) {
        return types.mimeTypeForFile(QString::fromStdString(file.string()));
    };
    EXPECT_EQ(typeOf(folder() / "sent by mail").name(), "application/x-dsdb");
    EXPECT_EQ(typeOf(data() / "user.dsdb").name(), "application/x-dsdb");
    EXPECT_TRUE(typeOf(data() / "user.dsdb").inherits("application/vnd.sqlite3"));
    EXPECT_EQ(typeOf(folder() / "plain" / "database").name(), "application/vnd.sqlite3");
}

TEST_F(DesktopTest, AFileThatIsDroppedOnTheWindowIsASourceThatCanOnlyBeRead) {
    fs::copy_file(data() / "user.dsdb", folder() / "mail.dsdb");
    qputenv("XDG_RUNTIME_DIR", named("").toUtf8());
    StyleDatabases databases;
    QWidget window;
    window.show();
    const OpenWindow open(window, std::make_unique<RunningEditor>(data(), nullptr));
    const auto drop = [&window](const QMimeData& dragged) {
        QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&window, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped({5, 5}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&window, &dropped);
        QApplication::processEvents();
        return dropped.isAccepted() && dropped.dropAction() == Qt::CopyAction; // it is not moved away
    };
    QMimeData text;
    text.setText("no file");
    text.setUrls({QUrl("https://elsewhere/mail.dsdb")});
    EXPECT_FALSE(drop(text));
    QMimeData letter;
    letter.setUrls({QUrl::fromLocalFile(named("letter"))});
    writeBytes(folder() / "letter", "no database");
    EXPECT_TRUE(drop(letter));
    EXPECT_TRUE(databases.sources().empty());
    EXPECT_EQ(KorHostReport::take().size(), 1u) << "what cannot be shown is told";
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(named("mail.dsdb"))});
    EXPECT_TRUE(drop(file));
    ASSERT_EQ(databases.sources().size(), 1u);
    StyleSource& source = *databases.source(databases.sources().front());
    EXPECT_TRUE(source.isReadOnly());
    EXPECT_NE(source.table(kTableDetailStyle).find(KorString("Beam")), nullptr);
    KorDSMDialogFactory::getDSMDataStructure().emptyDataStructure();
}

TEST_F(DesktopTest, ASecondStartLeavesItsFileToTheOpenWindow) {
    fs::copy_file(data() / "user.dsdb", folder() / "mail.dsdb");
    environment.remove("XDG_RUNTIME_DIR");
    environment.insert("XDG_CACHE_HOME", named("run"));
    environment.insert("QT_QPA_PLATFORM", "minimal");
    const QStringList bad = run({named("letter")}).complaints;
    EXPECT_EQ(bad.size(), 1);
    QProcess first;
    first.setProcessEnvironment(environment);
    first.start(DETAILSTYLES_PROGRAM, {"--data", QString::fromStdString(data().string())});
    const auto waitFor = [](const std::function<bool()>& isSo) {
        for (const QDeadlineTimer end(30000); !isSo() && !end.hasExpired();)
            QProcess().waitForFinished(1);
        return isSo();
    };
    ASSERT_TRUE(waitFor([this] {
        return fs::exists(folder() / "run/detailstyles") && !fs::is_empty(folder() / "run/detailstyles");
    }));
    const ProgramRun second = run({named("mail.dsdb")});
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_TRUE(second.output.startsWith("The editor is open already"));
    const QDir held(QString("/proc/%1/fd").arg(first.processId()));
    EXPECT_TRUE(waitFor([this, &held] {
        for (const QFileInfo& file : held.entryInfoList(QDir::Files))
            if (file.symLinkTarget() == named("mail.dsdb"))
                return true;
        return false;
    }));
    first.kill();
    first.waitForFinished();
}

TEST_F(DesktopTest, OfStartsAtTheSameTimeOneOpensTheWindow) {
    fs::create_directories(folder() / "run");
    fs::permissions(folder() / "run", fs::perms::owner_all);
    environment.insert("XDG_RUNTIME_DIR", named("run"));
    environment.insert("QT_QPA_PLATFORM", "minimal");
    std::vector<std::unique_ptr<QProcess>> starts;
    for (int i = 0; i < 5; ++i) {
        auto& start = *starts.emplace_back(std::make_unique<QProcess>());
        start.setProcessEnvironment(environment);
        start.start(DETAILSTYLES_PROGRAM, {"--data", QString::fromStdString(data().string())});
    }
    const auto open = [&starts] {
        return std::ranges::count_if(starts, [](auto& start) {
            start->waitForFinished(1);
            return start->state() == QProcess::Running;
        });
    };
    for (const QDeadlineTimer end(60000); open() > 1 && !end.hasExpired();)
        ;
    EXPECT_EQ(open(), 1);
    for (const auto& start : starts) {
        EXPECT_TRUE(start->state() == QProcess::Running ||
                    start->readAllStandardOutput().startsWith("The editor is open already"));
        start->kill();
        start->waitForFinished();
    }
}
