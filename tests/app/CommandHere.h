#pragma once

#include "app/ProgramFixture.h"

#include "app/CommandLine.h"
#include "data/StyleDatabases.h"
#include "services/KOSettings.h"
#include "support/FaultVfs.h"
#include "support/LockWaiting.h"

#include <map>

/// What a command did, in this process.
struct Outcome {
    int exitCode = -1;
    std::string said;
    std::string complained;
    std::map<std::string, std::string> files; ///< all there are afterwards, with their content
    bool struck = false;                      ///< what was to happen meanwhile happened
};

/// Commands run in this process, where reading files can be disturbed.
class CommandHereTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        KOSettings::getInstance().useFile(folder() / "settings.ini");
        KOSettings::getInstance().setPathData({});
        std::filesystem::remove_all(data() / "addins");
        begin();
    }
    void TearDown() override { closeAll(); }

    static void closeAll() {
        StyleDatabases& databases = StyleDatabases::current();
        for (const SourceId id : databases.sources())
            databases.closeSource(id);
    }
    /// Without the random mark that each change leaves in a database.
    static std::string unmarked(std::string content) {
        constexpr std::size_t kMarkAt = 40;
        if (content.starts_with("SQLite format 3"))
            content.replace(kMarkAt, 4, "MARK");
        return content;
    }
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> contents;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder()))
            if (entry.is_regular_file())
                contents[entry.path()] = unmarked(bytesOf(entry.path()));
        return contents;
    }
    void restore() const {
        for (const auto& [name, content] : files())
            if (!before.contains(name))
                std::filesystem::remove(name);
        for (const auto& [name, content] : before)
            if (bytesOf(name) != content)
                writeBytes(name, content);
    }
    /// Runs the command and returns its exit code.
    int commandLine(const std::vector<std::string>& words) const {
        std::vector<std::string> arguments = {"detailstyles", "--data", data().string()};
        arguments.insert(arguments.end(), words.begin(), words.end());
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        return runCommandLine(static_cast<int>(argv.size()) - 1, argv.data());
    }
    /// Runs the command while `disturbance` lives, and brings the files back.
    Outcome runHere(const std::vector<std::string>& words, const FaultVfs* disturbance = nullptr) const {
        Outcome outcome;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        outcome.exitCode = commandLine(words);
        outcome.struck = disturbance && FaultVfs::hasStruck();
        closeAll();
        outcome.complained = testing::internal::GetCapturedStderr();
        outcome.said = testing::internal::GetCapturedStdout();
        outcome.files = files();
        restore();
        return outcome;
    }
    /// What the test starts from is as it is now.
    void begin() { before = files(); }
    void useUserAlone() {
        std::filesystem::remove(data() / "standard.dsdb");
        begin();
    }

    std::string user() const { return (data() / "user.dsdb").string(); }

    std::map<std::string, std::string> before;
    LockWaiting waiting; ///< hardly at all
};
