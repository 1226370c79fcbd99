#include "app/ProgramFixture.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <set>

namespace fs = std::filesystem;

namespace {

class ManualTest : public ProgramTest {
protected:
    QString help(const QStringList& command) { return runBare(command + QStringList{"--help"}).output; }
    QStringList offered(const QString& line) {
        return run({"complete", QString(line).replace("DATA", QString::fromStdString(data().string()))})
            .output.split('\n', Qt::SkipEmptyParts)
            .replaceInStrings(QRegularExpression("(?<=.)\t.*"), "");
    }
};

QStringList found(const QString& text, const char* pattern) {
    QStringList all;
    for (auto it = QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(text);
         it.hasNext();)
        all << it.next().captured(1);
    return all;
}

} // namespace

// What help says, the manual, the completion and the README say too.
TEST_F(ManualTest, EveryCommandAndOptionStandsEverywhere) {
    QFile file(QString::fromStdString((fs::path(SOURCE_DIR) / "README.md").string()));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QString readme = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(readme.contains(runBare({"manual", "table"}).output));
    const QString manual = runBare({"manual", "program"}).output.replace("\\-", "-");
    QList<QStringList> commands;
    for (const QString& name : found(help({}).section("Subcommands:", 1), "^  ([a-z-]+) ")) {
        const QStringList below = found(help({name}).section("Subcommands:", 1), "^  ([a-z-]+) ");
        EXPECT_TRUE(offered("detailstyles ").contains(name)) << name.toStdString();
        if (below.isEmpty())
            commands << QStringList{name};
        for (const QString& part : below)
            commands << QStringList{name, part};
    }
    ASSERT_GT(commands.size(), 15);
    for (const QStringList& command : commands) {
        const QString name = command.join(' ');
        const QString page = manual.section(".SS " + name + " ", 1).section(".SS ", 0, 0);
        const QString row = found(readme, ("^(\\| `" + name + " .*)$").toUtf8()).value(0);
        const QStringList completed = offered("detailstyles " + name + " --");
        const QStringList options = found(help(command), "^  (?:-h,)?(--[a-z-]+)");
        EXPECT_GE(options.size(), 1);
        for (const QString& option : options)
            EXPECT_TRUE(option == "--help" || (page.contains("\\fB" + option) && row.contains(option) &&
                                               completed.contains(option)))
                << (name + ' ' + option).toStdString();
    }
    environment.insert("LC_ALL", "de_DE.UTF-8");
    EXPECT_TRUE(runBare({"manual", "program"}).output.contains("\n.SH BEFEHLE\n"));
    EXPECT_TRUE(runBare({"manual", "dsdb"}).output.contains("\\fBtitle_position\\fR\nTitelposition; "));
    EXPECT_TRUE(QRegularExpression("^detailstyles [0-9.]+\nSchema [0-9]+\nQt 6[0-9.]+, SQLite 3[0-9.]+")
                    .match(runBare({"--version"}).output)
                    .hasMatch());
}

TEST_F(ManualTest, CompletionOffersWhatTheDataFolderHas) {
    fs::remove(data() / "user.dsdb");
    const std::vector<std::pair<const char*, QStringList>> lines = {
        {"detailstyles --data DATA list --source b", {"bridges"}},
        {"detailstyles --data DATA show detail-style ", {"Beam", "Heavy beam"}},
        {"detailstyles --data=DATA show detail-style \"Heavy ", {"Heavy beam"}},
        {"detailstyles --data DATA show detail-style Heavy\\ b", {"Heavy beam"}},
        {"detailstyles --data DATA show --source user detail-style ", {}},
        {"detailstyles show detail-style Beam ", {}},
        {"detailstyles set length-clip Long inter", {"interval"}},
        {"detailstyles --data DATA set detail-style Beam category ", {"Beams"}},
        {"detailstyles --data DATA new detail-style X --value view_1=F", {"view_1=Front"}},
        {"detailstyles entry add repr-map X --value qualifier_", {"qualifier_set="}},
        {"detailstyles import x.dsdb --same-name ", {"both", "mine", "replace"}},
        {"detailstyles --data ", {"\tfolders"}},
        {"detailstyles check a.dsdb ", {"\tfiles"}},
    };
    for (const auto& [line, expected] : lines)
        EXPECT_EQ(offered(line), expected) << line << ": " << offered(line).join(", ").toStdString();
    EXPECT_FALSE(fs::exists(data() / "user.dsdb"));

    QProcess bash;
    bash.start("bash", {"-c",
                        "detailstyles() { printf 'Plate 1:15\\tstyle\\nPlate 2\\n'; }; . \"$1\"; "
                        "COMP_LINE='detailstyles show detail-style Plate\\ 1:1' COMP_POINT=${#COMP_LINE}; "
                        "COMP_WORDS=(detailstyles show detail-style 'Plate\\ 1' : 1) COMP_CWORD=5; "
                        "_detailstyles; printf '%s\\n' \"${COMPREPLY[@]}\"",
                        "-", SOURCE_DIR "/packaging/completion/detailstyles.bash"});
    ASSERT_TRUE(bash.waitForFinished());
    EXPECT_EQ(QString::fromUtf8(bash.readAllStandardOutput()), "15\nPlate\\ 2\n");
}
