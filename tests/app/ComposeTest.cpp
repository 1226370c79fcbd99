#include "app/ProgramFixture.h"
#include "support/Composition.h"

#include <QJsonArray>
#include <QJsonObject>

#include <map>

namespace fs = std::filesystem;

namespace {

/// A maker's Standard, and no User database yet.
class ComposeTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        ASSERT_EQ(runBare({"samples", named("samples")}).exitCode, 0);
        begin(data());
    }
    void begin(const fs::path& folder) const {
        fs::remove_all(folder);
        fs::create_directories(folder);
        fs::copy(this->folder() / "samples" / "standard.dsdb", folder);
    }

    void does(const QStringList& command) {
        const ProgramRun done = run(command);
        EXPECT_EQ(done.exitCode, 0) << command.join(' ').toStdString() << "\n"
                                    << done.complaints.join('\n').toStdString();
    }
    void refuses(const QStringList& command, int exitCode, const char* sentence) {
        const std::string user = bytesOf(data() / "user.dsdb");
        const ProgramRun done = run(command);
        const QString complaints = done.complaints.join('\n');
        EXPECT_EQ(done.exitCode, exitCode) << command.join(' ').toStdString();
        EXPECT_TRUE(complaints.contains(sentence)) << command.join(' ').toStdString() << "\n"
                                                   << complaints.toStdString();
        EXPECT_TRUE(bytesOf(data() / "user.dsdb") == user) << command.join(' ').toStdString();
    }
    QStringList names(const QString& kind) {
        QStringList names;
        for (const QJsonValue& row :
             run({"list", "--kind", kind, "--source", "user", "--json"}).json().array())
            names << row["name"].toString();
        return names;
    }
    /// What a record of the User database holds, as people read it.
    QMap<QString, QString> shown(const QString& kind, const QString& name) {
        QMap<QString, QString> cells;
        for (const QJsonValue& cell :
             run({"show", kind, name, "--source", "user", "--json"}).json()["columns"].toArray())
            cells[cell["column"].toString()] = cell["text"].toString();
        return cells;
    }
    void compose();
    /// The same, once for all tests.
    void beginComposed() {
        static std::string user;
        if (user.empty()) {
            compose();
            user = bytesOf(data() / "user.dsdb");
        }
        writeBytes(data() / "user.dsdb", user);
    }
    QMap<QString, QMap<QString, QString>> content();
};

void ComposeTest::compose() {
    for (const auto& commands : {Composition::words(), Composition::commands()})
        for (const QStringList& command : commands)
            does(command);
    does({"set", "view-request", "Front", "scale", "1:10"});
    does({"set", "appearance", "Fine", "visible_color", "3", "--shared"});
    for (const char* view : {"Front", "Section"})
        does({"entry", "add", "view-request", view, "--value", "Workshop"});
}

// All that the User database holds, by kind, name and place.
QMap<QString, QMap<QString, QString>> ComposeTest::content() {
    QMap<QString, QMap<QString, QString>> records;
    for (const char* kind : {"detail-style",
                             "detail-master",
                             "base-category",
                             "view-request",
                             "view-request-category",
                             "system-and-box",
                             "repr-map",
                             "repr-map-entry",
                             "appearance",
                             "annotation-strategy",
                             "annotation-type",
                             "annotation-group",
                             "arranger-control",
                             "qualifier-set",
                             "qualifier-with-role",
                             "qualifier-set-group",
                             "point-selection",
                             "dim-request",
                             "dim-request-group",
                             "view-dim-strategy",
                             "dim-strategy-item",
                             "view-arrange-strategy"})
        for (const QJsonValue& row :
             run({"list", "--kind", kind, "--source", "user", "--json"}).json().array()) {
            const QString key = QString("[%1]").arg(row["key"].toInt());
            records[QString("%1 %2 %3").arg(kind, row["name"].toString(), key)] = shown(kind, key);
        }
    return records;
}

} // namespace

