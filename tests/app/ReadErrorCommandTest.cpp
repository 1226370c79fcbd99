#include "app/CommandHere.h"

#include <algorithm>
#include <sstream>

// One read of a file that fails, at each place of a command in turn, from its start to its end: the command
// is refused and told, or whole.

namespace fs = std::filesystem;

namespace {

class ReadErrorCommandTest : public CommandHereTest {
protected:
    /// Runs the command with an error at each place and tells `judgeRefused` of those that were not whole.
    void sweep(const std::vector<std::string>& words,
               const std::function<void(const Outcome&)>& judgeRefused) {
        const Outcome whole = runHere(words);
        int refused = 0;
        for (int place = 1;; ++place) {
            const FaultVfs faults(place, FaultVfs::eFault::kReadError);
            const Outcome outcome = runHere(words, &faults);
            const std::string told = outcome.said + outcome.complained;
            if (told != whole.said + whole.complained) {
                ++refused;
                EXPECT_TRUE(outcome.struck) << told;
                EXPECT_NE(told.find(".dsdb\" could not be read"), std::string::npos) << place << told;
                EXPECT_EQ(told.find("restore it"), std::string::npos) << place << told;
            }
            // Done all the same where another source than the one that is worked on is the one that is
            // absent.
            if (outcome.exitCode != whole.exitCode || outcome.said != whole.said ||
                outcome.files != whole.files) {
                EXPECT_EQ(outcome.exitCode, 1) << place << told;
                EXPECT_NE(told, whole.said + whole.complained) << place;
                EXPECT_EQ(outcome.files, before) << place << told;
                judgeRefused(outcome);
            }
            if (!outcome.struck || HasFailure())
                break;
        }
        EXPECT_GT(refused, 20) << words.front();
    }
    /// The same for a command that says nothing when it is refused, on the User database alone.
    void sweepSilent(const std::vector<std::string>& words) {
        useUserAlone();
        sweep(words, [](const Outcome& refused) { EXPECT_EQ(refused.said, ""); });
    }
};

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

TEST_F(ReadErrorCommandTest, ASharedRecordIsNeverTakenForUnshared) {
    const std::vector<std::string> words = {"set", "view-request", "Front", "scale", "1/7"};
    ASSERT_NE(runHere(words).complained.find("--shared"), std::string::npos);
    sweepSilent(words);
}

TEST_F(ReadErrorCommandTest, ASharedRecordIsSetOrNothingIs) {
    sweepSilent({"set", "view-request", "Front", "scale", "1/7", "--shared"});
}

TEST_F(ReadErrorCommandTest, AnExportIsWholeOrNothing) {
    sweepSilent({"export", "Beam", (folder() / "out.dsdb").string()});
}

TEST_F(ReadErrorCommandTest, AnImportIsWholeOrNothing) {
    sql("standard.dsdb", "UPDATE detail_style SET name = name || ' 2'");
    fs::copy(data() / "standard.dsdb", folder() / "in.dsdb");
    sweepSilent({"import", (folder() / "in.dsdb").string()});
}

TEST_F(ReadErrorCommandTest, CheckSaysNothingOfWhatItCouldNotRead) {
    const std::vector<std::string> known = linesOf(runHere({"check"}).said);
    sweep({"check"}, [&](const Outcome& refused) {
        for (const std::string& line : linesOf(refused.said))
            EXPECT_TRUE(std::ranges::find(known, line) != known.end() || line.ends_with(".dsdb:") ||
                        line.find("could not be read") != std::string::npos)
                << line;
    });
}

TEST_F(ReadErrorCommandTest, WhatIsListedShownOrCompactedIsWholeOrSaidNotToBe) {
    const auto isTold = [](const Outcome& refused) { EXPECT_NE(refused.complained, ""); };
    sweep({"list"}, isTold);
    useUserAlone();
    sweep({"show", "view-request", "Front"}, isTold);
    sweepSilent({"compact"});
}
