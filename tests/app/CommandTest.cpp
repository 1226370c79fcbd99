#include "app/ProgramFixture.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

using CommandTest = ProgramTest;

QJsonObject column(const ProgramRun& shown, const QString& name) {
    for (const QJsonValue& value : shown.json()["columns"].toArray())
        if (value["column"] == name)
            return value.toObject();
    return {};
}

} // namespace

TEST_F(CommandTest, ListsRecordsOfAllSourcesForPeopleAndForPrograms) {
    const ProgramRun text = run({"list"});
    EXPECT_EQ(text.exitCode, 0) << text.complaints.join('\n').toStdString();
    EXPECT_TRUE(text.complaints.isEmpty()) << text.complaints.join('\n').toStdString();
    const QStringList lines = text.output.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines[1], "standard  Beam        Beams        Träger, einfach");
    EXPECT_EQ(lines[0].indexOf("Name"), lines[1].indexOf("Beam "));
    EXPECT_TRUE(lines[3].startsWith("bridges "));
    EXPECT_TRUE(lines[5].startsWith("user "));

    const QJsonArray rows =
        run({"list", "--json", "--kind", "view-request", "--source", "road bridges"}).json().array();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1]["source"], "bridges");
    EXPECT_EQ(rows[1]["name"], "Section");
    EXPECT_EQ(rows[1]["key"], 2);

    const std::string longName(5000, 'n');
    sql("user.dsdb", "UPDATE detail_style SET description = '" + longName + "', name = '" + longName +
                         "' WHERE name = 'Beam'");
    int longLines = 0;
    for (const QString& line : run({"list"}).output.split('\n'))
        longLines += line.size() > 300;
    EXPECT_EQ(longLines, 1) << "the lines of others are not filled up";
}

TEST_F(CommandTest, ShowsARecordAsItsUserReadsIt) {
    const ProgramRun own = run({"show", "detail-style", "Beam", "--json"});
    EXPECT_EQ(own.exitCode, 0);
    EXPECT_EQ(own.json()["source"], "user");
    EXPECT_EQ(own.json()["editable"], true);
    EXPECT_EQ(column(own, "title_position")["value"], 4);
    EXPECT_EQ(column(own, "title_position")["text"], "Below detail");
    EXPECT_EQ(column(own, "view_2")["text"], "Section");

    const ProgramRun view = run({"show", "view-request", "Front", "--source", "standard", "--json"});
    EXPECT_EQ(view.json()["editable"], false);
    EXPECT_EQ(view.json()["shared"], true);
    EXPECT_EQ(view.json()["usedBy"].toArray().size(), 2);

    const ProgramRun inches = run({"show", "length-clip", "Long", "--source", "bridges", "--json"});
    EXPECT_EQ(column(inches, "interval")["value"], 1000.0);
    EXPECT_TRUE(column(inches, "interval")["text"].toString().endsWith('"'));
}

