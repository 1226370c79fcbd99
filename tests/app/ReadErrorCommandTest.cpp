#include "app/ProgramFixture.h"

#include "app/CommandLine.h"
#include "data/StyleDatabases.h"
#include "services/KOSettings.h"
#include "support/FaultVfs.h"

#include <algorithm>
#include <sstream>

// One read of a file that fails, at each place of a command in turn, from its start to its end: the command
// is refused and told, or whole.

namespace fs = std::filesystem;

namespace {

/// What a command did, in this process.
struct Outcome {
    int exitCode = -1;
    std::string said;
    std::string complained;
    std::map<std::string, std::string> files;
    bool struck = false; ///< a read went wrong
};

class ReadErrorCommandTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        KOSettings::getInstance().useFile(folder() / "settings.ini");
        KOSettings::getInstance().setPathData({});
        fs::remove_all(data() / "addins");
        before = files();
    }
    void TearDown() override { closeAll(); }

    static void closeAll() {
        StyleDatabases& databases = StyleDatabases::current();
        for (const SourceId id : databases.sources())
            databases.closeSource(id);
    }
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> contents;
        for (const auto& entry : fs::recursive_directory_iterator(folder()))
            if (entry.is_regular_file())
                contents[entry.path()] = contentOf(entry.path());
        return contents;
    }
    void restore() const {
        for (const auto& [name, content] : files())
            if (!before.contains(name))
                fs::remove(name);
        for (const auto& [name, content] : before)
            if (contentOf(name) != content)
                writeFile(name, content);
    }
    // Place 0 is none.
    Outcome runHere(const std::vector<std::string>& words, int place) const {
        std::vector<std::string> arguments = {"detailstyles", "--data", data().string()};
        arguments.insert(arguments.end(), words.begin(), words.end());
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        Outcome outcome;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        {
            const FaultVfs faults(place, FaultVfs::eFault::kReadError);
            outcome.exitCode = runCommandLine(static_cast<int>(argv.size()) - 1, argv.data());
            outcome.struck = place > 0 && FaultVfs::hasStruck();
            closeAll();
        }
        outcome.complained = testing::internal::GetCapturedStderr();
        outcome.said = testing::internal::GetCapturedStdout();
        outcome.files = files();
        restore();
        return outcome;
    }
    void useUserAlone() {
        fs::remove(data() / "standard.dsdb");
        before = files();
    }
    /// Runs the command with an error at each place and tells `judgeRefused` of those that were not whole.
    void sweep(const std::vector<std::string>& words,
               const std::function<void(const Outcome&)>& judgeRefused) {
        const Outcome whole = runHere(words, 0);
        int refused = 0;
        for (int place = 1;; ++place) {
            const Outcome outcome = runHere(words, place);
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

    std::map<std::string, std::string> before;
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
    ASSERT_NE(runHere(words, 0).complained.find("--shared"), std::string::npos);
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
    const std::vector<std::string> known = linesOf(runHere({"check"}, 0).said);
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
