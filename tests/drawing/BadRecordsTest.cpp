#include "drawing/DrawingFixture.h"

#include <cstdlib>
#include <ctime>
#include <iostream>
#include <random>

namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();

// Databases that no page would make, one after the other, each for a while.
class BadRecordsTest : public DrawingTest {
protected:
    std::size_t upTo(std::size_t most) { return random() % most; }

    CellValue badValue(const Column& column, const RowRef& row) {
        if (column.isText()) {
            const KorString texts[] = {"",
                                       "{L1}{x{",
                                       "{L1}{br}{br}{size=1e9}{mark}{scale}",
                                       "= ",
                                       "in (a,,b)",
                                       "between",
                                       "\xEF\xBB\xBF\x01\t{}}",
                                       std::string(20'000, 'W')};
            return texts[upTo(std::size(texts))];
        }
        if (column.isReal()) {
            constexpr double kInfinite = std::numeric_limits<double>::infinity();
            const double numbers[] = {0,     -0.0, -1,   1e-9,   -1e-9, 1e9,       -1e9,
                                      1e300, 0.01, 77.7, 1e-300, NAN,   kInfinite, -kInfinite};
            return numbers[upTo(std::size(numbers))];
        }
        const std::int64_t numbers[] = {0, -1, 1, 2, 3, 7, 12, 300, kMost, -kMost - 1, row.key, row.key + 1};
        return numbers[upTo(std::size(numbers))];
    }
    // Whatever it is, as a file may hold it.
    void put(const RowRef& row, const Column& column, const CellValue& value) {
        const StructRecord* record = source->table(row.table).find(KorOdbcKey(row.key));
        if (const auto* real = std::get_if<double>(&value))
            column.realIn(const_cast<StructRecord*>(record)) = *real;
        else
            source->setCell(row.table, KorOdbcKey(row.key), column, value);
    }
    void spoil(const std::vector<RowRef>& rows) {
        for (std::size_t i = 1 + upTo(6); i > 0; --i) {
            const RowRef row = rows[upTo(rows.size())];
            const TableSchema& table = *findTable(row.table);
            const Column& column = table.columns[upTo(table.columns.size())];
            const StructRecord* record = source->table(row.table).find(KorOdbcKey(row.key));
            spoiled.push_back({row, &column, column.read(record)});
            put(row, column, badValue(column, row));
        }
    }
    // A part of a record many times over.
    void multiply(const RowRef& row) {
        const auto copy =
            source->table(row.table).rows().copyOf(source->table(row.table).find(KorOdbcKey(row.key)));
        for (int i = 0; i < 3000; ++i) {
            copy->key = source->table(row.table).unusedKey();
            source->insert(row.table, *copy);
            added.push_back({row.table, copy->key});
        }
    }
    static bool isPart(const RowRef& row) {
        return row.table == kTableReprMapEntry || row.table == kTableQualifierWithRole ||
               row.table == kTableDimStrategyItem;
    }
    void restore() {
        for (const RowRef& row : added)
            source->remove(row.table, KorOdbcKey(row.key));
        for (auto it = spoiled.rbegin(); it != spoiled.rend(); ++it)
            put(it->row, *it->column, it->before);
        added.clear();
        spoiled.clear();
    }

    struct Spoiled {
        RowRef row;
        const Column* column;
        CellValue before;
    };
    std::mt19937 random{11};
    StyleSource* source = nullptr;
    std::vector<Spoiled> spoiled;
    std::vector<RowRef> added;
};

} // namespace

// The variables ask for more rounds than each build makes, and for other ones.
TEST_F(BadRecordsTest, GiveWhatCanBeDrawnAndASentence) {
    const char* more = std::getenv("DETAILSTYLES_ROUNDS");
    const int rounds = more ? std::atoi(more) : 60;
    if (const char* seed = std::getenv("DETAILSTYLES_SEED"))
        random.seed(static_cast<unsigned>(std::atoi(seed)));
    std::vector<SamplePart> parts;
    for (const std::string& name : SampleParts::names(partsFolder()))
        parts.push_back(part(name));
    const std::vector<SourceId> sources = databases.sources();
    std::size_t told = 0;
    double longest = 0;
    for (int round = 0; round < rounds; ++round) {
        source = databases.source(sources[upTo(sources.size())]);
        const RowArray& styles = source->table(kTableDetailStyle).rows();
        const std::int32_t style =
            styles.at(static_cast<int>(upTo(static_cast<std::size_t>(styles.size())))).key;
        std::set<RowRef> reached;
        reach(*source, {kTableDetailStyle, style}, reached);
        const std::vector<RowRef> rows(reached.begin(), reached.end());
        spoil(rows);
        if (const RowRef row = rows[upTo(rows.size())]; round % 8 == 0 && isPart(row))
            multiply(row);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (!more && (i + static_cast<std::size_t>(round)) % 5 != 0)
                continue;
            const std::clock_t start = std::clock(); // whatever else the machine does
            const Drawing drawing = drawStyle(*source, parts[i], {style, 0, supportFolder()});
            const double took = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
            if (more && took > std::max(longest, 0.5))
                std::cerr << "round " << round << ", " << parts[i].name << ": " << took << " s\n";
            longest = std::max(longest, took);
            told += !drawing.notes.empty();
            std::size_t points = 0;
            for (const Primitive* primitive : drawing.all()) {
                points += primitive->points.size();
                for (const Vec2 p : primitive->points)
                    ASSERT_TRUE(std::isfinite(p.u) && std::isfinite(p.v)) << round << ", " << parts[i].name;
            }
            ASSERT_LT(points, 400'000u) << round << ", " << parts[i].name;
        }
        restore();
    }
    EXPECT_GT(told, 0u);
    source = databases.source(SourceId::standard());
    EXPECT_TRUE(draw(-5, parts[0]).views.empty());
    EXPECT_FALSE(draw(4711, parts[0]).notes.empty());
}

TEST_F(BadRecordsTest, OfThousandsOfPartsASentenceTellsWhatIsLeftOut) {
    source = databases.source(SourceId::standard());
    const auto& style = row<StructDetailStyle>("Beam, shop drawing");
    const SamplePart beam = part("beam");
    std::set<RowRef> reached;
    reach(*source, {kTableDetailStyle, style.key}, reached);
    const Drawing before = draw(style.key, beam);
    const std::pair<eTableType, std::string> cases[] = {
        {kTableReprMapEntry, ""}, // those of one set are asked once
        {kTableQualifierWithRole, "only the first 1000 qualifiers are looked at."},
        {kTableDimStrategyItem, "only the first 60 requests are shown."},
    };
    for (const auto& [table, sentence] : cases) {
        multiply(*std::ranges::find(reached, table, &RowRef::table));
        const Drawing drawing = draw(style.key, beam);
        const auto isIt = [&](const std::string& note) { return note.ends_with(sentence); };
        EXPECT_TRUE(sentence.empty()
                        ? drawing.notes == before.notes && drawing.all().size() == before.all().size()
                        : std::ranges::any_of(drawing.notes, isIt))
            << sentence;
        EXPECT_FALSE(drawing.views.empty());
        restore();
    }
}
