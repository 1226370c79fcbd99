#include "drawing/DrawingFixture.h"

#include "drawing/DrawingSubject.h"
#include "drawing/Governed.h"
#include "drawing/WhyNothing.h"

namespace {

class QuestionTest : public DrawingTest {
protected:
    StyleSource& source() { return *databases.source(SourceId::standard()); }
    template <typename R>
    RowRef ref(const char* name) {
        return {tableOf<R>, row<R>(name).key};
    }
    static int number(eTableType table, const char* column) {
        return findTable(table)->column(column)->number;
    }
};

} // namespace

// What a column governs changes when the column is changed, and nothing else of the sheet does: asked of the
// columns that act by themselves, and of some that act through what refers to them.
TEST_F(QuestionTest, WhatAColumnGovernsIsWhatChangesWithIt) {
    const auto style = row<StructDetailStyle>("Beam, single part").key;
    const SamplePart beam = part("beam");
    const struct {
        RowRef row;
        const char* column;
        CellValue value;
    } cases[] = {
        {ref<StructDetObjAppearance>("Main part"), "visible_color", std::int64_t(3)},
        {ref<StructDetObjAppearance>("Main part"), "hidden_color", std::int64_t(3)},
        {ref<StructDetailStyle>("Beam, single part"), "title_position", std::int64_t(5)},
        {ref<StructDetHcadSettings>("Single parts"), "line_scale", 7.0},
    };
    for (const auto& c : cases) {
        const Drawing before = draw(style, beam);
        const Governed::Places governed = Governed(before).by(source(), c.row, number(c.row.table, c.column));
        ASSERT_FALSE(governed.empty()) << c.column;
        const CellValue old = findTable(c.row.table)
                                  ->column(c.column)
                                  ->read(source().table(c.row.table).find(KorOdbcKey(c.row.key)));
        set(c.row.table, c.row.key, c.column, c.value);
        const Drawing after = draw(style, beam);
        ASSERT_EQ(before.all().size(), after.all().size()) << c.column;
        for (std::size_t i = 0; i < before.all().size(); ++i)
            if (!(*before.all()[i] == *after.all()[i]) && before.all()[i]->purpose != Primitive::kFrame) {
                EXPECT_TRUE(std::ranges::binary_search(governed, i)) << c.column << ", " << i;
            }
        set(c.row.table, c.row.key, c.column, old);
    }
}

// A view that names its side stays; one that is placed by the projection changes sides with it.
TEST_F(QuestionTest, TheProjectionGovernsTheViewsThatItPlaces) {
    const auto& style = row<StructDetailStyle>("Beam, single part");
    const RowRef strategy = {kTableViewArrangeStrategy, style.arrangeStrategyKey};
    const int projection = number(kTableViewArrangeStrategy, "projection");
    const auto& top = row<StructDetViewRequest>("Part, top");
    const SamplePart beam = part("beam");
    const auto heightOf = [](const Drawing& drawing, std::int32_t view) {
        return std::ranges::find(drawing.views, view, &ViewPicture::key)->box.middle().v;
    };
    const Drawing first = draw(style.key, beam);
    const Governed governed(first);
    const auto placed = governed.by(source(), strategy, projection);
    EXPECT_TRUE(std::ranges::includes(placed, governed.by(source().id(), {kTableViewRequest, top.key})));
    for (const std::size_t ofMain : governed.by(source().id(), ref<StructDetViewRequest>("Part, front")))
        EXPECT_FALSE(std::ranges::binary_search(placed, ofMain)) << ofMain;
    set(strategy.table, strategy.key, "projection", std::int64_t(1));
    EXPECT_LT(heightOf(first, top.key), 0);
    EXPECT_GT(heightOf(draw(style.key, beam), top.key), 0);

    const auto below = row<StructDetViewArrangeDirection>("Below").key;
    set(kTableViewRequest, top.key, "arrange_direction", std::int64_t(below));
    const Drawing named = draw(style.key, beam);
    EXPECT_LT(heightOf(named, top.key), 0);
    const auto rest = Governed(named).by(source(), strategy, projection);
    for (const std::size_t ofTop : Governed(named).by(source().id(), {kTableViewRequest, top.key}))
        EXPECT_FALSE(std::ranges::binary_search(rest, ofTop)) << ofTop;
}

