#include "base/TemporaryFile.h"
#include "services/KOSettings.h"
#include "services/KorTextFile.h"
#include "services/ServicesTestSupport.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class SettingsTest : public ServicesTest {
protected:
    /// Reads the file as a program that starts would.
    KOSettings& start(const fs::path& file) {
        KOSettings::getInstance().useFile(file);
        return KOSettings::getInstance();
    }
    const KorString kKey = KOSettings::getKeyDSM();
};

} // namespace

TEST_F(SettingsTest, WhatIsWrittenIsThereWhenTheProgramStartsAgain) {
    const fs::path file = m_folder.path() / "new" / "folder" / "settings.ini";
    bool flag = true;
    EXPECT_FALSE(start(file).readBool(kKey, "ShowFullTree", flag));
    EXPECT_TRUE(flag) << "an absent value leaves the caller's";
    KOSettings::getInstance().writeBool(kKey, "ShowFullTree", false);
    KOSettings::getInstance().writeInt(kKey, "Width", -12);
    KOSettings::getInstance().writeString("Other", "Text", "a = b\nnext line; # no comment");
    KOSettings::getInstance().writeString(kKey, "Text", "");

    const KOSettings& again = start(file);
    int width = 0;
    KorString text;
    EXPECT_TRUE(again.readBool(kKey, "ShowFullTree", flag) && !flag);
    EXPECT_TRUE(again.readInt(kKey, "Width", width) && width == -12);
    EXPECT_TRUE(again.readString("Other", "Text", text) && text == "a = b next line; # no comment");
    EXPECT_TRUE(again.readString(kKey, "Text", text) && text.isEmpty());
    EXPECT_FALSE(again.readString("Other", "Width", text));
    EXPECT_TRUE(KorHostReport::take().empty());
}

TEST_F(SettingsTest, RubbishIsReportedByLineAndNothingOfTheFileIsLost) {
    const std::string content = "# my notes\n[DetailStylesManager]\nShowWarning = yes\nwhat is this\n= 3\n"
                                "Width = wide\n\n[Other]\n; mine\nx=1\n";
    const fs::path file = m_folder.write("settings.ini", content);
    KOSettings& settings = start(file);
    const std::string sentence = onlySentence();
    EXPECT_TRUE(mentions(sentence, file.string()) && mentions(sentence, "line 4, 5;")) << sentence;

    bool flag = false;
    int width = 7;
    EXPECT_TRUE(settings.readBool(kKey, "ShowWarning", flag) && flag);
    EXPECT_FALSE(settings.readInt(kKey, "Width", width) || settings.readInt(kKey, "Width", width));
    EXPECT_EQ(width, 7);
    EXPECT_TRUE(mentions(onlySentence(), "\"wide\""));
    EXPECT_EQ(m_folder.read("settings.ini"), content) << "reading changes nothing";

    settings.writeBool(kKey, "FullExpand", false);
    settings.writeInt("Other", "x", 2);
    EXPECT_EQ(m_folder.read("settings.ini"),
              "# my notes\n[DetailStylesManager]\nShowWarning = yes\n# not a setting: what is this\n"
              "# not a setting: = 3\nWidth = wide\nFullExpand = false\n\n[Other]\n; mine\nx = 2\n");
    start(file);
    EXPECT_TRUE(KorHostReport::take().empty()) << "what was reported is a comment now";

    EXPECT_FALSE(settings.readInt(kKey, "Width", width));
    onlySentence();
    settings.writeInt(kKey, "Width", 8);
    settings.writeInt(kKey, "Width", 9);
    EXPECT_TRUE(
        mentions(m_folder.read("settings.ini"), "\n# not a setting: Width = wide\nWidth = 9\nFullExpand"))
        << m_folder.read("settings.ini");
}

TEST_F(SettingsTest, AFileThatIsTooLargeForSettingsIsToldAndLeftAlone) {
    std::string content = "[DetailStylesManager]\nA = 1\n";
    while (content.size() <= 1U << 20)
        content += "x = 2\n";
    const fs::path file = m_folder.write("settings.ini", content);
    KOSettings& settings = start(file);
    int a = 0;
    EXPECT_FALSE(settings.readInt(kKey, "A", a));
    const std::string sentence = onlySentence();
    EXPECT_TRUE(mentions(sentence, file.string()) && mentions(sentence, "larger than 1 MB")) << sentence;
    settings.writeInt(kKey, "A", 3);
    EXPECT_TRUE(settings.readInt(kKey, "A", a) && a == 3);
    EXPECT_EQ(m_folder.read("settings.ini"), content);
}

