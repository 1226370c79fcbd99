#include "StoreTestSupport.h"
#include "StyleFixture.h"

#include "data/check/ConsistencyCheck.h"

#include <algorithm>
#include <set>

namespace {

class CheckTest : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        addStyle(kUser, "Column", 2);
        ASSERT_TRUE(commit());
    }
    /// Lets another program change the file, and checks it as a user would.
    std::vector<Finding> findingsAfter(const std::string& sql) {
        databases.closeSource(kUser);
        OtherProgram(file("user.dsdb")).run(sql);
        open();
        return faultsOf(*databases.source(kUser));
    }
};

TEST_F(CheckTest, EachFaultIsFoundOnceAndNothingElse) {
    struct Case {
        const char* sql;
        eSeverity severity;
        const char* table;
        const char* column;
        const char* phrase;
    };
    const Case cases[] = {
        {"UPDATE view_request SET length_clip = 77 WHERE \"key\" = 2", eSeverity::kError, "view_request",
         "length_clip", "The view request \"Column top\" (key 2)"},
        {"UPDATE repr_map_entry SET repr_map = 0 WHERE name = 'Rest'", eSeverity::kError, "repr_map_entry",
         "repr_map", "compact the database"},
        {"UPDATE detail_style SET title_position = 9", eSeverity::kWarning, "detail_style", "title_position",
         "holds 9 in \"title_position\""},
        {"INSERT INTO qualifier(\"key\", name) VALUES (5, 'Section is I')", eSeverity::kWarning, "qualifier",
         "name", "same name as the one with the key 1"},
        {"UPDATE detail_master SET style = 0", eSeverity::kWarning, "detail_style", nullptr, "no number"},
        {"UPDATE repr_map_entry SET appearance = 1 WHERE name = 'Rest'", eSeverity::kNote, "appearance",
         nullptr, "\"Dashed\" (key 2)"},
        {"UPDATE repr_map_entry SET \"order\" = 2 WHERE name = 'Beams'", eSeverity::kNote, "repr_map",
         nullptr, "not 1, 2, 3"},
        {"INSERT INTO select_mode(\"key\", name) VALUES (1, 'Nobody uses this word')", eSeverity::kNote,
         nullptr, nullptr, nullptr},
        {"UPDATE view_request SET scale = 'large' WHERE \"key\" = 1", eSeverity::kError, nullptr, nullptr,
         "\"large\" instead of a number"},
        {"UPDATE repr_map_entry SET \"order\" = 3 - \"order\";"
         "UPDATE repr_map_entry SET qualifier_set = 1 WHERE name = 'Rest';"
         "DELETE FROM qualifier_set WHERE name = 'Others'",
         eSeverity::kWarning, "repr_map_entry", "qualifier_set", "\"Beams\" (key 1)"},
        {"DROP TABLE scale", eSeverity::kError, nullptr, nullptr, "no table \"scale\""},
    };
    const std::string sound = bytesOf(file("user.dsdb"));
    for (const Case& each : cases) {
        const std::vector<Finding> findings = findingsAfter(each.sql);
        const bool isIncomplete = each.phrase && !each.table;
        ASSERT_EQ(findings.size(), isIncomplete ? 2u : each.phrase ? 1u : 0u) << each.sql;
        EXPECT_TRUE(!isIncomplete || mentions(findings.back().sentence, "nothing is said about"));
        if (!each.phrase)
            continue;
        const Finding& finding = findings.front();
        EXPECT_EQ(finding.severity, each.severity) << each.sql;
        EXPECT_EQ(finding.table ? finding.table->name : "", each.table ? each.table : "") << each.sql;
        EXPECT_EQ(finding.column ? finding.column->name : "", each.column ? each.column : "") << each.sql;
        EXPECT_TRUE(mentions(finding.sentence, each.phrase)) << finding.sentence;
        EXPECT_TRUE(mentions(finding.sentence, "user.dsdb")) << finding.sentence;
        databases.closeSource(kUser);
        writeBytes(file("user.dsdb"), sound);
    }
}

TEST_F(CheckTest, WhatADrawingCouldNotBeMadeWithIsNoted) {
    const auto lacks = [this](const char* sentence) {
        return std::ranges::count_if(
            ConsistencyCheck(*databases.source(kUser)).run(), [&](const Finding& each) {
                return each.severity == eSeverity::kNote && mentions(each.sentence, sentence);
            });
    };
    EXPECT_EQ(lacks("detail style \"Column\" (key 1)"), 3);
    EXPECT_EQ(lacks("has a gap in its list at \"view_2\""), 1);
    EXPECT_EQ(lacks("it has no view arrange strategy"), 1);
    EXPECT_EQ(lacks("it has no repr map entry") + lacks("it has no view request"), 0);
    add<StructDetObjReprMap>(kUser, "Empty");
    add<StructDetailStyle>(kUser, "New");
    EXPECT_EQ(lacks("it has no repr map entry"), 1);
    EXPECT_EQ(lacks("it has no view request"), 1);
}

TEST_F(CheckTest, CompactingTakesOutPartsWithoutAnOwnerInTheSourceThatIsNamed) {
    const SourceId addIn{KorDSNDefinitions::kAddIn, KorDSNDefinitions::kFirstAddIn};
    const auto compacted = [](eDSN dsn) {
        return KorOdbcCompactDetailsTables::startCompactProcess(dsn, 0,
                                                                KorOdbcCompactDetailsTables::kUnusedParts);
    };
    addStyle(kStandard, "Beam", 1);
    ASSERT_TRUE(commit());
    databases.closeSource(kUser);
    OtherProgram(file("user.dsdb"))
        .run("UPDATE repr_map_entry SET repr_map = 0 WHERE name = 'Rest';"
             "UPDATE detail_style SET title_position = 9"); // odd, but read
    ASSERT_EQ(databases.openFile(addIn, file("user.dsdb"), false).error, "");
    KorOdbcCompactDetailsTables::m_bCompactPerformed = false;
    EXPECT_EQ(compacted(KorDSNDefinitions::kUser), -1);
    EXPECT_EQ(compacted(KorDSNDefinitions::kStandard), 0);
    EXPECT_FALSE(KorOdbcCompactDetailsTables::m_bCompactPerformed);
    const KorDSNRequest request(addIn.dsn, addIn.index);
    EXPECT_EQ(compacted(KorDSNDefinitions::kAddIn), 1);
    EXPECT_TRUE(std::exchange(KorOdbcCompactDetailsTables::m_bCompactPerformed, false));
    EXPECT_EQ(row<StructDetObjReprMapKey>(addIn, "Rest"), nullptr);
    EXPECT_NE(row<StructDetObjReprMapKey>(addIn, "Beams"), nullptr);
    EXPECT_NE(row<StructDetObjReprMapKey>(kStandard, "Rest"), nullptr);
}

// Import and check follow references without end to end; a circle between tables would let rows form one.
TEST(SchemaTest, ReferencesFormNoCircleBetweenTables) {
    std::set<eTableType> settled;
    for (std::size_t before = ~std::size_t{0}; settled.size() != before;) {
        before = settled.size();
        for (const TableSchema& table : allTables())
            if (std::ranges::all_of(table.columns, [&](const Column& column) {
                    return !column.isReference() || settled.contains(column.target);
                }))
                settled.insert(table.type);
    }
    EXPECT_EQ(settled.size(), allTables().size());
}

} // namespace