TEST_F(ComposeTest, AStyleIsComposedFromNothingAndIsTheSameWhereItIsImported) {
    compose();
    const auto rail = shown("detail-style", "Rail");
    EXPECT_EQ(rail["view_1"] + ", " + rail["view_2"], "Front, Section");
    EXPECT_EQ(rail["title_position"], "Below detail");
    EXPECT_EQ(shown("repr-map-entry", "Rails")["order"], "1");
    EXPECT_EQ(shown("repr-map-entry", "Rest")["order"], "2");
    EXPECT_EQ(run({"show", "detail-style", "Rail", "--json"}).json()["filed"]["category"], "Workshop");
    EXPECT_EQ(shown("dim-strategy-item", "[1]")["dim_request"], "Length");
    EXPECT_EQ(shown("qualifier-with-role", "[3]")["negate"], "Yes");
    const ProgramRun checked = run({"check"});
    EXPECT_EQ(checked.exitCode, 0) << checked.output.toStdString();

    EXPECT_EQ(run({"export", "Rail", named("rail.dsdb")}).exitCode, 0);
    const auto composed = content();
    EXPECT_EQ(composed.size(), 28);
    begin(data());
    does({"import", named("rail.dsdb")});
    const auto imported = content();
    EXPECT_EQ(imported.keys(), composed.keys());
    for (const QString& record : composed.keys())
        EXPECT_EQ(imported[record], composed[record]) << record.toStdString();
}

TEST_F(ComposeTest, ShowNamesTheEntriesInTheOrderInWhichTheyAct) {
    beginComposed();
    does({"entry", "move", "repr-map", "Map", "Rest", "1", "--shared"});
    QStringList entries;
    for (const QJsonValue& part : run({"show", "repr-map", "Map", "--json"}).json()["parts"].toArray())
        entries << QString("%1 %2 %3")
                       .arg(part["place"].toInt())
                       .arg(part["name"].toString(), part["cells"]["qualifier_set"].toString());
    EXPECT_EQ(entries, (QStringList{"1 Rest All", "2 Rails Rails"}));
    const QString text = run({"show", "repr-map", "Map"}).output;
    EXPECT_TRUE(text.contains("1. repr-map-entry \"Rest\": qualifier_set \"All\", ")) << text.toStdString();
    const QString used = run({"show", "qualifier-set", "Rails"}).output;
    EXPECT_EQ(used.count("repr-map \"Map\""), 1) << used.toStdString();
    EXPECT_FALSE(used.contains("repr-map-entry")) << "the whole is what can be asked for";
}

TEST_F(ComposeTest, ADryRunSaysWhatIsThenDoneAndWritesNothing) {
    does({"list"}); // which makes the User database
    const std::vector<QStringList> commands = {
        {"new", "repr-map", "Map"},
        {"entry", "add", "repr-map", "Map", "--value", "name=First"},
        {"entry", "add", "repr-map", "Map", "--value", "name=Second"},
        {"entry", "move", "repr-map", "Map", "Second", "1"},
        {"entry", "set", "repr-map", "Map", "2", "name", "Last"},
        {"set", "repr-map", "Map", "hide_unmatched", "yes"},
        {"entry", "remove", "repr-map", "Map", "Second"},
        {"copy", "detail-style", "Column base", "Ours", "--source", "standard"},
        {"copy", "detail-style", "Ours", "Ours alone", "--deep"},
        {"rename", "detail-style", "Ours", "Ours together"},
        {"delete", "detail-style", "Ours alone"},
    };
    for (const QStringList& command : commands) {
        const std::string before = bytesOf(data() / "user.dsdb");
        QJsonObject announced = run(command + QStringList{"--dry-run", "--json"}).json().object();
        EXPECT_EQ(bytesOf(data() / "user.dsdb"), before) << command.join(' ').toStdString();
        EXPECT_TRUE(announced["dryRun"].toBool()) << command.join(' ').toStdString();
        announced["dryRun"] = false;
        EXPECT_EQ(run(command + QStringList{"--json"}).json().object(), announced)
            << command.join(' ').toStdString();
        EXPECT_NE(bytesOf(data() / "user.dsdb"), before) << command.join(' ').toStdString();
    }
    const std::string stored = bytesOf(data() / "user.dsdb");
    for (const QStringList& again : {QStringList{"rename", "detail-style", "Ours together", "Ours together"},
                                     {"set", "repr-map", "Map", "hide_unmatched", "yes"}})
        for (const QStringList& how : {QStringList(), {"--dry-run"}})
            EXPECT_TRUE(run(again + how).output.startsWith("It is so already"));
    EXPECT_EQ(bytesOf(data() / "user.dsdb"), stored);
    EXPECT_EQ(names("repr-map-entry").filter("Last").size(), 1);
    EXPECT_EQ(names("detail-style"), QStringList("Ours together"));
    EXPECT_EQ(names("detail-master"), QStringList("Ours together"));
}