TEST_F(SettingsTest, TwoProgramsKeepEachOthersSettings) {
    const fs::path file = m_folder.write("settings.ini", "[DetailStylesManager]\nA = 1\n");
    KOSettings& settings = start(file);
    m_folder.write("settings.ini", "[DetailStylesManager]\nA = 1\nTheirs = 5\n");
    settings.writeInt(kKey, "Mine", 6);
    EXPECT_EQ(m_folder.read("settings.ini"), "[DetailStylesManager]\nA = 1\nTheirs = 5\nMine = 6\n");
}

TEST_F(SettingsTest, WhereNothingCanBeWrittenSettingsLastInMemory) {
    m_folder.write("occupied", "a file where the folder should be");
    KOSettings& settings = start(m_folder.path() / "occupied" / "settings.ini");
    settings.writeInt(kKey, "A", 1);
    settings.writeInt(kKey, "B", 2);
    int a = 0;
    int b = 0;
    EXPECT_TRUE(settings.readInt(kKey, "A", a) && settings.readInt(kKey, "B", b));
    EXPECT_EQ(a + b, 3);
    EXPECT_TRUE(mentions(onlySentence(), (m_folder.path() / "occupied" / "settings.ini").string()));
    EXPECT_EQ(m_folder.read("occupied"), "a file where the folder should be");

    const fs::path folder = m_folder.path() / "is.a.folder";
    fs::create_directory(folder);
    start(folder).writeInt(kKey, "A", 3);
    EXPECT_TRUE(settings.readInt(kKey, "A", a) && a == 3);
    EXPECT_TRUE(mentions(onlySentence(), folder.string()));
    EXPECT_TRUE(fs::is_directory(folder));
}

TEST_F(SettingsTest, AFullDiskLeavesTheOldFileWhole) {
    std::string content = "[DetailStylesManager]\nA = 1\n";
    content.append(5000, '#').append("\n");
    const fs::path file = m_folder.write("settings.ini", content);
    KOSettings& settings = start(file);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{4096, before.rlim_max};
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    settings.writeInt(kKey, "A", 2);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_EQ(m_folder.read("settings.ini"), content);
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder.path()), {}), 1) << "nothing half-written stays";
    EXPECT_TRUE(mentions(onlySentence(), file.string()));

    settings.writeInt(kKey, "B", 3);
    EXPECT_TRUE(mentions(m_folder.read("settings.ini"), "A = 2\n"))
        << "stored with the next write that works";
}

TEST_F(SettingsTest, WhatAKilledProgramLeftOfTheFileIsRemovedByTheNextWrite) {
    const pid_t process = fork();
    if (process == 0)
        _exit(0);
    waitpid(process, nullptr, 0);
    const fs::path file = m_folder.write("settings.ini", "[DetailStylesManager]\n");
    const fs::path left = m_folder.write(temporaryName("settings.ini", process, 0), "[Detail");
    const fs::path other = m_folder.write(temporaryName("other.ini", process, 0), "[Detail");
    const fs::path copy = m_folder.write("settings.ini.new" + std::to_string(process) + "-1", "my copy");
    start(file).writeInt(kKey, "A", 2);
    EXPECT_FALSE(fs::exists(left));
    EXPECT_TRUE(fs::exists(other));
    EXPECT_TRUE(fs::exists(copy));
}

TEST_F(SettingsTest, ATextReplacesNothingUnaskedAndNoLinkThatLeadsNowhere) {
    const fs::path file = m_folder.write("picture", "mine");
    EXPECT_FALSE(KorTextFile::replace(file, "new", false));
    EXPECT_EQ(m_folder.read("picture"), "mine");
    EXPECT_TRUE(KorTextFile::replace(m_folder.path() / "other", "new", false));
    const fs::path link = m_folder.path() / "link";
    fs::create_symlink("nowhere", link);
    EXPECT_FALSE(KorTextFile::replace(link, "new"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder.path()), {}), 3) << "nothing half-written stays";
}

TEST_F(SettingsTest, TheFileKeepsItsPermissionsAndItsLink) {
    const fs::path real = m_folder.write("dotfiles/settings.ini", "[DetailStylesManager]\nA = 1\n");
    fs::permissions(real, fs::perms(0600));
    const fs::path link = m_folder.path() / "settings.ini";
    fs::create_symlink(real, link);
    start(link).writeInt(kKey, "A", 2);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(m_folder.read("dotfiles/settings.ini"), "[DetailStylesManager]\nA = 2\n");
    EXPECT_EQ(fs::status(real).permissions(), fs::perms(0600));
}

TEST_F(SettingsTest, TheDataPathHasBackslashes) {
    KOSettings& settings = start(m_folder.path() / "settings.ini");
    settings.setPathData("/srv/styles/");
    EXPECT_EQ(settings.getPathData() + KorString("\\Shared\\Support"), "\\srv\\styles\\Shared\\Support");
}
