#include "SampleSession.h"

#include "session/KorDSMConflictWords.h"
#include "support/OtherProgram.h"

namespace {

const SourceId kUser = SourceId::user();

/// Both programs change the same things; the words of what comes of it.
class ConflictWords : public SampleSession {
protected:
    ConflictWords() { databases.setCurrentSource(kUser); }

    template <typename R>
    void set(const char* name, const char* column, const CellValue& value) {
        const TableSchema& table = *findTable(tableOf<R>);
        EXPECT_EQ(databases.setCell(table.type, KorOdbcKey(row<R>(kUser, name)->key),
                                    table.column(std::string_view(column))->number, value),
                  WriteResult::kWritten)
            << name;
    }
    void others(const std::string& sql) { OtherProgram(file("user.dsdb")).run(sql); }
    std::vector<KorDSMConflictWords> words() {
        std::vector<KorDSMConflictWords> words;
        for (const OutsideChange& change : databases.refreshChanged()) {
            EXPECT_EQ(change.error, "");
            for (const OutsideConflict& conflict : change.conflicts)
                words.push_back(KorDSMConflictWords::of(change.source, conflict));
        }
        return words;
    }
    /// One line for each conflict.
    std::multiset<std::string> lines() {
        std::multiset<std::string> lines;
        for (const KorDSMConflictWords& one : words())
            lines.insert(KorString::format("%s | %s | %s | %s | %s",
                                           {one.record, one.property, one.before, one.mine, one.beside()})
                             .toStdString());
        return lines;
    }
};

} // namespace

TEST_F(ConflictWords, ValuesAreThoseOfThePages) {
    set<StructDetViewRequest>("HB front", "scale", 1.0 / 75);
    set<StructDetViewRequest>("HB front", "length_clip",
                              std::int64_t{row<StructDetViewLengthClip>(kUser, "HB long beams")->key});
    set<StructDetailStyle>("HB post 1:15", "title_position", std::int64_t{4});
    set<StructDetViewLengthClip>("HB long beams", "interval", 1234.5);
    set<StructDetViewLengthClip>("HB long beams", "extension", -1.0);
    set<StructDetObjAnnotationStrategy>("HB hole", "contents", KorString("{L1}{b=1}A{br}{mark}"));
    others("UPDATE view_request SET scale = 1.0 / 25, length_clip = (SELECT \"key\" FROM length_clip WHERE "
           "name = 'HB railing panels') WHERE name = 'HB front';"
           "UPDATE detail_style SET title_position = 6;"
           "UPDATE length_clip SET interval = 20, extension = 4 WHERE name = 'HB long beams';"
           "UPDATE annotation_strategy SET contents = '';");
    EXPECT_EQ(
        lines(),
        (std::multiset<std::string>{
            R"(View request "HB front" | Scale | 1:15 | 1:75 | 1:25)",
            R"(View request "HB front" | Clipping strategy | None | HB long beams | HB railing panels)",
            R"(Detail style "HB post 1:15" | Title position | Above main view | Below detail | Upper left)",
            R"(Clipping strategy "HB long beams" | Interval | 2000 mm | 1234.5 mm | 20 mm)",
            R"(Clipping strategy "HB long beams" | Extension | 3 mm | Use default | 4 mm)",
            R"(Annotation strategy "HB hole", Annotation group "Hallberg: marks" | Contents | {quantity} x {description} | A {mark} | (empty))",
        }));
}

TEST_F(ConflictWords, LengthsAreInTheUnitOfTheirDatabase) {
    set<StructDetViewLengthClip>("HB long beams", "interval", 304.8);
    others("UPDATE length_clip SET interval = 609.6; UPDATE numeric_default SET value = 1 WHERE name = "
           "'C01_DistanceUnit'");
    databases.setCurrentSource(SourceId::standard());
    const auto said = words();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_EQ(said[0].mine, "1'-0\"");
    EXPECT_EQ(said[0].stored, "2'-0\"");
}