TEST_F(CommandTest, SetStoresAValueInTheUserDatabase) {
    EXPECT_EQ(run({"set", "length-clip", "Long", "interval", "12.5 cm"}).exitCode, 0);
    EXPECT_EQ(column(run({"show", "length-clip", "Long", "--json"}), "interval")["value"], 125.0);
    EXPECT_EQ(run({"set", "length-clip", "Long", "interval", "5"}).output,
              "Changed \"interval\" of the clipping strategy \"Long\" from \"125 mm\" to \"5 mm\".\n");
    EXPECT_EQ(run({"set", "detail-style", "Heavy beam", "view_1", "Section"}).exitCode, 0);
    EXPECT_EQ(run({"set", "detail-style", "Heavy beam", "automatic_clipping", "yes"}).exitCode, 0);
    EXPECT_EQ(run({"set", "detail-style", "Heavy beam", "name", "Schwerer Träger"}).exitCode, 0);
    const ProgramRun style = run({"show", "detail-style", "Schwerer Träger", "--json"});
    EXPECT_EQ(column(style, "view_1")["text"], "Section");
    EXPECT_EQ(column(style, "automatic_clipping")["value"], 1);
    EXPECT_EQ(column(run({"show", "detail-style", "Beam", "--json"}), "automatic_clipping")["value"], 0);
    // The host knows the style by its number row, which has the style's name and says where it is filed.
    EXPECT_EQ(run({"new", "base-category", "Others"}).exitCode, 0);
    EXPECT_EQ(run({"set", "detail-style", "Beam", "category", "Others"}).output,
              "Changed \"category\" of the detail style \"Beam\" from \"Beams\" to \"Others\".\n");
    EXPECT_EQ(run({"show", "detail-style", "Beam", "--json"}).json()["filed"]["category"], "Others");
    EXPECT_TRUE(
        run({"set", "detail-style", "Beam", "catgory", "Beams"}).complaints[0].contains("category\"?"));
    EXPECT_EQ(run({"set", "detail-style", "Beam", "name", "Träger"}).exitCode, 0);
    EXPECT_EQ(column(run({"show", "detail-master", "Träger", "--json"}), "style")["text"], "Träger");
}

TEST_F(CommandTest, SetWritesNothingThatItShouldNot) {
    const std::string standard = bytesOf(data() / "standard.dsdb");
    const std::string user = bytesOf(data() / "user.dsdb");
    const std::vector<std::pair<QStringList, int>> refused = {
        {{"set", "detail-style", "Beam", "title_position", "1", "--source", "standard"}, 1},
        {{"set", "detail-style", "Beam", "title_position", "1", "--source", "bridges"}, 1},
        {{"set", "view-request", "Front", "scale", "0.5"}, 1},
        {{"set", "view-request-category", "Front, filed", "category", "None"}, 1}, // a part of "Front"
        {{"set", "view-request-category", "Front, filed", "view_request", "None", "--shared"}, 1},
        {{"set", "detail-style", "Beam", "title_position", "8"}, 1},
        {{"set", "detail-style", "Beam", "view_1", "Nowhere"}, 1},
        {{"set", "detail-style", "Beam", "automatic_clipping", "perhaps"}, 1},
        {{"set", "length-clip", "Long", "interval", "-1"}, 1},
        {{"set", "detail-style", "Beam", "name", "Heavy beam"}, 1},
        {{"set", "detail-style", "Beam", "name", " "}, 1},
        {{"set", "detail-style", "Nobody", "title_position", "1"}, 1},
        {{"set", "detail-style", "Beam", "colour", "1"}, 2},
        {{"set", "nothing", "Beam", "name", "1"}, 2},
        {{"set", "detail-style", "Beam", "title_position"}, 2},
    };
    for (const auto& [arguments, exitCode] : refused) {
        const ProgramRun refusal = run(arguments);
        EXPECT_EQ(refusal.exitCode, exitCode) << arguments.join(' ').toStdString();
        EXPECT_FALSE(refusal.complaints.isEmpty()) << arguments.join(' ').toStdString();
    }
    EXPECT_EQ(bytesOf(data() / "standard.dsdb"), standard);
    EXPECT_EQ(bytesOf(data() / "user.dsdb"), user);
    EXPECT_TRUE(
        run({"set", "detail-style", "Beam", "title_position", "8"}).complaints[0].contains("title_position"));
    EXPECT_TRUE(run({"set", "detail-style", "Beam", "title_position", "nonsense"})
                    .complaints[0]
                    .contains("Above detail, Above main view, Below detail"));

    EXPECT_EQ(run({"set", "view-request", "Front", "scale", "0.5", "--shared"}).exitCode, 0);
    EXPECT_EQ(column(run({"show", "view-request", "Front", "--json"}), "scale")["value"], 0.5);
    EXPECT_TRUE(run({"set", "view-request-category", "Front, filed", "category", "None"})
                    .complaints[0]
                    .contains("\"Front\""))
        << "the whole is named";
    EXPECT_EQ(run({"set", "view-request-category", "Front, filed", "category", "None", "--shared"}).exitCode,
              0);
}