TEST_F(ComposeTest, ADeepCopySharesNothingAndACopyFromAnotherSourceBringsWhatIsMissing) {
    const QStringList scales = names("scale");
    EXPECT_TRUE(scales.contains("1:20")) << "a new database has the lists that choices offer";
    sql("user.dsdb", "DELETE FROM scale");
    does({"copy", "detail-style", "Column base", "Base"});
    EXPECT_EQ(names("scale"), scales) << "views may take the next larger scale of the list";
    EXPECT_EQ(run({"check"}).exitCode, 0) << "all that it refers to came along";
    const QStringList views = names("view-request");
    ASSERT_FALSE(views.isEmpty());
    does({"copy", "detail-style", "Column base", "Base again", "--source", "standard"});
    EXPECT_EQ(names("view-request"), views) << "what is there is used";
    does({"copy", "detail-style", "Base", "Base together"});
    EXPECT_EQ(names("view-request"), views);
    refuses({"set", "view-request", views[0], "scale", "1:7"}, 1, "--shared");

    does({"copy", "detail-style", "Base", "Base alone", "--deep"});
    EXPECT_EQ(names("view-request").size(), 2 * views.size());
    const QString own = shown("detail-style", "Base alone")["view_1"];
    EXPECT_NE(own, shown("detail-style", "Base")["view_1"]);
    does({"set", "view-request", own, "scale", "1:7"});
    const auto map = [&](const QString& view) { return shown("view-request", view)["repr_map"]; };
    EXPECT_NE(map(own), map(shown("detail-style", "Base")["view_1"]));
    EXPECT_EQ(run({"check"}).exitCode, 0);
    refuses({"copy", "detail-style", "Base", "Base alone"}, 1, "of this name");
    refuses({"copy", "detail-style", "Base", "Other", "--to", "standard"}, 1, "Standard");
}

TEST_F(ComposeTest, WhatIsUsedOrFullStaysAndItsUsersAreNamed) {
    beginComposed();
    refuses({"delete", "qualifier-set", "Rails"}, 1,
            "Representation map \"Map\" uses it as \"Qualifier set\"");
    refuses({"delete", "view-request", "Front"}, 1, "Detail style \"Rail\" uses it as \"View 1\"");
    refuses({"delete", "base-category", "Workshop"}, 1, "It holds \"Rail\"");
    refuses({"delete", "repr-map-entry", "Rest"}, 2, "detailstyles entry");
    refuses({"delete", "view-request", "Part, front", "--source", "standard"}, 1, "Standard");
    refuses({"rename", "repr-map", "Map", "Ours"}, 1, "give --shared");
    refuses({"entry", "remove", "repr-map", "Map", "Rest"}, 1, "give --shared");
    does({"entry", "remove", "repr-map", "Map", "Rest", "--shared"});
    does({"rename", "repr-map", "Map", "Ours", "--shared"});
    for (int i = 2; i < 20; ++i)
        does({"entry", "add", "detail-style", "Rail", "--value", "Front"});
    refuses({"entry", "add", "detail-style", "Rail", "--value", "Front"}, 1, "no more than 20 views");
    refuses({"entry", "remove", "detail-style", "Rail", "Front"}, 1, "one of 1, 3, 4");

    // A deleted style takes its master along, and frees its views; a category the places of views in it.
    does({"delete", "detail-style", "Rail"});
    EXPECT_TRUE(names("detail-master").isEmpty());
    does({"delete", "base-category", "Workshop"});
    EXPECT_TRUE(names("view-request-category").isEmpty());
    does({"delete", "view-request", "Front"});
}