TEST_F(ConflictWords, ValuesThatLookAlikeAreToldApart) {
    const std::string start(400, 'x');
    set<StructDetailStyle>("HB post 1:15", "description", KorString(start + "mine\nand more"));
    set<StructDetObjAnnotationStrategy>("HB mark", "contents", KorString("{L1}{b=1}{mark}"));
    others("UPDATE detail_style SET description = '" + start +
           "theirs'; UPDATE annotation_strategy SET contents = '{L1}{i=1}{mark}'");
    const auto said = words();
    ASSERT_EQ(said.size(), 2U);
    const std::string tail(40, 'x');
    EXPECT_EQ(said[0].mine, KorString("…" + tail + "mine and more"));
    EXPECT_EQ(said[0].stored, KorString("…" + tail + "theirs"));
    EXPECT_EQ(said[1].mine, "{L1}{b=1}{mark}");
    EXPECT_EQ(said[1].stored, "{L1}{i=1}{mark}");
}

TEST_F(ConflictWords, RowsThatAreGoneAreNamedWithTheReason) {
    set<StructDetViewRequest>("HB top", "scale", 1.0 / 75);
    set<StructDetViewDimStrategyItem>("HB bays", "order", std::int64_t{7});
    const std::int32_t clip = row<StructDetViewLengthClip>(kUser, "HB long beams")->key;
    for (const Referrer& user : databases.users(kTableLengthClip, clip))
        databases.setCell(user.table->type, user.key, user.column->number, std::int64_t{0});
    EXPECT_EQ(databases.remove(kTableLengthClip, clip), WriteResult::kWritten);
    StructDetObjReprMapKey entry;
    entry.name = "New";
    entry.reprMapKey = row<StructDetObjReprMap>(kUser, "HB site")->key;
    EXPECT_EQ(databases.append(kTableReprMapEntry, entry), WriteResult::kWritten);
    others("DELETE FROM view_request WHERE name = 'HB top'; DELETE FROM repr_map WHERE name = 'HB site';"
           "UPDATE dim_strategy_item SET \"order\" = 9; UPDATE length_clip SET along_y = 1");
    EXPECT_EQ(
        lines(),
        (std::multiset<std::string>{
            R"(View request "HB top" | Scale | 1:15 | 1:75 | The record was deleted. Your change is not made.)",
            R"(Representation map entry "New", Representation map "HB site" | Whole record |  | New record | Its owner was deleted. Your change is not made.)",
            R"(Dimension of the view "HB bays", View dimensioning "HB bays" | Order | 1 | 7 | 9)",
            R"(Clipping strategy "HB long beams" | Along Y | No | Deletion | Yes)",
        }));
}

TEST_F(ConflictWords, WhatBelongsTogetherIsOneLineWithWhatBecomesOfIt) {
    const auto view = [this](const char* name) {
        return std::int64_t{row<StructDetViewRequest>(kUser, name)->key};
    };
    set<StructDetailStyle>("HB post 1:15", "view_1", view("HB top"));
    set<StructDetailStyle>("HB post 1:15", "view_2", view("HB front"));
    set<StructDetailStyle>("HB post 1:15", "view_3", std::int64_t{0});
    StructDetailStyle style;
    style.name = "New";
    EXPECT_EQ(databases.append(kTableDetailStyle, style), WriteResult::kWritten);
    StructDetObjQualifierSet set;
    set.name = "Mine";
    set.groupKey = row<StructDetObjQualifierSet>(kUser, "HB rails")->groupKey;
    const KorString group =
        databases.here()->table(kTableQualifierSetGroup).find(KorOdbcKey(set.groupKey))->name;
    EXPECT_EQ(databases.append(kTableQualifierSet, set), WriteResult::kWritten);
    others("UPDATE detail_style SET view_1 = " + std::to_string(view("HB front")) +
           ", view_2 = 0, view_3 = 0 WHERE name = 'HB post 1:15';"
           "INSERT INTO detail_style(\"key\", name) VALUES (77, 'New');"
           "DELETE FROM qualifier_set_group WHERE \"key\" = " +
           std::to_string(set.groupKey));
    const auto said = lines();
    EXPECT_TRUE(said.contains(
        R"(Detail style "HB post 1:15" | Views | HB front, HB side, HB section | HB top, HB front | HB front)"));
    EXPECT_TRUE(said.contains(
        R"(Detail style "New 1" | Name |  | New | Another record has this name now, so the new )"
        R"(one is called "New 1".)"));
    EXPECT_TRUE(
        said.contains("Qualifier set group \"" + group.toStdString() +
                      "\" | Whole record |  | New record | It was deleted meanwhile, but new records are "
                      "filed in it, so it is made again."))
        << testing::PrintToString(said);
}
