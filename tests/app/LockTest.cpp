#include "app/CommandHere.h"
#include "support/Mentions.h"

#include <algorithm>
#include <array>
#include <thread>

#include <unistd.h>

// What a command does while another program has a database for itself, or makes one.

namespace fs = std::filesystem;

namespace {

using LockTest = CommandHereTest;

} // namespace

TEST_F(LockTest, ADatabaseThatStaysLockedIsLeftOut) {
    OtherProgram other(user());
    other.run("BEGIN EXCLUSIVE");
    const Outcome listed = runHere({"list", "--json"});
    EXPECT_EQ(listed.exitCode, 1);
    EXPECT_TRUE(mentions(listed.said, "\"standard\"") && !mentions(listed.said, "\"user\"")) << listed.said;
    EXPECT_TRUE(mentions(listed.complained, "user.dsdb\" is locked")) << listed.complained;
    EXPECT_EQ(std::ranges::count(listed.complained, '\n'), 1) << listed.complained;
}

TEST_F(LockTest, ALockIsWaitedForWithOneLine) {
    const LockWaiting forLong(std::chrono::hours(1));
    OtherProgram other(user());
    other.run("BEGIN EXCLUSIVE");
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const int terminal = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);
    close(ends[1]);
    std::string said;
    std::thread reader([&] {
        for (char c = 0; read(ends[0], &c, 1) == 1; said += c)
            if (said.empty())
                other.run("COMMIT");
    });
    EXPECT_EQ(commandLine({"set", "detail-style", "Beam", "description", "mine"}), 0);
    dup2(terminal, STDERR_FILENO);
    close(terminal);
    reader.join();
    close(ends[0]);
    EXPECT_TRUE(mentions(said, "Waiting for \"" + user() + "\", which another program has locked")) << said;
    EXPECT_EQ(std::ranges::count(said, '\n'), 1) << said;
}

TEST_F(LockTest, AUserDatabaseThatAnotherStartMakesMeanwhileIsUsed) {
    const std::string theirs = bytesOf(user());
    const std::string asCompared = unmarked(theirs);
    fs::remove(user());
    begin();
    int duringCreation = 0;
    for (int place = 1;; ++place) {
        bool wasTheirs = false;
        const FaultVfs otherStart(place, [&] {
            for (const auto& entry : fs::directory_iterator(data()))
                duringCreation += entry.path().filename().string().starts_with("user.dsdb.new");
            wasTheirs = !fs::exists(user());
            if (wasTheirs)
                writeBytes(user(), theirs);
        });
        const Outcome listed = runHere({"list"}, &otherStart);
        EXPECT_EQ(listed.exitCode, 0) << place;
        EXPECT_EQ(listed.complained, "") << place;
        EXPECT_EQ(listed.files.at(user()) == asCompared, wasTheirs) << place;
        if (!listed.struck || HasFailure())
            break;
    }
    EXPECT_GT(duringCreation, 0);
}
