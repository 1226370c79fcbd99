#include "app/ProgramFixture.h"

#include "support/OtherProgram.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QMimeDatabase>
#include <QProcess>

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

TEST_F(DesktopTest, ASecondStartLeavesItsFileToTheOpenWindow) {
    fs::create_directories(folder() / "run");
    fs::permissions(folder() / "run", fs::perms::owner_all);
    fs::copy_file(data() / "user.dsdb", folder() / "mail.dsdb");
    environment.insert("XDG_RUNTIME_DIR", named("run"));
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
    ASSERT_TRUE(waitFor([this] { return !fs::is_empty(folder() / "run"); }));
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
