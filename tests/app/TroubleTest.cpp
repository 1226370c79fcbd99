#include "app/ProgramFixture.h"

#include <QProcess>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class TroubleTest : public ProgramTest {
protected:
    // Sets a value in the User database; returns the complaints of a run that could not.
    QString refusalOfSet() {
        const std::string before = bytesOf(data() / "user.dsdb");
        const ProgramRun refused = run({"set", "detail-style", "Beam", "description", "changed"});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_EQ(bytesOf(data() / "user.dsdb"), before);
        EXPECT_EQ(std::distance(fs::directory_iterator(data()), fs::directory_iterator()), 3)
            << "nothing is left over";
        return refused.complaints.join('\n');
    }
};

/// The program's standard error as a pipe of one page. Once its first word has come and nobody reads on, a
/// program with more than a page to say stands still.
class NarrowPipe {
public:
    explicit NarrowPipe(const fs::path& path) : m_path(path) {
        EXPECT_EQ(mkfifo(m_path.c_str(), 0600), 0);
        m_handle = ::open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        EXPECT_EQ(fcntl(m_handle, F_SETPIPE_SZ, 4096), 4096);
    }
    ~NarrowPipe() { ::close(m_handle); }
    void start(QProcess& process, const QStringList& arguments) {
        process.setStandardErrorFile(QString::fromStdString(m_path.string()));
        process.start(DETAILSTYLES_PROGRAM, arguments);
        EXPECT_TRUE(process.waitForStarted());
        fcntl(m_handle, F_SETFL, 0);
    }
    /// Waits for the next piece; empty at the end.
    std::string read() {
        std::string text(1, '\0');
        text.resize(
            static_cast<std::size_t>(std::max<ssize_t>(::read(m_handle, text.data(), text.size()), 0)));
        return text;
    }

private:
    fs::path m_path;
    int m_handle = -1;
};

} // namespace

TEST_F(TroubleTest, AChangeThatAnotherProgramMadeMeanwhileIsKeptAndTold) {
    // Cells to complain of at length, between reading and writing.
    sql("user.dsdb",
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20) "
        "INSERT INTO detail_style (name, title_position) SELECT i || hex(zeroblob(200)), 99 FROM n");
    NarrowPipe errors(folder() / "errors");
    QProcess program;
    program.setProcessEnvironment(environment);
    errors.start(program, {"--data", QString::fromStdString(data().string()), "set", "view-request",
                           "Section", "scale", "1:75"});
    std::string said = errors.read();
    sql("user.dsdb", "UPDATE view_request SET scale = 1.0 / 25 WHERE name = 'Section'");
    for (std::string more = errors.read(); !more.empty(); more = errors.read())
        said += more;
    ASSERT_TRUE(program.waitForFinished(60000));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_NE(said.find("View request \"Section\", Scale: another program stored \"1:25\" meanwhile; "
                        "\"1:75\" was not written."),
              std::string::npos)
        << said;
    EXPECT_TRUE(run({"show", "view-request", "Section", "--source", "user"}).output.contains("1:25"));
}

TEST_F(TroubleTest, AFolderThatMayNotBeWrittenIsTold) {
    const fs::perms writable = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    for (const fs::path& path : {folder(), data()})
        fs::permissions(path, fs::perms::all & ~writable);
    inChild = [] { // nothing is forbidden to the superuser
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(99);
    };
    const QString refusal = refusalOfSet();
    EXPECT_TRUE(refusal.contains("user.dsdb") && refusal.contains("open for reading only"))
        << refusal.toStdString();
    fs::permissions(folder(), fs::perms::owner_all);
    fs::permissions(data(), fs::perms::owner_all);
}

TEST_F(TroubleTest, AFullDiskIsTold) {
    inChild = [] { // no file may grow
        const rlimit none{0, 0};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &none);
    };
    const QString refusal = refusalOfSet();
    EXPECT_TRUE(refusal.contains("user.dsdb") && refusal.contains("disk is full")) << refusal.toStdString();
}
