#include "app/CommandHere.h"

// Databases that can be opened but not be read whole: what concludes from absence stops and says why.

namespace fs = std::filesystem;

namespace {

/// How a database can be short of what it should hold, and what the sentences must name.
struct Damage {
    std::string sql;
    std::string named;
};

const std::vector<Damage> kDamages = {
    {"DROP TABLE view_request", "\"view_request\""},
    {"DROP TABLE detail_master", "\"detail_master\""},
    {"ALTER TABLE detail_style DROP COLUMN view_1", "\"view_1\""},
    {"UPDATE detail_style SET view_1 = 'x' WHERE name = 'Beam'", "\"x\""},
    {"DROP TABLE drawing_settings", "\"drawing_settings\""},
    {"DROP TABLE repr_map_entry", "\"repr_map_entry\""},
};

class IncompleteTest : public CommandHereTest {
protected:
    void SetUp() override {
        CommandHereTest::SetUp();
        fs::copy(data(), folder() / "sound", fs::copy_options::recursive);
        fs::copy(data() / "standard.dsdb", folder() / "sound.dsdb");
    }
    void damageUser(const std::string& statements) {
        fs::copy_file(folder() / "sound" / "user.dsdb", data() / "user.dsdb",
                      fs::copy_options::overwrite_existing);
        sql("user.dsdb", statements);
        begin();
    }
    // For files that are to stay as the command left them.
    Outcome keepHere(const std::vector<std::string>& words) {
        const Outcome outcome = runHere(words);
        for (const auto& [name, content] : outcome.files)
            writeBytes(name, content);
        begin();
        return outcome;
    }
    std::string path(const char* name) const { return (folder() / name).string(); }
};

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(IncompleteTest, NothingIsConcludedFromWhatIsAbsent) {
    for (const Damage& damage : kDamages) {
        SCOPED_TRACE(damage.sql);
        damageUser(damage.sql);
        const std::vector<std::vector<std::string>> refused = {
            {"export", "Heavy beam", path("out.dsdb"), "--source", "user"},
            {"export", "Beam", path("out.dsdb")},
            {"import", path("sound.dsdb")},
            {"compact"},
            {"set", "length-clip", "Long", "name", "Zz"},
        };
        for (const auto& words : refused) {
            const Outcome outcome = runHere(words);
            EXPECT_EQ(outcome.exitCode, 1) << words.front();
            EXPECT_EQ(outcome.files, before) << words.front();
            EXPECT_EQ(outcome.said, "");
            EXPECT_TRUE(has(outcome.complained, damage.named)) << words.front() << outcome.complained;
            EXPECT_TRUE(has(outcome.complained, "could not be read whole")) << outcome.complained;
        }
        const Outcome checked = runHere({"check"});
        EXPECT_EQ(checked.exitCode, 1);
        const std::string own = checked.said.substr(checked.said.find("user.dsdb"));
        EXPECT_TRUE(has(own, damage.named)) << own;
        EXPECT_FALSE(has(own, "not used by anything") || has(own, "with the key") ||
                     has(own, "has no number"))
            << own;
        EXPECT_TRUE(has(own, "nothing is said about")) << own;

        fs::copy_file(data() / "user.dsdb", folder() / "in.dsdb", fs::copy_options::overwrite_existing);
        damageUser("DELETE FROM detail_style");
        const Outcome imported = runHere({"import", path("in.dsdb")});
        EXPECT_EQ(imported.exitCode, 1);
        EXPECT_EQ(imported.files, before);
        EXPECT_TRUE(has(imported.complained, damage.named)) << imported.complained;
    }
}

TEST_F(IncompleteTest, ANewerDatabaseIsShownAndRefusesWhatWouldChangeItOrLoseWhatIsNotKnown) {
    damageUser("PRAGMA user_version = 99");
    const std::vector<std::vector<std::string>> refused = {
        {"export", "Beam", path("out.dsdb"), "--source", "user"},
        {"import", path("sound.dsdb")},
        {"compact"},
        {"compact", "--dry-run"},
        {"set", "length-clip", "Long", "name", "Zz"},
    };
    const std::string reason = "(version 99); it can be read, but not changed.";
    for (const auto& words : refused) {
        const Outcome outcome = runHere(words);
        EXPECT_EQ(outcome.exitCode, 1) << words.front();
        EXPECT_EQ(outcome.files, before) << words.front();
        EXPECT_EQ(outcome.said, "");
        EXPECT_TRUE(has(outcome.complained, reason)) << words.front() << outcome.complained;
        EXPECT_EQ(outcome.complained.find(reason), outcome.complained.rfind(reason)) << "told once";
    }
    const Outcome listed = runHere({"list", "--source", "user"});
    EXPECT_TRUE(has(listed.said, "Beam") && has(listed.complained, reason)) << listed.complained;
    const Outcome checked = runHere({"check"});
    EXPECT_TRUE(has(checked.said, reason) && has(checked.said, "nothing is said about")) << checked.said;
}

TEST_F(IncompleteTest, WhatIsMerelyOutOfRangeIsWhole) {
    damageUser("UPDATE detail_style SET title_position = 99");
    const Outcome exported = runHere({"export", "Beam", path("out.dsdb")});
    EXPECT_EQ(exported.exitCode, 0) << exported.complained;
    keepHere({"export", "Beam", path("out.dsdb")});
    damageUser("DELETE FROM detail_style");
    EXPECT_EQ(runHere({"import", path("out.dsdb")}).exitCode, 0);
    damageUser("WITH RECURSIVE n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 60) "
               "INSERT INTO detail_style (key, name, title_position) SELECT i, 'S' || i, 99 FROM n");
    EXPECT_EQ(runHere({"export", "Beam", path("more.dsdb")}).exitCode, 0) << "not all of them are told";
}

TEST_F(IncompleteTest, WhatIsDamagedCanBeMendedAndTheRestBeWrittenKnowingly) {
    const std::string twoCells =
        "UPDATE detail_style SET view_1 = 'x', description = x'00' WHERE name = 'Beam'";
    damageUser(twoCells);
    const Outcome first = keepHere({"set", "detail-style", "Beam", "view_1", "Section"});
    EXPECT_EQ(first.exitCode, 1) << "the other cell is still there";
    EXPECT_TRUE(has(first.said, "Changed ")) << first.complained;
    const Outcome second = keepHere({"set", "detail-style", "Beam", "description", ""});
    EXPECT_EQ(second.exitCode, 0) << second.complained << "what is shown can be what is stored from now on";
    EXPECT_FALSE(has(runHere({"check"}).said, "binary data"));
    EXPECT_EQ(runHere({"export", "Beam", path("out.dsdb")}).exitCode, 0);

    damageUser(twoCells);
    const Outcome asked = runHere({"set", "length-clip", "Long", "interval", "5"});
    EXPECT_EQ(asked.files, before);
    EXPECT_TRUE(has(asked.complained, "--shared")) << asked.complained;
    const Outcome shared = keepHere({"set", "length-clip", "Long", "interval", "5", "--shared"});
    EXPECT_EQ(shared.exitCode, 1);
    EXPECT_TRUE(has(shared.said, "Changed ")) << shared.complained;
    const Outcome made = runHere({"new", "detail-style", "Other", "--in", "Beams"});
    EXPECT_EQ(made.exitCode, 1) << "done, but not whole";
    EXPECT_TRUE(has(made.said, "Made ")) << made.complained;
    EXPECT_TRUE(has(runHere({"show", "length-clip", "Long"}).said, "5 mm"));
}

TEST_F(IncompleteTest, AReferenceThatPointsNowhereIsToldByWhoeverLeavesItOut) {
    damageUser("UPDATE view_request SET length_clip = 77 WHERE name = 'Front'");
    const Outcome exported = runHere({"export", "Beam", path("out.dsdb"), "--source", "user"});
    EXPECT_EQ(exported.exitCode, 1);
    EXPECT_TRUE(has(exported.said, "was exported"));
    EXPECT_TRUE(has(exported.complained, "with the key 77")) << exported.complained;
    fs::copy_file(data() / "user.dsdb", folder() / "in.dsdb");
    damageUser("DELETE FROM detail_style");
    const Outcome imported = runHere({"import", path("in.dsdb")});
    EXPECT_EQ(imported.exitCode, 1);
    EXPECT_TRUE(has(imported.said, "Imported the detail style \"Beam\""));
    EXPECT_TRUE(has(imported.complained, "with the key 77")) << imported.complained;
}

TEST_F(IncompleteTest, APictureOfWhatCouldNotBeReadSaysSo) {
    const QString picture = QString::fromStdString(path("editor.png"));
    damageUser("DROP TABLE detail_style");
    const ProgramRun painted = run({"edit", "--screenshot", picture});
    EXPECT_EQ(painted.exitCode, 1);
    EXPECT_TRUE(bytesOf(path("editor.png")).starts_with("\x89PNG"));
    const std::string told = painted.complaints.join('\n').toStdString();
    EXPECT_TRUE(has(told, "\"detail_style\"") && has(told, "shows only")) << told;

    damageUser("DROP TABLE detail_master");
    const ProgramRun hidden =
        run({"edit", "--style", "Beam", "--source", "user", "--screenshot", picture, "--overwrite"});
    EXPECT_EQ(hidden.exitCode, 1);
    const std::string why = hidden.complaints.join('\n').toStdString();
    EXPECT_TRUE(has(why, "\"detail_master\"") && has(why, "could not be read whole")) << why;
    EXPECT_FALSE(has(why, "no category")) << why;
}
