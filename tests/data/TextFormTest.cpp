#include "data/text/TextForm.h"
#include "base/LabelFormat.h"
#include "data/store/SqliteStore.h"
#include "data/text/SampleData.h"
#include "records/TableDeclarations.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace fs = std::filesystem;

namespace {

class TextFormTest : public testing::Test {
protected:
    std::string path(const std::string& name) const { return m_folder.file(name); }
    std::string write(const std::string& name, const std::string& text) const {
        return m_folder.write(name, text);
    }

    TableRows stored(const std::string& database) const {
        TableRows rows;
        const OpenedStore opened = SqliteStore::open(database, SqliteStore::eMode::kRead);
        std::vector<ReadProblem> problems;
        EXPECT_TRUE(opened.store) << opened.error;
        for (const TableSchema& table : allTables())
            EXPECT_TRUE(opened.store && opened.store->readTable(table, rows.of(table.type), problems));
        EXPECT_TRUE(problems.empty()) << problems.front().sentence;
        return rows;
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(TextFormTest, ReadsWhatPeopleWriteInAnyOrderOfFilesAndSections) {
    write("text/a.txt", "\xEF\xBB\xBF# styles\r\n\r\n[detail_style]\r\n"
                        "name | description     | views\r\n"
                        "Base | a \\| b\\n\\\\c;d | Top; ; A\\;B; <9>\r\n"
                        "#Comment | |\r\n"
                        "Pole |\r\n");
    write("text/b.txt", "[view_request]\nname|scale|used_for_cuts_and_callouts\nTop | 1/48 |\n  A;B|0.5|1\n\n"
                        "[linetype]\nfile_path | key | name\n | 7 | Straße\n a\\\\b.lin | 9 |\n"
                        "[length_clip]\nname | linetype | gap\nAll | Straße | 2.5e1\nDefault | |\n");
    write("text/readme.md", "no definitions");
    ASSERT_EQ(buildDatabase(path("text"), path("x.dsdb")).error, "");
    const TableRows rows = stored(path("x.dsdb"));
    const auto& style = static_cast<const StructDetailStyle&>(rows.of(kTableDetailStyle).at(0));
    EXPECT_EQ(rows.of(kTableDetailStyle).size(), 2);
    EXPECT_EQ(style.description, "a | b\n\\c;d");
    EXPECT_EQ(style.titlePosition, StructDetailStyle().titlePosition);
    EXPECT_EQ(style.getLengthItems(), 4);
    EXPECT_EQ(style.getViewRequestAt(0), 1);
    EXPECT_EQ(style.getViewRequestAt(1), 0);
    EXPECT_EQ(style.getViewRequestAt(2), 2);
    EXPECT_EQ(style.getViewRequestAt(3), 9);
    EXPECT_EQ(static_cast<const StructDetViewRequest&>(rows.of(kTableViewRequest).at(0)).scale, 1.0 / 48);
    EXPECT_EQ(static_cast<const StructLinetypes&>(rows.of(kTableLinetypes).at(1)).filePath, "a\\b.lin");
    const auto& clip = static_cast<const StructDetViewLengthClip&>(rows.of(kTableLengthClip).at(0));
    EXPECT_EQ(clip.linetypeKey, 7);
    EXPECT_EQ(clip.gap, 25.0);
    EXPECT_EQ(static_cast<const StructDetViewLengthClip&>(rows.of(kTableLengthClip).at(1)).linetypeKey, -1);
}

TEST_F(TextFormTest, ErrorsNameFileLineAndFault) {
    const std::pair<const char*, const char*> faults[] = {
        {"\n[detail_stile]\n", "line 2: there is no table \"detail_stile\""},
        {"name\n", "line 1: the line stands in no section"},
        {"[bitmap]\nname | resourse\n", "line 2: the table \"bitmap\" has no column \"resourse\""},
        {"[bitmap]\nname | name\n", "line 2: the column \"name\" is named twice"},
        {"[bitmap]\nname | resource\nA | 1 | 2\n", "line 3: the row has 3 fields for 2 columns"},
        {"[bitmap]\nname | resource\nA | 1\nA | 2\n", "line 4: another bitmap is called \"A\" already"},
        {"[bitmap]\nname | resource\n | 1\n", "line 3: the bitmap has no name"},
        {"[bitmap]\nname | resource\nA | 1.5\n", "line 3: \"1.5\" is no number for the column \"resource\""},
        {"[bitmap]\nname | resource\nA | 3000000000\n", "line 3: \"3000000000\" is no number"},
        {"[scale]\nname | factor\nA | 1/0\n", "line 3: \"1/0\" is no number for the column \"factor\""},
        {"[scale]\nname | factor\nA | 0,5\n", "line 3: \"0,5\" is no number"},
        {"[scale]\nname | factor\nA | nan\n", "line 3: \"nan\" is no number"},
        {"[scale]\nname | group\nA | <x>\n", "line 3: \"<x>\" is no key"},
        {"[scale]\nname | group\nA |\nB | Nowhere\n", "line 4: there is no scale group called \"Nowhere\""},
        {"[bitmap]\nkey | name\n2 | A\n2 | B\n", "line 4: the key 2 does not follow 2"},
        {"[bitmap]\nkey | name\n0 | A\n", "line 3: \"0\" is no key"},
        {"[bitmap]\nname\nA\\q\n", "line 3: the text \"A\\q\" has a backslash that means nothing"},
        {"[bitmap]\nname\nA\xC3\n", "line 3: the line is not UTF-8"},
        {"[clipping_type]\nname | pictures\nA | 1; 2; 3; 4; 5\n",
         "line 3: the column \"pictures\" takes at most 4"},
        {"[bitmap]\nkey | name\n1 | A\n2 | A\n[bitmap_index]\nname | bitmap\nx | A\n",
         "line 7: there are several rows \"A\""},
    };
    for (const auto& [text, expected] : faults) {
        const std::string file = write("faulty/x.txt", text);
        const Result<> result = buildDatabase(path("faulty"), path("y.dsdb"));
        EXPECT_TRUE(result.error.starts_with("\"" + file + "\", " + expected)) << result.error;
    }
    EXPECT_FALSE(fs::exists(path("y.dsdb")));
    fs::remove(path("faulty/x.txt"));
    TableRows rows;
    EXPECT_NE(readTextForm(path("faulty"), rows).error.find("holds no definitions"), std::string::npos);
    EXPECT_NE(readTextForm(path("none.txt"), rows).error.find("cannot be read"), std::string::npos);
}

namespace {

int count(const TableRows& rows, eTableType type) {
    return rows.of(type).size();
}

// How many rows of `R` hold each value of the member.
template <typename R>
std::map<std::int32_t, int> countBy(const TableRows& rows, std::int32_t R::*member) {
    std::map<std::int32_t, int> counts;
    for (int i = 0; i < rows.of(tableOf<R>).size(); ++i)
        ++counts[static_cast<const R&>(rows.of(tableOf<R>).at(i)).*member];
    return counts;
}

void expectLabelsUnderstood(const TableRows& rows) {
    for (const auto& [table, number] :
         {std::pair{kTableDetailStyle, 5}, std::pair{kTableDetailStyle, 7},
          std::pair{kTableAnnotationStrategy, 6}, std::pair{kTableDimRequest, 8}})
        for (int i = 0; i < rows.of(table).size(); ++i) {
            const KorString& text = findTable(table)->column(number)->textIn(&rows.of(table).at(i));
            EXPECT_EQ(LabelFormat::parse(text, {}).outcome, LabelReading::kLabel) << text.view();
        }
}

// Each style is filed under a category with a pair of numbers of its own, and has views; each view is filed.
void expectStylesComplete(const TableRows& rows) {
    std::set<std::pair<int, int>> pairs;
    for (int i = 0; i < count(rows, kTableDetailMaster); ++i) {
        const auto& master = static_cast<const StructDetailMaster&>(rows.of(kTableDetailMaster).at(i));
        EXPECT_TRUE(master.styleKey > 0 && master.categoryKey > 0) << master.name.view();
        EXPECT_TRUE(pairs.emplace(master.detailKey, master.number).second) << master.name.view();
    }
    EXPECT_EQ(countBy(rows, &StructDetailMaster::styleKey).size(), count(rows, kTableDetailStyle));
    EXPECT_EQ(countBy(rows, &StructDetViewRequestCategory::viewRequestKey).size(),
              count(rows, kTableViewRequest));
    for (int i = 0; i < count(rows, kTableDetailStyle); ++i)
        EXPECT_GT(static_cast<const StructDetailStyle&>(rows.of(kTableDetailStyle).at(i)).numViewRequests(),
                  0);
    for (const auto& [map, entries] : countBy(rows, &StructDetObjReprMapKey::reprMapKey))
        EXPECT_TRUE(entries >= 3 && entries <= 6) << map;
    for (const auto& [strategy, items] : countBy(rows, &StructDetViewDimStrategyItem::strategyKey))
        EXPECT_TRUE(items >= 3 && items <= 8) << strategy;
}

double numericDefault(const TableRows& rows, const KorString& name) {
    for (int i = 0; i < count(rows, kTableNumericDefault); ++i)
        if (const StructRecord& row = rows.of(kTableNumericDefault).at(i); row.name == name)
            return static_cast<const StructNumericDefault&>(row).value;
    return -1.0;
}

} // namespace

TEST_F(TextFormTest, SamplesBuildIntoSoundDatabases) {
    ASSERT_EQ(buildSampleData(SOURCE_DIR "/resources", path("data")).error, "");
    const std::pair<std::string, int> databases[] = {{"standard.dsdb", 0},
                                                     {"user.dsdb", 0},
                                                     {"addins/bracing-stairs-metric/styles.dsdb", 0},
                                                     {"addins/fabrication-imperial/styles.dsdb", 1}};
    for (const auto& [name, unit] : databases) {
        const TableRows rows = stored(path("data/" + name));
        expectLabelsUnderstood(rows);
        expectStylesComplete(rows);
        EXPECT_EQ(numericDefault(rows, "C01_DistanceUnit"), unit) << name;
    }
    EXPECT_FALSE(bytesOf(path("data/addins/fabrication-imperial/addin.ini")).empty());
}

TEST_F(TextFormTest, StandardHasWhatAMakerShips) {
    ASSERT_EQ(buildDatabase(SOURCE_DIR "/resources/samples/standard", path("standard.dsdb")).error, "");
    const TableRows rows = stored(path("standard.dsdb"));
    for (const TableSchema& table : allTables())
        EXPECT_GT(count(rows, table.type), 0) << table.name;
    EXPECT_GE(count(rows, kTableDetailStyle), 40);
    EXPECT_EQ(count(rows, kTableSelectionStrategy), 11);
    EXPECT_EQ(count(rows, kTableClippingType), 4);
    const auto usersOfMaps = countBy(rows, &StructDetViewRequest::reprMapKey);
    EXPECT_TRUE(std::ranges::any_of(usersOfMaps, [](const auto& users) { return users.second == 1; }));
    EXPECT_TRUE(std::ranges::any_of(usersOfMaps, [](const auto& users) { return users.second > 1; }));

    const std::string lines = bytesOf(SOURCE_DIR "/resources/samples/Shared/Support/VELHcadIso.lin");
    for (int i = 0; i < count(rows, kTableLinetypes); ++i) {
        const auto& type = static_cast<const StructLinetypes&>(rows.of(kTableLinetypes).at(i));
        EXPECT_TRUE(type.lineTypeId > 0 ||
                    lines.find("*" + type.name.toStdString() + ",") != std::string::npos)
            << type.name.view();
    }
    for (int i = 0; i < count(rows, kTableBitmap); ++i) {
        const int picture = static_cast<const StructBitmap&>(rows.of(kTableBitmap).at(i)).resource;
        EXPECT_TRUE(fs::exists(SOURCE_DIR "/resources/bitmaps/" + std::to_string(picture) + ".svg"))
            << picture;
    }
}

TEST_F(TextFormTest, BuildingSamplesAgainTouchesNothing) {
    write("data/user.dsdb", "somebody's work");
    write("data/Shared/Support/VELHcadIso.lin", "my line types");
    ASSERT_EQ(buildSampleData(SOURCE_DIR "/resources", path("data")).error, "");
    EXPECT_EQ(bytesOf(path("data/user.dsdb")), "somebody's work");
    EXPECT_EQ(bytesOf(path("data/Shared/Support/VELHcadIso.lin")), "my line types");
    EXPECT_TRUE(fs::exists(path("data/standard.dsdb")));
    EXPECT_NE(buildDatabase(SOURCE_DIR "/resources/samples/user", path("data/user.dsdb")).error, "");
    EXPECT_EQ(bytesOf(path("data/user.dsdb")), "somebody's work");
    EXPECT_NE(buildSampleData(path("nowhere"), path("data")).error.find("nowhere"), std::string::npos);
    EXPECT_NE(buildSampleData(SOURCE_DIR "/resources", path("data/user.dsdb")).error.find("user.dsdb"),
              std::string::npos);
}