TEST_F(CommandTest, ScalesAreSetAndShownAsPeopleWriteThem) {
    const auto set = [&](const QString& text) {
        return run({"set", "view-request", "Front", "scale", "--shared", "--", text}).exitCode;
    };
    const auto shown = [&] { return column(run({"show", "view-request", "Front", "--json"}), "scale"); };
    for (const QString text : {"1:15", " 1/15 ", "1 : 15,0"}) {
        EXPECT_EQ(set("1:2"), 0);
        EXPECT_EQ(set(text), 0) << text.toStdString();
        EXPECT_EQ(shown()["text"], "1:15");
        EXPECT_EQ(shown()["value"], 1.0 / 15.0);
    }
    for (const QString text :
         {"0", "-0.1", "1:0", "1:1,000", "1,000:1", "1:-5", "inf", "nan", "1e999", "1e308:1e-308", "12'", ""})
        EXPECT_EQ(set(text), 1) << text.toStdString();
    const ProgramRun bare = run({"set", "view-request", "Front", "scale", "17", "--shared"});
    EXPECT_EQ(bare.exitCode, 1) << "1:17 may be meant";
    EXPECT_TRUE(bare.complaints[0].contains("1:17") && bare.complaints[0].contains("17:1"));
    EXPECT_EQ(shown()["text"], "1:15");

    sql("user.dsdb", "INSERT INTO scale (name, factor, unit_type) VALUES ('1\" = 1''-0\"', 1.0 / 12, 2)");
    sql("user.dsdb", "INSERT INTO numeric_default (name, value) VALUES ('C01_DistanceUnit', 1)");
    const ProgramRun unlisted = run({"set", "view-request", "Front", "scale", "1:17", "--shared"});
    EXPECT_EQ(unlisted.exitCode, 0) << "any scale can be drawn";
    ASSERT_EQ(unlisted.complaints.size(), 1);
    EXPECT_TRUE(unlisted.complaints[0].contains("1:17"));
    EXPECT_EQ(set("1:12"), 0);
    EXPECT_EQ(shown()["text"], "1\" = 1'-0\"");
    EXPECT_EQ(set("1:2"), 0);
    EXPECT_EQ(set("1\" = 1'-0\""), 0);
    EXPECT_EQ(shown()["value"], 1.0 / 12.0);
}

TEST_F(CommandTest, OfNamesakesNoneIsTakenUnasked) {
    sql("user.dsdb", "UPDATE detail_style SET name = 'TWIN'; UPDATE view_request SET name = 'Front'");
    const std::string before = bytesOf(data() / "user.dsdb");
    const QString file = QString::fromStdString((folder() / "twin.dsdb").string());
    for (const QStringList& words : {QStringList{"set", "detail-style", "TWIN", "title_position", "1"},
                                     {"set", "detail-style", "[2]", "view_2", "Front"},
                                     {"show", "detail-style", "TWIN"},
                                     {"export", "TWIN", file},
                                     {"edit", "--style", "TWIN", "--screenshot", file}}) {
        const ProgramRun asked = run(words);
        EXPECT_EQ(asked.exitCode, 1) << words.join(' ').toStdString();
        ASSERT_EQ(asked.complaints.size(), 1) << asked.complaints.join('\n').toStdString();
        EXPECT_TRUE(asked.complaints[0].contains("\"[1]\", \"[2]\"")) << asked.complaints[0].toStdString();
        EXPECT_EQ(asked.output, "");
    }
    EXPECT_FALSE(std::filesystem::exists(file.toStdString()));
    EXPECT_EQ(bytesOf(data() / "user.dsdb"), before);
    EXPECT_EQ(run({"set", "detail-style", "[2]", "view_2", "[2]"}).exitCode, 0);
    EXPECT_EQ(run({"export", "[2]", file}).exitCode, 0);
}

