#include "drawing/DrawingFixture.h"

#include "drawing/Governed.h"
#include "drawing/LiveDrawing.h"

#include <random>

namespace {

struct Case {
    SourceId source;
    const char* style;
    const char* part;
};

class LiveDrawingTest : public DrawingTest {
protected:
    // A change that a page could make: of a cell, of the list of a map, or taken back or brought again.
    void changeSomething(SourceId id, const std::vector<RowRef>& rows, std::mt19937& random) {
        const ScopedSource current(id);
        StyleSource& source = *databases.source(id);
        const RowRef row = rows[random() % rows.size()];
        const TableSchema& table = *findTable(row.table);
        const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
        const auto kind = random() % 12;
        if (kind == 0 || !record)
            databases.undo();
        else if (kind == 1)
            databases.redo();
        else if (kind == 2 && row.table == kTableReprMapEntry)
            databases.remove(row.table, KorOdbcKey(row.key));
        else if (kind == 3 && (row.table == kTableQualifierWithRole || row.table == kTableDimStrategyItem)) {
            const auto copy = source.table(row.table).rows().copyOf(record);
            copy->key = 0;
            copy->name = KorString("Copy ") + KorString::number(static_cast<int>(random()));
            databases.append(row.table, *copy);
        } else {
            const Column& column = table.columns[random() % table.columns.size()];
            CellValue value = column.read(record);
            if (auto* text = std::get_if<KorString>(&value))
                value = *text + KorString("x");
            else if (auto* real = std::get_if<double>(&value))
                value = *real * 1.25 + 0.5;
            else
                value = std::get<std::int64_t>(value) == 1 ? std::int64_t(0) : std::int64_t(1 + random() % 5);
            databases.setCell(row.table, KorOdbcKey(row.key), column.number, value);
        }
    }
    static bool isSame(const Drawing& a, const Drawing& b) {
        const auto same = [](const ViewPicture& one, const ViewPicture& other) {
            return one.key == other.key && one.name == other.name && one.scale == other.scale &&
                   one.letter == other.letter && one.primitives == other.primitives &&
                   one.box.low == other.box.low && one.box.high == other.box.high;
        };
        return a.style == b.style && a.notes == b.notes && a.sheet == b.sheet &&
               std::ranges::equal(a.views, b.views, same);
    }
};

} // namespace

TEST_F(LiveDrawingTest, AfterAnyChangeItIsWhatIsDrawnAnew) {
    const Case cases[] = {
        {SourceId::standard(), "Beam, shop drawing", "beam"},
        {SourceId::standard(), "Beam, shop drawing, clipped", "long-beam"},
        {SourceId::user(), "HB post 1:15", "column"},
        {SourceId::standard(), "Plate, single part", "plate"},
    };
    std::mt19937 random(5);
    int kept = 0;
    for (const Case& c : cases) {
        const auto& style = row<StructDetailStyle>(c.style, c.source);
        StyleSource& source = *databases.source(c.source);
        const auto sample = std::make_shared<const SamplePart>(part(c.part));
        const DrawingRequest request{style.key, 0, supportFolder()};
        LiveDrawing live(sample, request);
        const Drawing first = live.update(source);
        std::set<RowRef> reached;
        reach(source, {kTableDetailStyle, style.key}, reached);
        const std::vector<RowRef> rows(reached.begin(), reached.end());
        for (int change = 1; change <= 250; ++change) {
            const Drawing before = live.drawing();
            changeSomething(c.source, rows, random);
            if (change == 50)
                live.setEntriesOff(
                    {row<StructDetObjReprMapKey>(source.table(kTableReprMapEntry).rows().at(0).name, c.source)
                         .key});
            const Drawing& now = live.update(source);
            ASSERT_TRUE(isSame(now, drawStyle(source, *sample, live.request()))) << c.style << ", " << change;
            ASSERT_EQ(live.hasChanged(), !isSame(now, before)) << c.style << ", " << change;
            for (std::size_t i = 0; i < now.views.size(); ++i)
                if (!live.hasChanged(i)) {
                    ASSERT_EQ(now.views[i].primitives, before.views[i].primitives) << change;
                    ++kept;
                }
        }
        while (!databases.undo().empty()) {
        }
        live.setEntriesOff({});
        EXPECT_TRUE(isSame(live.update(source), first)) << c.style;
        source.dropTables(); // as when another program wrote to the file
        live.update(source);
        EXPECT_FALSE(live.hasChanged());
    }
    EXPECT_GT(kept, 1000);
}

TEST_F(LiveDrawingTest, OnlyViewsThatAChangeConcernsAreDrawnAnew) {
    const auto& style = row<StructDetailStyle>("Beam, shop drawing");
    LiveDrawing live(std::make_shared<const SamplePart>(part("beam")), {style.key, 0, supportFolder()});
    StyleSource& source = *databases.source(SourceId::standard());
    ASSERT_GT(live.update(source).views.size(), 2u);
    const auto changedViews = [&] {
        const std::size_t count = live.update(source).views.size();
        std::size_t changed = 0;
        for (std::size_t i = 0; i < count; ++i)
            changed += live.hasChanged(i);
        return changed;
    };
    const std::int32_t last = live.drawing().views.back().key;
    set(kTableViewRequest, last, "compass", std::int64_t(6));
    EXPECT_EQ(changedViews(), 1u);
    set(kTableViewRequest, last, "compass", std::int64_t(0));
    EXPECT_EQ(changedViews(), 1u);
    set(kTableDetailStyle, style.key, "description", KorString("other"));
    EXPECT_EQ(changedViews(), 0u);
    EXPECT_FALSE(live.hasChanged());
    set(kTableHcadSettings, style.hcadSettingsKey, "line_scale", 3.0);
    EXPECT_EQ(changedViews(), live.drawing().views.size());
}
