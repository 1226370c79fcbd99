#include "app/ProgramFixture.h"

#include <QJsonArray>

namespace fs = std::filesystem;

namespace {

/// One way in which a data folder can be bad: what is done to it, the file that the sentence must name, how
/// many of the six detail styles are still listed, and what the program gives back.
struct BadInput {
    std::string name;
    std::function<void()> spoil;
    std::string named;
    int stylesLeft = 4;
    int exitCode = 1;
};

class BadFilesTest : public ProgramTest {
protected:
    // Runs `list` on a folder of its own that was spoilt in this way.
    void check(const BadInput& bad) {
        SCOPED_TRACE(bad.name);
        fs::copy(data(), folder() / "sound", fs::copy_options::recursive);
        bad.spoil();
        const ProgramRun listed = run({"list", "--json"});
        fs::remove_all(data());
        fs::rename(folder() / "sound", data());
        EXPECT_EQ(listed.exitCode, bad.exitCode);
        EXPECT_EQ(listed.json().array().size(), bad.stylesLeft);
        ASSERT_EQ(listed.complaints.size(), 1) << listed.complaints.join('\n').toStdString();
        EXPECT_TRUE(listed.complaints[0].contains(QString::fromStdString(bad.named)))
            << listed.complaints[0].toStdString();
    }
};

} // namespace

TEST_F(BadFilesTest, EachGetsOneSentenceAndTheRestIsListed) {
    const std::string addIn = "addins/bridges/styles.dsdb";
    const std::vector<BadInput> inputs = {
        {"no database", [&] { writeBytes(data() / "user.dsdb", std::string(8192, 'x')); }, "user.dsdb"},
        {"missing", [&] { fs::remove(data() / "standard.dsdb"); }, "standard.dsdb"},
        {"no table", [&] { sql("user.dsdb", "DROP TABLE detail_style"); }, "user.dsdb"},
        {"text for a number",
         [&] { sql("user.dsdb", "UPDATE detail_style SET title_position = 'x' WHERE key = 1"); }, "user.dsdb",
         6},
        {"out of range",
         [&] { sql("user.dsdb", "UPDATE detail_style SET title_position = 99 WHERE key = 1"); }, "user.dsdb",
         6, 0},
        {"add-in without database", [&] { fs::remove(data() / addIn); }, "bridges", 4},
        {"add-in without description", [&] { fs::remove(data() / "addins/bridges/addin.ini"); }, "bridges",
         4},
        {"no data folder", [&] { fs::remove_all(data()); }, "data\"", 0},
    };
    for (const BadInput& bad : inputs)
        check(bad);
}

TEST_F(BadFilesTest, NothingOfAnotherSourceIsTakenForWhatCannotBeRead) {
    writeBytes(data() / "user.dsdb", "rubbish");
    const QString file = named("beam.dsdb");
    const ProgramRun refused = run({"export", "Beam", file});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_FALSE(fs::exists(folder() / "beam.dsdb"));
    EXPECT_TRUE(refused.complaints.join(' ').contains("--source"))
        << refused.complaints.join('\n').toStdString();
    EXPECT_EQ(run({"export", "Beam", file, "--source", "standard"}).exitCode, 0);
    const ProgramRun shown = run({"show", "detail-style", "Beam"});
    EXPECT_EQ(shown.exitCode, 1);
    EXPECT_TRUE(shown.output.contains("\"standard\"")) << shown.output.toStdString();
    EXPECT_TRUE(shown.complaints.join(' ').contains("searched first"));
    const ProgramRun own = run({"show", "detail-style", "Own"});
    EXPECT_EQ(own.exitCode, 1);
    EXPECT_TRUE(own.complaints.last().contains("\"user\", which may hold it"))
        << own.complaints.join('\n').toStdString();
}
