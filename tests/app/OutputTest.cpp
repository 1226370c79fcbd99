#include "app/ProgramFixture.h"

#include <QSize>
#include <QtEndian>

#include "base/TemporaryFile.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class OutputTest : public ProgramTest {
protected:
    // A picture or an exported style must not be written there; what lies there stays as it is.
    void expectRefused(const fs::path& file, const QStringList& more) {
        const QString name = QString::fromStdString(file.string());
        for (const QStringList& command :
             {QStringList{"edit", "--screenshot", name}, QStringList{"export", "Beam", name}}) {
            const ProgramRun refused = run(command + more);
            EXPECT_EQ(refused.exitCode, 1) << command.first().toStdString();
            ASSERT_EQ(refused.complaints.size(), 1) << refused.complaints.join('\n').toStdString();
            EXPECT_TRUE(refused.complaints.first().contains(name)) << refused.complaints[0].toStdString();
        }
    }
};

// The head of a PNG says it.
QSize sizeOfPicture(const std::string& file) {
    const std::string bytes = bytesOf(file);
    return bytes.size() < 24 ? QSize()
                             : QSize(qFromBigEndian<qint32>(&bytes[16]), qFromBigEndian<qint32>(&bytes[20]));
}

} // namespace

TEST_F(OutputTest, NoOutputReplacesADatabaseThatIsOpenOrAnyOtherFileUnasked) {
    const std::string user = bytesOf(data() / "user.dsdb");
    expectRefused(data() / "user.dsdb", {});
    expectRefused(data() / "user.dsdb", {"--overwrite"});
    fs::create_symlink(data() / "user.dsdb", folder() / "link");
    expectRefused(folder() / "link", {"--overwrite"});
    EXPECT_TRUE(fs::is_symlink(folder() / "link"));
    for (const char* target : {"nowhere", "lost"}) {
        fs::create_symlink(target, folder() / "lost");
        expectRefused(folder() / "lost", {"--overwrite"});
        EXPECT_TRUE(fs::is_symlink(folder() / "lost"));
        fs::remove(folder() / "lost");
    }
    for (const char* suffix : {"-journal", "-wal", "-shm"})
        expectRefused(data() / (std::string("user.dsdb") + suffix), {"--overwrite"});
    EXPECT_EQ(bytesOf(data() / "user.dsdb"), user);

    writeBytes(data() / "sources.ini", "x\n"); // so that none is open
    for (const QStringList& command :
         {QStringList{"edit", "--screenshot"}, QStringList{"request", "--screenshot"}})
        EXPECT_NE(
            run(command + QStringList{QString::fromStdString(data() / "user.dsdb"), "--overwrite"}).exitCode,
            0);
    fs::remove(data() / "sources.ini");
    EXPECT_EQ(bytesOf(data() / "user.dsdb"), user);

    const fs::path notes = folder() / "notes";
    writeBytes(notes, "mine");
    expectRefused(notes, {});
    EXPECT_EQ(bytesOf(notes), "mine");
    EXPECT_EQ(run({"edit", "--screenshot", QString::fromStdString(notes), "--overwrite"}).exitCode, 0);
    EXPECT_TRUE(bytesOf(notes).starts_with("\x89PNG"));

    expectRefused(folder() / std::string(300, 'n'), {});
    expectRefused(folder() / std::string(250, 'n'), {"--overwrite"});

    const fs::path pipe = folder() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    expectRefused(pipe, {"--overwrite"});
    EXPECT_TRUE(fs::is_fifo(pipe));
    expectRefused("/dev/full", {"--overwrite"});
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(OutputTest, APictureLeavesTheRememberedWindowsAlone) {
    const fs::path settings = folder() / "config" / "detailstyles" / "settings.ini";
    fs::create_directories(settings.parent_path());
    writeBytes(settings, "[Layout]\nMainDialog = as the user left it\n");
    const std::string before = bytesOf(settings);
    const QString picture = named("editor.png");
    for (const char* window : {"edit", "request"}) {
        EXPECT_EQ(run({window, "--screenshot", picture, "--size", "900x600", "--overwrite"}).exitCode, 0);
        EXPECT_EQ(sizeOfPicture(picture.toStdString()), QSize(900, 600)) << window;
    }
    EXPECT_EQ(bytesOf(settings), before);
    EXPECT_EQ(run({"request", "--key", "99999", "--screenshot", named("none.png")}).exitCode, 1);
    EXPECT_FALSE(fs::exists(named("none.png").toStdString()));
}

TEST_F(OutputTest, AtItsFirstStartTheWindowFitsItsScreenWithAFrame) {
    const std::string screen = (folder() / "screen.json").string();
    writeBytes(screen, R"({"screens": [{"name": "S", "x": 0, "y": 0, "width": 1366, "height": 768}]})");
    environment.insert("QT_QPA_PLATFORM", "offscreen:configfile=" + QString::fromStdString(screen));
    const QString picture = named("editor.png");
    for (const double scale : {1.0, 1.5, 2.0}) {
        environment.insert("QT_SCALE_FACTOR", QString::number(scale));
        ASSERT_EQ(run({"edit", "--style", "Beam", "--screenshot", picture, "--overwrite"}).exitCode, 0);
        const QSize size = sizeOfPicture(picture.toStdString());
        EXPECT_LE(size.width(), 1366) << scale;
        EXPECT_GE(size.width(), 1000) << scale;
        EXPECT_LE(size.height(), 768 - 30 * scale) << "no room for the title bar at " << scale;
    }
}

TEST_F(OutputTest, WhatCouldNotBeWrittenToItsEndIsAFailureThatSaysWhatWasStored) {
    sql("user.dsdb", "UPDATE detail_style SET name = 'Roof' WHERE name = 'Heavy beam'");
    sql("user.dsdb", "INSERT INTO repr_map_entry(\"key\", name, repr_map) VALUES (1, 'Lost', 9)");
    EXPECT_EQ(run({"export", "Heavy beam", named("in.dsdb"), "--source", "standard"}).exitCode, 0);
    EXPECT_EQ(run({"export", "Beam", named("json.dsdb"), "--source", "bridges"}).exitCode, 0);
    sql("../json.dsdb", "UPDATE detail_style SET name = 'Arch'");
    sql("user.dsdb", "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
                     "INSERT INTO base_category(\"key\", name) SELECT 1000 + i, 'Category ' || i FROM n");
    inChild = [] { dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); };
    const std::vector<std::pair<QStringList, QString>> commands = {
        {{"list"}, {}},
        {{"list", "--json"}, {}},
        {{"list", "--kind", "base-category"}, {}}, // more than is kept back before it is written
        {{"show", "detail-style", "Beam"}, {}},
        {{"compact", "--dry-run"}, {}},
        {{"--help"}, {}},
        {{"import", named("in.dsdb")}, "Imported the detail style \"Heavy beam\"."},
        {{"import", named("json.dsdb"), "--json"}, "Imported the detail style \"Arch\"."},
        {{"compact"}, "Removed the representation map entry \"Lost\" (key 1)"},
        {{"export", "Beam", named("out.dsdb")}, "out.dsdb"},
        {{"samples", named("samples")}, "samples"},
        {{"set", "base-category", "Category 1", "number", "7", "--json"}, "Changed \"number\""},
        {{"set", "detail-style", "Beam", "description", "new"}, "Changed \"description\""},
    };
    for (const auto& [command, stored] : commands) {
        const ProgramRun cut = run(command);
        EXPECT_EQ(cut.exitCode, 1) << command.join(' ').toStdString();
        ASSERT_FALSE(cut.complaints.isEmpty());
        EXPECT_TRUE(cut.complaints[0].contains("could not be written to its end (No space left"))
            << command.join(' ').toStdString() << ": " << cut.complaints[0].toStdString();
        EXPECT_EQ(cut.complaints.size() > 1, !stored.isEmpty()) << command.join(' ').toStdString();
        EXPECT_TRUE(cut.complaints.mid(1).join(' ').contains(stored))
            << cut.complaints.join('\n').toStdString();
    }
}