TEST_F(CommandTest, WhatShowPrintsCanBeSetAndChangesNothing) {
    sql("user.dsdb", "UPDATE view_request SET name = '', scale = 1e-7 / 3 WHERE name = 'Front'");
    sql("user.dsdb", "INSERT INTO numeric_default (name, value) VALUES ('C01_DistanceUnit', 1)");
    sql("user.dsdb", "UPDATE detail_style SET view_2 = 99 WHERE name = 'Beam'");
    const std::string before = bytesOf(data() / "user.dsdb");
    for (const QStringList& row :
         {QStringList{"detail-style", "Beam"}, {"view-request", "[1]"}, {"length-clip", "Long"}})
        for (const QJsonValue& cell : run(QStringList{"show", "--json"} + row).json()["columns"].toArray()) {
            const QStringList value = {cell["column"].toString(), "--", cell["text"].toString()};
            const int refusal = value[0] == "name" && value[2].isEmpty() ? 1 : 0;
            EXPECT_EQ(run(QStringList{"set", "--shared"} + row + value).exitCode, refusal)
                << (row + value).join(' ').toStdString();
        }
    EXPECT_EQ(bytesOf(data() / "user.dsdb"), before);
    EXPECT_EQ(run({"set", "detail-style", "Heavy beam", "view_2", "[1]"}).exitCode, 0);
    EXPECT_EQ(column(run({"show", "detail-style", "Heavy beam", "--json"}), "view_2")["value"], 1);
}

TEST_F(CommandTest, AnyNameIsStoredExactlyAndSteersNoTerminal) {
    const QStringList names = {QString(10000, 'x'),
                               "two\nlines\tand \x1b[31mred",
                               QStringLiteral("שלום \u202eעולם"),
                               "100 %s %d %%",
                               "a/b\\c",
                               " \"both\" ",
                               "[2]",
                               "0",
                               "-dash"};
    for (const QString& name : names) {
        EXPECT_EQ(run({"set", "detail-style", "[1]", "name", "--", name}).exitCode, 0);
        EXPECT_EQ(run({"show", "--source", "user", "--json", "detail-style", "--", name}).json()["name"],
                  name);
        const ProgramRun listed = run({"list", "--source", "user"});
        EXPECT_EQ(listed.output.count('\n'), 3) << name.left(20).toStdString();
        EXPECT_FALSE(listed.output.contains('\x1b') || listed.output.contains(QChar(0x202E)));
        EXPECT_TRUE(listed.complaints.isEmpty());
    }
    const ProgramRun unknown = run({"show", "detail-style", "no\n\x1b[31mbody"});
    ASSERT_EQ(unknown.complaints.size(), 1);
    EXPECT_TRUE(unknown.complaints[0].contains("no\\n\\x1b[31mbody"));
}