TEST_F(ComposeTest, WhatIsMistypedIsAnsweredWithWhatIsMeant) {
    beginComposed();
    refuses({"show", "detial-style", "Rail"}, 2, "Did you mean \"detail-style\"?");
    refuses({"show", "detail-style", "rial"}, 1, "Did you mean \"Rail\"?");
    refuses({"list", "--source", "standart"}, 1, "Did you mean \"standard\"?");
    refuses({"set", "view-request", "Front", "scael", "1:5"}, 2, "Did you mean \"scale\"?");
    refuses({"set", "detail-style", "Rail", "view_1", "Frnot"}, 1, "Did you mean \"Front\"?");
    refuses({"entry", "set", "detail-style", "Rail", "1", "view_request", "Front"}, 2, "theirs is \"view\"");
    refuses({"set", "view-request", "Front", "select_mode", "Never at all"}, 1, "There are \"Always\", ");
    refuses({"set", "view-request", "Front", "orientation", "Top"}, 2, "no column");
    refuses({"set", "annotation-type", "Mark", "leader_style", "Dot", "--shared"}, 1,
            "The source \"standard\" has it; \"detailstyles copy leader-style\" brings it.");
    refuses({"entry", "set", "repr-map", "Map", "Rset", "name", "Last", "--shared"}, 1,
            "Did you mean \"Rest\"?");
    refuses({"entry", "move", "repr-map", "Map", "Rest", "3", "--shared"}, 1, "from 1 to 2");
    refuses({"entry", "add", "appearance", "Fine"}, 2, "repr-map");
    refuses({"entry", "add", "repr-map", "Map", "--value", "apearance=Fine", "--shared"}, 2,
            "Did you mean \"appearance\"?");
    refuses({"picture", "Rail", "--view", "Frnot", "--out", named("rail.svg")}, 1, "Did you mean \"Front\"?");
    refuses({"new", "qualifier-set", "Other", "--in", "Our"}, 1, "Did you mean \"Ours\"?");
    refuses({"new", "qualifier-set", "Other"}, 1, "one of \"Ours\"");
    refuses({"new", "repr-map", "Other", "--in", "Ours"}, 1, "leave out --in");
    refuses({"new", "point-type", "Other"}, 2, "point-selection");
    refuses({"new", "arranger-control", "Other", "--value", "side_preference=Over"}, 1,
            "Nearest, Left, Right, Above, Below");
    refuses({"new", "view-request", "Other", "--value", "1:10"}, 2, "COLUMN=VALUE");
    refuses({"new", "view-request", "Other", "--value", "name=Another"}, 2, "no column \"name\"");
    refuses({"new", "view-request", "Other", "--value", "scale=1:5", "--value", "scale=1:2"}, 2,
            "given twice");
    refuses(
        {"entry", "add", "repr-map", "Map", "--value", "All", "--value", "qualifier_set=Rails", "--shared"},
        2, "given twice");
    refuses({"new", "repr-map", "Two\nlines"}, 1, "one line");
    for (const char* unseen : {"\u202Epam", "pa\u200Bm"})
        refuses({"copy", "repr-map", "Map", QString::fromUtf8(unseen)}, 1, "one line");
    refuses({"rename", "repr-map", "Map", "[1]", "--shared"}, 1, "taken for a key");
    refuses({"set", "appearance", "Fine", "visible_color", "4"}, 1,
            "reaches Representation map \"Map\", View");
    refuses({"picture", "Rail", "--out", named("no/folder.svg")}, 1, "does not exist; create it");
    refuses({"entry", "add", "view-request", "Front", "--value", "Workshop"}, 1, "\"Workshop\" already");
    refuses({"new", "view-request", "Other", "--in", "Workship"}, 1, "Did you mean \"Workshop\"?");
}
