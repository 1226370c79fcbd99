#include "app/ProgramFixture.h"

#include "support/OtherProgram.h"

#include <QMimeDatabase>

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