TEST_F(CommandTest, ExportedStylesComeInAgainWithAllTheyDependOn) {
    const QString file = named("exported.dsdb");
    sql("standard.dsdb", "UPDATE detail_style SET name = 'Roof' WHERE name = 'Beam'");
    EXPECT_EQ(run({"export", "Roof", file}).exitCode, 0);
    EXPECT_EQ(run({"export", "Heavy beam", file}).exitCode, 1);
    for (const QJsonValue& finding : runBare({"check", file, "--json"}).json().array())
        EXPECT_EQ(finding["severity"], "note") << "only what the style never had is missing";

    const ProgramRun imported = run({"import", file, "--json"});
    EXPECT_EQ(imported.exitCode, 0);
    EXPECT_EQ(imported.json()["imported"], QJsonArray{"Roof"});
    const ProgramRun style = run({"show", "detail-style", "Roof", "--json"});
    EXPECT_EQ(style.json()["source"], "user");
    EXPECT_EQ(column(style, "view_2")["text"], "Section");
    EXPECT_EQ(run({"import", file, "--json"}).json()["alreadyThere"], QJsonArray{"Roof"});
    EXPECT_EQ(run({"list", "--source", "user", "--json"}).json().array().size(), 3);

    EXPECT_EQ(
        run({"export", "Heavy beam", file, "--also", "Beam", "--overwrite", "--source", "user"}).exitCode, 0);
    sql("user.dsdb", "UPDATE detail_style SET title_position = 7 WHERE name = 'Beam'");
    const QStringList wanted{"import", file, "--style", "Beam", "--same-name", "replace", "--json"};
    QJsonObject dry = run(wanted + QStringList{"--dry-run"}).json().object();
    EXPECT_EQ(column(run({"show", "detail-style", "Beam", "--source", "user", "--json"}),
                     "title_position")["value"],
              7);
    QJsonObject done = run(wanted).json().object();
    EXPECT_NE(dry.take("dryRun"), done.take("dryRun"));
    EXPECT_EQ(dry, done) << "what is said before is done";
    EXPECT_NE(column(run({"show", "detail-style", "Beam", "--source", "user", "--json"}),
                     "title_position")["value"],
              7);
    EXPECT_EQ(run({"import", file, "--style", "Roof"}).exitCode, 1) << "the file has no such style";
    EXPECT_EQ(run({"import", file + "x"}).exitCode, 1);
    EXPECT_EQ(run({"export", "Heavy beam", named("data/user.dsdb"), "--overwrite"}).exitCode, 1);
}

TEST_F(CommandTest, CheckFindsWhatIsWrongInAFile) {
    sql("user.dsdb", "UPDATE detail_style SET view_1 = 77 WHERE name = 'Beam'");
    const ProgramRun checked = run({"check", "--json"});
    EXPECT_EQ(checked.exitCode, 1);
    bool found = false;
    for (const QJsonValue& finding : checked.json().array())
        found = found || (finding["kind"] == "detail-style" && finding["name"] == "Beam" &&
                          finding["column"] == "view_1");
    EXPECT_TRUE(found);

    const std::filesystem::path damaged = folder() / "damaged.dsdb";
    writeBytes(damaged, bytesOf(data() / "standard.dsdb").substr(0, 8192));
    const ProgramRun broken = runBare({"check", QString::fromStdString(damaged.string())});
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_TRUE(broken.output.contains("damaged.dsdb"));
    EXPECT_TRUE(broken.complaints.isEmpty());
}

TEST_F(CommandTest, LabelsThatAreDrawnAsTheyStandAreNoted) {
    const auto told = [&](const QString& text) {
        const ProgramRun set = run({"set", "detail-style", "Beam", "title_format", text});
        EXPECT_EQ(set.exitCode, 0);
        const QString noted = set.complaints.join('\n').remove("detailstyles: ");
        const QString checked = run({"check"}).output;
        EXPECT_TRUE(noted.isEmpty() ? !checked.contains(" drawn ") : checked.contains("\": " + noted))
            << checked.toStdString();
        return noted;
    };
    for (const char* sound : {"{L1}{mark} {{x}}", "Plan {see below}", "Plan"})
        EXPECT_EQ(told(sound), "");
    EXPECT_TRUE(told("{mark}").contains("{mark} would be filled in only where the text begins with {L1}."));
    EXPECT_TRUE(told("{L1}{bogus}").contains("by the name {bogus}, ") &&
                told("{bogus}").contains("{quantity}"));
    EXPECT_TRUE(told("{L1}a {size=x}").contains("from \"{size=x}\" on"));
    EXPECT_TRUE(run({"set", "view-request", "Front", "callout_title_template", "{view}", "--shared"})
                    .complaints.isEmpty())
        << "which needs no mark";
}

