#include "app/ProgramFixture.h"

#include <sys/resource.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class TroubleTest : public ProgramTest {
protected:
    // Wants to change the User database; returns the complaints of a run that could not.
    QString refusalOf(const QStringList& command = {"set", "detail-style", "Beam", "description",
                                                    "changed"}) {
        const std::string before = bytesOf(data() / "user.dsdb");
        const ProgramRun refused = run(command);
        EXPECT_EQ(refused.exitCode, 1) << command.join(' ').toStdString();
        EXPECT_EQ(bytesOf(data() / "user.dsdb"), before);
        EXPECT_EQ(std::distance(fs::directory_iterator(data()), fs::directory_iterator()), 3)
            << "nothing is left over";
        return refused.complaints.join('\n');
    }
};

} // namespace

TEST_F(TroubleTest, AFolderThatMayNotBeWrittenIsTold) {
    const QString exported = QString::fromStdString((folder() / "beam.dsdb").string());
    ASSERT_EQ(run({"export", "Beam", exported}).exitCode, 0);
    const fs::perms writable = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    for (const fs::path& path : {folder(), data()})
        fs::permissions(path, fs::perms::all & ~writable);
    inChild = [] { // nothing is forbidden to the superuser
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(99);
    };
    for (const QStringList& command : {QStringList{"set", "detail-style", "Beam", "description", "changed"},
                                       {"import", exported},
                                       {"copy", "detail-style", "Beam", "Beam 2"},
                                       {"rename", "detail-style", "Beam", "Beam 2"}}) {
        const QString refusal = refusalOf(command);
        EXPECT_TRUE(refusal.contains("user.dsdb") && refusal.contains("open for reading only"))
            << refusal.toStdString();
    }
    fs::permissions(folder(), fs::perms::owner_all);
    fs::permissions(data(), fs::perms::owner_all);
}

TEST_F(TroubleTest, AFullDiskIsTold) {
    inChild = [] { // no file may grow
        const rlimit none{0, 0};
        setrlimit(RLIMIT_FSIZE, &none);
    };
    const QString refusal = refusalOf();
    EXPECT_TRUE(refusal.contains("user.dsdb") && refusal.contains("disk is full")) << refusal.toStdString();
}
