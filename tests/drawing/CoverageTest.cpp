#include "drawing/DrawingFixture.h"

#include "drawing/Governed.h"
#include "drawing/NotShown.h"
#include "picture/SvgWriter.h"

namespace {

class CoverageTest : public DrawingTest {
protected:
    struct Sample {
        SourceId source;
        std::int32_t style;
        SamplePart part;
        std::string before;
        Governed governed;
        std::set<RowRef> reached;
    };

    std::string pictureOf(const Sample& sample) {
        const Drawing drawing = draw(sample.style, sample.part, sample.source);
        std::string layers; // are in no SVG
        for (const Primitive* primitive : drawing.all())
            layers += primitive->pen.layer.substr(0, 1);
        return svgOf(pageOf(drawing)) + layers;
    }
    void addSamples(SourceId id) {
        StyleSource& source = *databases.source(id);
        const RowArray& styles = source.table(kTableDetailStyle).rows();
        for (int i = 0; i < styles.size(); ++i) {
            Sample sample{id, styles.at(i).key, allParts().at(suiting(styles.at(i).key, id)), {}, {}, {}};
            sample.before = pictureOf(sample);
            sample.governed = Governed(draw(sample.style, sample.part, id));
            reach(source, {kTableDetailStyle, sample.style}, sample.reached);
            m_samples.push_back(std::move(sample));
        }
    }

    std::vector<CellValue> otherValues(StyleSource& source, const Column& column, const CellValue& value) {
        std::vector<CellValue> others;
        if (const auto* text = std::get_if<KorString>(&value))
            return {KorString("{L1}other {mark}"), KorString("= 77"), *text + KorString("X")};
        if (const auto* real = std::get_if<double>(&value))
            return {*real * 2 + 5, *real * 0.25, -*real - 1, 0.0};
        const auto number = std::get<std::int64_t>(value);
        if (column.isReference()) {
            const RowArray& rows = source.table(column.target).rows();
            for (int i = 0; i < std::min(rows.size(), 6); ++i)
                others.push_back(std::int64_t(rows.at((static_cast<int>(number) + i) % rows.size()).key));
            others.push_back(std::int64_t(0));
        } else {
            for (const std::int64_t other : {number == 0 ? 1 : 0, 1, 2, 3, 4, 7})
                others.push_back(other);
        }
        return others;
    }

    // Whether changing a cell of the column changes any picture: tried first where the drawing says that the
    // column has a say in it.
    bool isShown(const TableSchema& table, const Column& column) {
        int pictures = 0;
        std::set<std::pair<SourceId, RowRef>> tried;
        for (const auto& [saysSo, again] :
             {std::pair(true, false), {true, true}, {false, false}, {false, true}})
            for (const Sample& sample : m_samples)
                for (const RowRef& row : sample.reached)
                    if (row.table == table.type &&
                        saysSo == !sample.governed.by(sample.source, row, column.number).empty() &&
                        again != tried.insert({sample.source, row}).second &&
                        changes(sample, row, column, pictures))
                        return true;
        return false;
    }
    bool changes(const Sample& sample, const RowRef& row, const Column& column, int& pictures) {
        constexpr int kMostPictures = 600;
        StyleSource& source = *databases.source(sample.source);
        const CellValue before = column.read(source.table(row.table).find(KorOdbcKey(row.key)));
        bool changed = false;
        for (const CellValue& other : otherValues(source, column, before)) {
            if (changed || other == before || ++pictures > kMostPictures)
                continue;
            source.setCell(row.table, KorOdbcKey(row.key), column, other);
            changed = pictureOf(sample) != sample.before;
            source.setCell(row.table, KorOdbcKey(row.key), column, before);
        }
        return changed;
    }

    std::vector<Sample> m_samples;
};

} // namespace

TEST_F(CoverageTest, EachColumnChangesADrawingOrIsListedWithItsReason) {
    addSamples(SourceId::standard());
    addSamples(SourceId::user());
    std::set<eTableType> tables;
    for (const Sample& sample : m_samples)
        for (const RowRef& row : sample.reached)
            tables.insert(row.table);
    EXPECT_GT(tables.size(), 35u);
    std::set<std::pair<eTableType, std::string_view>> listed;
    for (const NotShownColumn& column : notShownColumns()) {
        EXPECT_TRUE(findTable(column.table)->column(column.column)) << column.column;
        EXPECT_TRUE(listed.insert({column.table, column.column}).second) << column.column << " twice";
        EXPECT_FALSE(std::string_view(column.reason).empty());
    }
    int seen = 0;
    for (const eTableType type : tables) {
        const TableSchema& table = *findTable(type);
        for (const Column& column : table.columns) {
            if (column.slot > 0 || whyForListsAlone(table, column))
                continue;
            ++seen;
            const bool isListed = listed.contains({type, column.name});
            if (isListed)
                continue;
            EXPECT_TRUE(isShown(table, column)) << table.name << "." << column.name << " changes nothing";
        }
    }
    EXPECT_GT(seen, 100);
    EXPECT_LE(10 * listed.size(), static_cast<std::size_t>(seen)) << "more than a tenth is not shown";
}