TEST_F(CommandTest, AFolderWithoutStandardIsUsableAndSaysSoOnce) {
    std::filesystem::remove(data() / "standard.dsdb");
    const ProgramRun own = run({"list", "--source", "user", "--kind", "repr-map"});
    EXPECT_EQ(own.exitCode, 0);
    EXPECT_TRUE(own.complaints.isEmpty()) << own.complaints.join('\n').toStdString();
    EXPECT_EQ(own.output, "There is nothing of the kind \"repr-map\" in the source \"user\".\n");
    const QStringList mistyped = run({"show", "detail-style", "Baem"}).complaints;
    EXPECT_EQ(mistyped.filter("tandard").size(), 1) << mistyped.join('\n').toStdString();
    EXPECT_TRUE(mistyped.last().contains("Did you mean \"Beam\"?")) << mistyped.last().toStdString();
    EXPECT_EQ(run({"list", "--source", "standard"}).complaints.filter("does not exist").size(), 1);
    EXPECT_EQ(runBare({"samples", named("samples")}).exitCode, 0);
    std::filesystem::remove(folder() / "samples" / "standard.dsdb");
    const ProgramRun checked = runBare({"--data", named("samples"), "check"});
    EXPECT_EQ(checked.exitCode, 0) << checked.output.toStdString();
    EXPECT_EQ(checked.complaints.size(), 1);
    writeBytes(folder() / "samples" / "standard.dsdb", "rubbish");
    EXPECT_EQ(runBare({"--data", named("samples"), "check"}).exitCode, 1);
}

TEST_F(CommandTest, EditPaintsTheOpenEditorAtAStyle) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(variable);
    EXPECT_EQ(run({"edit"}).exitCode, 1);
    const QString file = named("editor.png");
    EXPECT_EQ(run({"edit", "--style", "Heavy beam", "--screenshot", file}).exitCode, 1)
        << "it has no category";
    EXPECT_EQ(run({"edit", "--style", "Beam", "--screenshot", file, "--size", "900x600"}).exitCode, 0);
    EXPECT_TRUE(bytesOf(file.toStdString()).starts_with("\x89PNG"));
    EXPECT_EQ(run({"edit", "--screenshot", file, "--size", "large"}).exitCode, 2);
}

TEST_F(CommandTest, FindsItsDataFolderAndMakesAUserDatabase) {
    EXPECT_EQ(runBare({"list"}).exitCode, 1);
    std::filesystem::create_directories(folder() / "system");
    std::filesystem::rename(data(), folder() / "system" / "detailstyles");
    std::filesystem::remove(folder() / "system" / "detailstyles" / "user.dsdb");
    EXPECT_EQ(runBare({"list", "--json"}).json().array().size(), 4);
    EXPECT_TRUE(std::filesystem::exists(folder() / "system" / "detailstyles" / "user.dsdb"));
}

TEST_F(CommandTest, CompactRemovesWhatCheckAdvisesToRemoveAndADryRunOnlySaysSo) {
    sql("user.dsdb", "INSERT INTO repr_map_entry(\"key\", name, repr_map) VALUES (1, 'Lost', 9)");
    EXPECT_TRUE(run({"check"}).output.contains("detailstyles compact"));
    const std::string before = bytesOf(data() / "user.dsdb");
    EXPECT_TRUE(run({"compact", "--dry-run"}).output.contains("Would remove"));
    EXPECT_EQ(bytesOf(data() / "user.dsdb"), before);
    const ProgramRun compacted = run({"compact"});
    EXPECT_EQ(compacted.exitCode, 0);
    EXPECT_TRUE(compacted.output.contains("\"Lost\" (key 1)"));
    EXPECT_FALSE(run({"check"}).output.contains("Lost"));
    EXPECT_TRUE(run({"compact"}).output.contains("nothing to remove"));
    EXPECT_EQ(run({"compact", "--source", "standard"}).exitCode, 1);
}