TEST_F(OutputTest, WhatNamesNothingIsWrongUsage) {
    for (const QStringList& command :
         {QStringList{"edit", "--screenshot", ""}, QStringList{"edit", "--screenshot="},
          QStringList{"edit", "--style", "", "--screenshot", named("p.png")},
          QStringList{"list", "--data", ""}, QStringList{"list", "--source", ""},
          QStringList{"export", "Beam", ""}}) {
        const ProgramRun refused = run(command);
        EXPECT_EQ(refused.exitCode, 2) << command.join(' ').toStdString();
        EXPECT_TRUE(refused.complaints.join(' ').contains("empty") || command[1] == "--screenshot=")
            << refused.complaints.join(' ').toStdString();
    }
}

TEST_F(OutputTest, AFileThatMayNotGrowIsTold) {
    inChild = [] {
        const rlimit small{16 << 10, 16 << 10};
        setrlimit(RLIMIT_FSIZE, &small);
    };
    const auto files = [this] {
        return std::distance(fs::directory_iterator(folder()), fs::directory_iterator());
    };
    const auto before = files();
    for (const QStringList& command : {QStringList{"edit", "--screenshot", named("p.png")},
                                       QStringList{"export", "Beam", named("p.dsdb")}}) {
        const ProgramRun refused = run(command);
        EXPECT_EQ(refused.exitCode, 1) << command.join(' ').toStdString();
        ASSERT_FALSE(refused.complaints.isEmpty()) << command.join(' ').toStdString();
        EXPECT_TRUE(refused.complaints.last().contains(command.last()))
            << refused.complaints.join('\n').toStdString();
        EXPECT_LE(files(), before + 1) << "no half file"; // the folder of the settings
    }
}