TEST_F(QuestionTest, WhereAFieldGovernsNothingASentenceSaysWhy) {
    const auto& style = row<StructDetailStyle>("Beam, single part");
    const SamplePart beam = part("beam");
    const DrawingRequest request{style.key, 0, supportFolder()};
    const auto why = [&](const RowRef& row, const char* column) {
        EXPECT_TRUE(Governed(drawStyle(source(), beam, request))
                        .by(source(), row, number(row.table, column))
                        .empty());
        return WhyNothing::sentenceFor(source(), row, number(row.table, column), beam, request);
    };
    const RowRef view = {kTableViewRequest, style.getViewRequestAt(0)};
    EXPECT_EQ(why(view, "beam_position_calculation"),
              "Not shown, because only the host numbers the positions of beams.");
    EXPECT_EQ(why({kTableDetailStyle, style.key}, "description"),
              "Names, descriptions and groups are in no drawing.");
    EXPECT_EQ(why(view, "compass_in_overviews"), "The view has no compass.");
    set(kTableDetailStyle, style.key, "title_position", std::int64_t(0));
    EXPECT_EQ(why({kTableDetailStyle, style.key}, "title_format"),
              "The title position of the detail style is \"No title\".");
    EXPECT_EQ(why({kTableDetailStyle, style.key}, "view_19"), "Nothing is chosen here.");
    const auto entries =
        source().referrersOf(kTableReprMap, KorOdbcKey(row<StructDetViewRequest>("Part, top").reprMapKey));
    auto later = static_cast<const StructDetObjReprMapKey&>(
        *source().table(kTableReprMapEntry).find(KorOdbcKey(entries[0].key)));
    later.order = 1000;
    EXPECT_EQ(why({kTableReprMapEntry, add(later, "Later")}, "appearance"),
              "The entry \"Part\" before it decides for what it fits of the sample part \"" + beam.name +
                  "\".");
    EXPECT_EQ(why({kTableReprMap, add(StructDetObjReprMap{}, "Nobody's")}, "hide_unmatched"),
              "No detail style uses the repr map \"Nobody's\", so nothing is drawn with it.");
}

TEST_F(QuestionTest, ASilentDimensionFindsNothingOrSaysWhatAnotherOneSays) {
    const auto style = row<StructDetailStyle>("Beam, single part").key;
    const SamplePart beam = part("beam");
    const std::int32_t strategy = row<StructDetViewDimStrategy>("Single part, along").key;
    auto request = row<StructDetViewDimRequestLinear>("Overall length");
    request.titleFormat = {};
    const auto whyNot = [&](const KorString& name, int order) {
        const std::int32_t key = add(request, name);
        add(StructDetViewDimStrategyItem{{}, strategy, order, key}, name);
        return WhyNothing::sentenceFor(source(), {kTableDimRequest, key},
                                       number(kTableDimRequest, "direction"), beam,
                                       {style, 0, supportFolder()});
    };
    const std::string repeated = whyNot("Once more", 1000);
    EXPECT_TRUE(repeated.ends_with("another one measures already.")) << repeated;
    request.minimumLength = 1e6;
    const std::string nothing = whyNot("Of a bridge", 1001);
    EXPECT_NE(nothing.find("it finds nothing to measure"), nothing.npos) << nothing;
}

// No field of all that a style reaches is left with the sentence that gives no reason.
TEST_F(QuestionTest, EachSilentFieldHasAReasonOfItsOwn) {
    const auto style = row<StructDetailStyle>("Beam, shop drawing").key;
    const SamplePart beam = part("beam");
    const DrawingRequest request{style, 0, supportFolder()};
    const Governed governed(drawStyle(source(), beam, request));
    std::set<RowRef> reached;
    reach(source(), {kTableDetailStyle, style}, reached);
    int silent = 0;
    for (const RowRef& row : reached)
        for (const Column& column : findTable(row.table)->columns)
            if (governed.by(source(), row, column.number).empty()) {
                ++silent;
                const std::string why = WhyNothing::sentenceFor(source(), row, column.number, beam, request);
                EXPECT_EQ(why.find("hangs on this field"), std::string::npos)
                    << findTable(row.table)->name << "." << column.name;
            }
    EXPECT_GT(silent, 300);
}

TEST_F(QuestionTest, ARecordIsSeenInTheStyleThatUsesItTheWantedOneFirst) {
    const auto& wanted = row<StructDetailStyle>("Beam, single part");
    const auto& view = row<StructDetViewRequest>("Part, top");
    const RowRef entry = {kTableReprMapEntry,
                          source().referrersOf(kTableReprMap, KorOdbcKey(view.reprMapKey))[0].key};
    for (const RowRef& row :
         {ref<StructDetViewRequest>("Part, top"), ref<StructDetObjAppearance>("Main part"),
          RowRef{kTableReprMap, view.reprMapKey}, entry}) {
        const DrawingSubject subject = DrawingSubject::of(source(), row, wanted.key);
        EXPECT_EQ(subject.style, wanted.key) << findTable(row.table)->name;
        EXPECT_TRUE(std::ranges::count(subject.views, view.key)) << findTable(row.table)->name;
        EXPECT_NE(DrawingSubject::of(source(), row).style, 0);
    }
    EXPECT_EQ(DrawingSubject::of(source(), {kTableDetailStyle, wanted.key}).view, 0);
}
