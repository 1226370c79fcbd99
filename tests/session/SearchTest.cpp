#include "session/KorDSMSearch.h"
#include "session/SampleSession.h"

#include "services/Prompts.h"

namespace {

class Search : public SampleSession {
protected:
    std::vector<KorDSMSearchHit> find(const char* typed, std::size_t atMost = 20) {
        const RowRef shown{kTableDetailStyle, row<StructDetailStyle>(SourceId::user(), "HB post 1:15")->key};
        KorDSMSearch search({SourceId::user(), shown},
                            {{eSearchKind::kCommand, "Apply", "Command"},
                             {eSearchKind::kCommand, "Undo HB post 1:15", "Command"},
                             {eSearchKind::kTopic, "Postage", "Help"}});
        return search.find(typed, atMost).hits;
    }
    static std::string said(const KorDSMSearchHit& hit) {
        return KorString::format("%s|%s|%s|%s", {hit.text, hit.kindText, hit.path, hit.source}).toStdString();
    }
    std::vector<std::string> texts(const char* typed, eSearchKind kind) {
        std::vector<std::string> texts;
        for (const KorDSMSearchHit& hit : find(typed))
            if (hit.kind == kind)
                texts.push_back(hit.text.toStdString());
        return texts;
    }
};

TEST(SearchWords, RankByWhereTheWordsStand) {
    struct Case {
        const char* typed;
        const char* text;
        const char* context;
        std::optional<SearchFit> fit;
    };
    const Case cases[] = {
        {"hb post", "hb post", "", SearchFit{false, false, false}},
        {"HB  po", "hb post 1:15", "", SearchFit{false, true, false}},
        {"post", "hb post 1:15", "", SearchFit{false, true, true}},
        {"1:15", "hb post 1:15", "", SearchFit{false, true, true}},
        {"ost", "hb post 1:15", "", SearchFit{true, true, true}},
        {"post hb", "hb post", "", SearchFit{false, true, true}},
        {"ost", "most costly ostrich", "", SearchFit{false, true, true}},
        {"scale 1:15", "1:15", "scale", SearchFit{false, true, true}},
        {"scale", "1:15", "scale", std::nullopt},
        {"post beam", "hb post", "", std::nullopt},
        {"größe", "größe", "", SearchFit{false, false, false}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(SearchWords(each.typed).fit(each.text, each.context), each.fit)
            << each.typed << " in " << each.text;
    EXPECT_EQ(SearchWords("ÄN post").marks("Länge: HB Post"), (std::vector<SearchMark>{{1, 3}, {11, 4}}));
}

TEST_F(Search, PutsNamesBeforeValuesThisSourceBeforeOthersAndSaysWhereTheyStand) {
    const std::vector<KorDSMSearchHit> hits = find("hb post 1:15");
    ASSERT_FALSE(hits.empty());
    EXPECT_EQ(said(hits[0]), "HB post 1:15|Detail style|Detail styles › Hallberg: posts and beams|User");
    EXPECT_EQ(hits[0].row.table, kTableDetailStyle);
    EXPECT_EQ(find("hb post 1")[0].text, "HB post 1:15") << "before the command that names it";
    EXPECT_EQ(find("user HB post 1:15")[0].text, "HB post 1:15");
    EXPECT_EQ(find("undo")[0].kind, eSearchKind::kCommand);
    EXPECT_EQ(std::ranges::count(hits, KorString("HB post 1:15"), &KorDSMSearchHit::text), 1);

    const std::vector<KorDSMSearchHit> posts = find("post");
    const auto place = [&posts](auto passes) { return std::ranges::find_if(posts, passes) - posts.begin(); };
    const auto inMiddle = place([](const KorDSMSearchHit& hit) { return hit.text == "Postage"; });
    const auto user = place([](const KorDSMSearchHit& hit) {
        return hit.kind == eSearchKind::kRecord && hit.sourceId == SourceId::user();
    });
    const auto standard = place([](const KorDSMSearchHit& hit) {
        return hit.kind == eSearchKind::kRecord && hit.sourceId == SourceId::standard();
    });
    const auto value = place([](const KorDSMSearchHit& hit) { return hit.kind == eSearchKind::kValue; });
    EXPECT_LT(user, standard);
    EXPECT_LT(standard, inMiddle);
    EXPECT_LT(inMiddle, value);
    EXPECT_LT(value, std::ssize(posts));
    EXPECT_TRUE(find("  ").empty());
    EXPECT_TRUE(find("no such thing").empty());
}

TEST_F(Search, FindsFieldsAndValuesByTheirWordsInEachLanguage) {
    EXPECT_EQ(texts("titelposition", eSearchKind::kField).at(0), "Title position (Titelposition)");
    const auto fields = find("title position");
    ASSERT_FALSE(fields.empty());
    EXPECT_EQ(fields[0].text, "Title position");
    EXPECT_EQ(fields[0].row,
              (RowRef{kTableDetailStyle, row<StructDetailStyle>(SourceId::user(), "HB post 1:15")->key}));
    EXPECT_EQ(texts("übernehm", eSearchKind::kCommand), std::vector<std::string>{"Apply (Übernehmen)"});
    for (const char* typed : {"title position above main view", "Titelposition über Hauptansicht"}) {
        const std::vector<std::string> values = texts(typed, eSearchKind::kValue);
        ASSERT_FALSE(values.empty()) << typed;
        EXPECT_TRUE(values[0].starts_with("Title position: ")) << values[0];
    }
}

TEST_F(Search, FollowsRowsThatComeAndGo) {
    KorDSMSearch search({SourceId::user(), {}}, {});
    StructDetailStyle style;
    style.name = "Quite another";
    databases.setCurrentSource(SourceId::user());
    EXPECT_TRUE(search.find("quite another", 5).hits.empty());
    databases.append(kTableDetailStyle, style);
    ASSERT_EQ(search.find("quite another", 5).hits.size(), 1u);
    EXPECT_EQ(search.find("quite another", 5).hits[0].row.key, style.key);
    const auto few = search.find("hb", 1);
    EXPECT_FALSE(few.areAll);
    EXPECT_EQ(std::ranges::count(few.hits, eSearchKind::kRecord, &KorDSMSearchHit::kind), 1);
}

} // namespace
