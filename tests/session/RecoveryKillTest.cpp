#include "data/StyleFixture.h"

#include "model/KorDSMDialogFactory.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMRecovery.h"
#include "session/KorDSMUndo.h"
#include "support/OtherProgram.h"

#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

// A program that is killed at any write into the recovery folder while changes are settled, and again while
// they are brought back.

namespace {

/// Writes into `folder` are counted in the process, which kills itself at one of them.
struct {
    std::string folder;
    int left = -1;
} g_kill;

bool isNext(const std::string& path) {
    return g_kill.left >= 0 && path.starts_with(g_kill.folder) && g_kill.left-- == 0;
}

std::string pathOf(int descriptor) {
    std::error_code none;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), none).string();
}

} // namespace

// In the place of the system's.
extern "C" {
ssize_t write(int descriptor, const void* bytes, size_t size) {
    if (g_kill.left >= 0 && isNext(pathOf(descriptor))) {
        syscall(SYS_write, descriptor, bytes, size / 2);
        raise(SIGKILL);
    }
    return syscall(SYS_write, descriptor, bytes, size);
}
int ftruncate(int descriptor, off_t size) noexcept {
    if (g_kill.left >= 0 && isNext(pathOf(descriptor)))
        raise(SIGKILL);
    return static_cast<int>(syscall(SYS_ftruncate, descriptor, size));
}
int unlink(const char* path) noexcept {
    if (g_kill.left >= 0 && isNext(path))
        raise(SIGKILL);
    return static_cast<int>(syscall(SYS_unlink, path));
}
}

namespace {

constexpr int kInQuestion = -2; ///< a moment to be killed at, besides the writes
constexpr int kNever = 1000;

class RecoveryKill : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        KorDSMDialogFactory::options().recoversChanges = true;
        KorDSMDialogFactory::options().recoveryFolder = KorString(file("settings"));
        g_kill.folder = file("settings");
        for (int i = 0; i < kRows; ++i)
            add<StructDetObjReprMap>(kUser, nameOf(i));
        ASSERT_TRUE(commit());
        databases.closeSource(kUser);
        databases.closeSource(kStandard);
        m_before = bytesOf(file("user.dsdb"));
    }
    void TearDown() override {
        KorDSMDialogFactory::options().recoversChanges = false;
        KorDSMDialogFactory::options().recoveryFolder = {};
    }
    static constexpr int kRows = 6;
    static KorString nameOf(int i) { return KorString("Row " + std::to_string(i)); }

    /// Ten commands, the same for the same seed; returns the key of the last new row, or 0.
    std::int32_t edit(std::minstd_rand random) {
        std::int32_t added = 0;
        for (int i = 0; i < 10; ++i) {
            const KorString text("mine " + std::to_string(i));
            const StructRecord* row =
                this->row<StructDetObjReprMap>(kUser, nameOf(static_cast<int>(random() % kRows)));
            if (random() % 4 == 0)
                added = add<StructDetObjReprMap>(kUser, text);
            else if (row && random() % 5 == 0)
                databases.remove(kTableReprMap, KorOdbcKey(row->key));
            else if (row)
                set(kUser, kTableReprMap, row->key, 2, text);
            if (added && random() % 3 == 0)
                set(kUser, kTableReprMap, added, 2, text);
        }
        return added;
    }
    void storeTheirs(std::minstd_rand random, std::int32_t takenKey) {
        OtherProgram other(file("user.dsdb"));
        for (int i = 0; i < kRows; i += 1 + static_cast<int>(random() % 2))
            other.run("UPDATE repr_map SET description = 'theirs' WHERE name = 'Row " + std::to_string(i) +
                      "'");
        if (takenKey)
            other.run("INSERT INTO repr_map(\"key\", name) VALUES (" + std::to_string(takenKey) +
                      ", 'Theirs')");
    }
    KorDSMCommit::ChooseMine choose(bool mine, int killAt = kNever) {
        return [this, mine, killAt](const std::vector<OutsideChange>& changes) {
            ++m_asked;
            if (killAt == kInQuestion)
                raise(SIGKILL);
            return mine ? changes : std::vector<OutsideChange>();
        };
    }
    void start() {
        open(false);
        databases.setCurrentSource(kUser);
        KorDSMRecovery::writeDown([] {});
    }
    static void armAt(int write) { g_kill.left = write >= 0 ? write : -1; }
    void bringBack(bool mine, int killAt = kNever) {
        start();
        armAt(killAt);
        KorDSMRecovery recovery;
        recovery.offer(
            [this](const KorDSMRecovery::Lost&) {
                ++m_offers;
                return KorDSMRecovery::eAnswer::kYes;
            },
            [&](const KorDSMCommit::Read& read) { return KorDSMCommit::settle(read, choose(mine, killAt)); });
        armAt(-1);
    }
    void editAndSettle(unsigned seed, bool mine, int killAt) {
        start();
        storeTheirs(std::minstd_rand(seed + 100), edit(std::minstd_rand(seed)));
        armAt(killAt);
        KorDSMCommit::settle(&KorDSMCommit::readChanged, choose(mine, killAt));
        armAt(-1);
    }
    void reset() {
        databases.pending().setObserver({});
        databases.closeSource(kUser);
        databases.closeSource(kStandard);
        std::filesystem::remove_all(file("settings"));
        writeBytes(file("user.dsdb"), m_before);
        m_asked = m_offers = 0;
    }
    /// Runs in a process of its own that is killed in any case. Returns whether all was done before.
    template <typename Function>
    static bool killed(Function run) {
        auto* done =
            static_cast<bool*>(mmap(nullptr, 1, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
        *done = false;
        const pid_t child = fork();
        if (child == 0) {
            run();
            *done = true;
            raise(SIGKILL);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        const bool all = *done;
        munmap(done, 1);
        return all;
    }
    int files() const {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator(file("settings")),
                                              std::filesystem::directory_iterator()));
    }

    std::string m_before;
    int m_asked = 0;
    int m_offers = 0;
};

} // namespace

TEST_F(RecoveryKill, WhereverItHappensNothingIsLostOrTwiceOrSilentlyMine) {
    for (const unsigned seed : {1U, 2U})
        for (const bool mine : {true, false}) {
            reset();
            editAndSettle(seed, mine, kNever);
            ASSERT_EQ(m_asked, 1) << seed;
            const std::string wanted = contentOf(kUser);
            const std::vector<KorString> steps = KorDSMUndo::undoSteps(99);
            EXPECT_GT(steps.size(), 2U);
            while (databases.pending().canUndo())
                databases.undo();
            const std::string theirs = contentOf(kUser);
            open(false);
            EXPECT_EQ(contentOf(kUser), theirs) << "what is taken back step by step leaves what is stored";
            bool all = false;
            for (int first = kInQuestion; !all; first = first == kInQuestion ? 0 : first + 1)
                for (const int second : {kInQuestion, 0, 1, 2, kNever}) {
                    SCOPED_TRACE(testing::Message() << seed << " " << mine << " " << first << " " << second);
                    reset();
                    all = killed([&] { editAndSettle(seed, mine, first); });
                    killed([&] { bringBack(mine, second); });
                    bringBack(mine);
                    ASSERT_EQ(contentOf(kUser), wanted);
                    ASSERT_EQ(KorDSMUndo::undoSteps(99), steps);
                    ASSERT_EQ(m_offers, 1);
                    if (first == kInQuestion && second == kInQuestion) {
                        ASSERT_EQ(m_asked, 1) << "asked again, and not answered by itself";
                    }
                    ASSERT_EQ(files(), 1);
                }
        }
}