TEST_F(OutputTest, APictureRemovesWhatAKilledOneLeft) {
    const pid_t gone = fork();
    if (gone == 0)
        _exit(0);
    waitpid(gone, nullptr, 0);
    const fs::path half = temporaryName(named("other.png").toStdString(), gone, 0);
    const fs::path notes = temporaryName(named("notes").toStdString(), gone, 1);
    writeBytes(half, "\x89PNG half");
    writeBytes(notes, "mine");
    EXPECT_EQ(run({"edit", "--screenshot", named("p.png")}).exitCode, 0);
    EXPECT_FALSE(fs::exists(half));
    EXPECT_TRUE(fs::exists(notes));
}

TEST_F(OutputTest, WithoutAHomeNothingIsWrittenIntoTheWorkingFolder) {
    const fs::path work = folder() / "work";
    fs::create_directories(work);
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        environment.remove(variable);
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    const std::string place = work.string();
    inChild = [place] {
        if (chdir(place.c_str()) != 0)
            _exit(99);
    };
    const QString picture = named("editor.png");
    EXPECT_EQ(run({"edit", "--screenshot", picture}).exitCode, 0);
    EXPECT_TRUE(fs::is_empty(work));
}

TEST_F(OutputTest, ADeletedWorkingFolderIsNoCrash) {
    const std::string place = (folder() / "gone").string();
    fs::create_directories(place);
    inChild = [place] {
        if (chdir(place.c_str()) != 0 || rmdir(place.c_str()) != 0)
            _exit(99);
    };
    for (const char* relative : {"data", "../data"}) {
        const ProgramRun refused = runBare({"--data", relative, "list"});
        EXPECT_EQ(refused.exitCode, 1);
        ASSERT_EQ(refused.complaints.size(), 1) << refused.complaints.join('\n').toStdString();
        EXPECT_TRUE(refused.complaints[0].contains("working folder")) << refused.complaints[0].toStdString();
        fs::create_directories(place);
    }
    EXPECT_EQ(run({"list"}).exitCode, 0);
}