TEST_F(CommandTest, HelpAndWrongUsage) {
    const ProgramRun help = runBare({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* command : {"edit", "list", "show", "set", "new", "copy", "rename", "delete", "entry",
                                "export", "import", "check", "compact", "samples"}) {
        EXPECT_TRUE(help.output.contains(command)) << command;
        EXPECT_EQ(runBare({command, "--help"}).exitCode, 0) << command;
    }
    EXPECT_FALSE(runBare({"new", "--help"}).output.contains("point-type")) << "which nobody makes";
    EXPECT_TRUE(runBare({"entry", "add", "--help"}).output.contains("  detail-style view-request repr-map"));
    for (const char* kind : {"Length_Clip", "Clipping strategy", "clipping-strategy", "Kürzungsstrategie"})
        EXPECT_EQ(run({"show", kind, "Long"}).exitCode, 0) << kind;
    EXPECT_TRUE(run({"list", "--kind", "Clipping strtegy"}).complaints[0].contains("\"Clipping strategy\"?"));
    EXPECT_TRUE(runBare({"list", "--help"})
                    .output.contains(QRegularExpression("\n  repr-map +Representation map\n")));
    const std::pair<QStringList, const char*> wrong[] = {
        {{"lst", "--source", "user"},
         "no command and no file \"lst\"; \"detailstyles --help\" names the commands. "
         "Did you mean \"list\"?"},
        {{"entry", "adx", "repr-map", "Map"},
         "no command \"entry adx\"; \"detailstyles entry --help\" names those that "
         "there are. Did you mean \"add\"?"},
        {{"list", "--kidn", "repr-map"},
         "no option \"--kidn\"; \"detailstyles list --help\" names them. Did you "
         "mean \"--kind\"?"},
        {{"picture", "Beam", "--highlight", "appearance", "Holes", "--out", "x.svg"},
         "Too few words follow "
         "--highlight; it takes KIND"},
        {{"picture", "Beam", "--highlight", "appearance", "--out", "x.svg"},
         "Too few words follow --highlight"},
        {{"entry", "add", "view-request", "Front", "--value", "Beams", "--at", ""},
         "--at: must not be empty"},
    };
    for (const auto& [words, sentence] : wrong) {
        const ProgramRun refused = run(words);
        EXPECT_EQ(refused.exitCode, 2);
        EXPECT_TRUE(refused.complaints.join('\n').contains(sentence))
            << refused.complaints.join('\n').toStdString();
    }
    EXPECT_EQ(run({"nonsense"}).exitCode, 2);
    EXPECT_EQ(run({"list", "--nonsense"}).exitCode, 2);
    EXPECT_EQ(run({"edit", "--screenshot", "none.png", "--size", "99999x99999"}).exitCode, 2);
    EXPECT_EQ(run({"list", "--kind", "nonsense"}).exitCode, 2);
    EXPECT_EQ(run({"list", "--source", "nonsense"}).exitCode, 1);
}

TEST_F(CommandTest, SamplesAreBuiltOnceAndAreSound) {
    const QString target = named("samples");
    EXPECT_EQ(runBare({"samples", target}).exitCode, 0);
    EXPECT_EQ(runBare({"--data", target, "check"}).exitCode, 0);
    EXPECT_GE(runBare({"--data", target, "list", "--json"}).json().array().size(), 40);
    const std::string standard = bytesOf(folder() / "samples" / "standard.dsdb");
    EXPECT_EQ(runBare({"--data", target, "samples"}).exitCode, 0);
    EXPECT_EQ(bytesOf(folder() / "samples" / "standard.dsdb"), standard);
    std::filesystem::remove(folder() / "samples" / "user.dsdb");
    std::filesystem::create_directory(folder() / "samples" / "user.dsdb");
    EXPECT_EQ(runBare({"samples", target}).exitCode, 1) << "no User database is there";
}
