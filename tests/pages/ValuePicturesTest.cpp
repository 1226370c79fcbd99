#include "pages/ValuePictures.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/samples/KorSamples.h"
#include "pages/KorDSMPageAppearance.h"
#include "pages/KorDSMPageDimensionTitleProperties.h"
#include "pages/KorDSMPageReprMapRule.h"
#include "pages/PageFixture.h"
#include "pages/PictureChoice.h"
#include "session/KorDSMValueText.h"
#include "support/Palettes.h"

#include <set>

namespace {

using Cell = std::pair<std::string, std::string>; // table and column

// Pictures are drawn on both grounds: an image that shows nothing but the ground is empty.
class ValuePicturesTest : public PageFixture {
protected:
    ~ValuePicturesTest() override { QApplication::setPalette(m_before); }

    static QImage drawn(const QIcon& picture, QSize size) {
        QImage image(size * 2, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(2);
        image.fill(QApplication::palette().color(QPalette::Base));
        QPainter painter(&image);
        picture.paint(&painter, QRect(QPoint(), size));
        return image;
    }
    static int inkIn(const QImage& image) {
        int ink = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ink += image.pixelColor(x, y) != QApplication::palette().color(QPalette::Base);
        return ink;
    }
    // Expects that each picture shows something, and something else than the others.
    static void expectTellingApart(const std::vector<QIcon>& pictures, QSize size) {
        for (const bool dark : {false, true}) {
            QApplication::setPalette(desktopPalette(dark));
            std::vector<QImage> images;
            for (const QIcon& picture : pictures) {
                ASSERT_FALSE(picture.isNull()) << "value " << images.size();
                const QImage image = drawn(picture, size);
                EXPECT_GT(inkIn(image), 30) << "value " << images.size();
                EXPECT_EQ(std::ranges::count(images, image), 0) << "value " << images.size();
                images.push_back(image);
            }
        }
    }
    QIcon pictureOf(eTableType table, const char* name) {
        return ValuePictures::ofRow(*findTable(table), *CurrentRows::find(table, KorString(name)));
    }

private:
    QPalette m_before = QApplication::palette();
};

// What has a name but cannot be seen.
const std::set<Cell> kUnseen = {{"qualifier_set", "combination"},
                                {"annotation_type", "object_type"},
                                {"scale", "unit_type"},
                                {"scale_group", "unit_type"}};

// Integers without names that are what they are: amounts, and numbers by which hosts know a word or a row,
// which users see by its name.
const std::set<Cell> kNumbers = {
    {"arranger_strategy", "priority"}, {"base_category", "number"},          {"bitmap", "resource"},
    {"bitmap_index", "position"},      {"creation_default", "family"},       {"detail_master", "detail_key"},
    {"detail_master", "number"},       {"point_selection", "maximum_count"}, {"linetype", "linetype_id"}};

bool isWordList(const TableSchema& table) {
    static const std::set<std::string> words = {"point_type",
                                                "dim_geom_restrictions",
                                                "parent_position",
                                                "geometric_restriction",
                                                "ordinate_type",
                                                "ordinate_position",
                                                "ordinate_reference",
                                                "model_type",
                                                "model_role",
                                                "select_mode",
                                                "arrange_direction",
                                                "system_source",
                                                "process_scale_override",
                                                "area_type",
                                                "depth_position",
                                                "orientation",
                                                "reference_axis",
                                                "beam_position_calculation",
                                                "object_position",
                                                "clipping_type"};
    return words.contains(table.name);
}

} // namespace

TEST_F(ValuePicturesTest, EachValueThatCanBeSeenHasAPictureOfItsOwn) {
    int columns = 0;
    for (const TableSchema& table : allTables())
        for (const Column& column : table.columns) {
            SCOPED_TRACE(table.name + "." + column.name);
            if (column.kind == eColumnKind::kInteger && !column.isChosen() && column.name != "order") {
                EXPECT_TRUE(isWordList(table) || kNumbers.contains({table.name, column.name}))
                    << "a number that no user can read";
            }
            std::vector<QIcon> pictures;
            if (!kUnseen.contains({table.name, column.name}) && !column.isColor)
                for (const NamedValue& each : column.valueNames)
                    pictures.push_back(ValuePictures::of(table, column, std::int64_t{each.value}));
            for (const auto& [value, number] : ValuePictures::declared(table, column))
                if (column.valueNames.empty())
                    pictures.push_back(ValuePictures::of(table, column, std::int64_t{value}));
            expectTellingApart(pictures, ValuePictures::sizeFor(table, column));
            columns += !pictures.empty();
        }
    EXPECT_GT(columns, 30);
}

TEST_F(ValuePicturesTest, EachWordOfTheSamplesIsShownAsItsOwnPicture) {
    useSource(SourceId::standard());
    for (const TableSchema& table : allTables()) {
        if (!isWordList(table) || table.name == "select_mode")
            continue;
        SCOPED_TRACE(table.name);
        std::set<std::int64_t> codes;
        std::vector<QIcon> pictures;
        const RowArray& rows = *CurrentRows::all(table.type);
        for (int i = 0; i < rows.size(); ++i)
            if (rows.at(i).name != "None" &&
                codes.insert(std::get<std::int64_t>(table.column(2)->read(&rows.at(i)))).second)
                pictures.push_back(ValuePictures::ofRow(table, rows.at(i)));
        EXPECT_GE(pictures.size(), 3U);
        expectTellingApart(pictures, QSize(34, 17));
    }
}

TEST_F(ValuePicturesTest, LinesHatchesLeadersAndColoursAreDrawnAsTheyComeOut) {
    useSource(SourceId::standard());
    expectTellingApart({pictureOf(kTableLinetypes, "CONTINUOUS"), pictureOf(kTableLinetypes, "HIDDEN"),
                        pictureOf(kTableLinetypes, "CENTRE"), pictureOf(kTableHatchSettings, "Cut steel"),
                        pictureOf(kTableHatchSettings, "Cut plate"),
                        pictureOf(kTableHatchSettings, "Concrete"),
                        pictureOf(kTableLeaderStyle, "Open arrow"), pictureOf(kTableLeaderStyle, "Dot"),
                        pictureOf(kTableLeaderStyle, "Small dot"), pictureOf(kTableAppearance, "Main part"),
                        pictureOf(kTableAppearance, "Main part, cut")},
                       KorSamples::kSampleSize);
    std::vector<QIcon> colors;
    for (const int color : {0, 1, 7, 8, 10, 12, 16, 255, 256})
        colors.push_back(KorSamples::color(color));
    colors.erase(colors.begin() + 4); // 10 is as red as 1
    for (const bool dark : {false, true}) {
        QApplication::setPalette(desktopPalette(dark));
        const QImage foreground = drawn(KorSamples::color(7), KorSamples::kSwatchSize);
        EXPECT_EQ(foreground.pixelColor(24, 16), QColor(dark ? Qt::white : Qt::black));
        EXPECT_EQ(drawn(KorSamples::color(10), KorSamples::kSwatchSize),
                  drawn(KorSamples::color(1), KorSamples::kSwatchSize));
    }
    colors.erase(colors.begin() + 6); // white is no other than the foreground on dark
    expectTellingApart(colors, KorSamples::kSwatchSize);
    int ink = 0;
    for (const double weight : {0.0, 0.5, 1.0}) {
        const int more = inkIn(drawn(KorSamples::line({{}, 7, weight}), KorSamples::kSampleSize));
        EXPECT_GT(more, ink);
        ink = more;
    }
    // What has no status is drawn.
    StructDetObjAppearance look;
    look.visibleColor = 1;
    const auto sample = [&] {
        return drawn(ValuePictures::ofRow(*findTable(kTableAppearance), look), KorSamples::kSampleSize);
    };
    const QImage unset = sample();
    look.visibleStatusKey = CurrentRows::find(kTableVisibilityStatus, KorString("Visible"))->key;
    EXPECT_EQ(sample(), unset);
    look.visibleStatusKey = CurrentRows::find(kTableVisibilityStatus, KorString("Not drawn"))->key;
    EXPECT_NE(sample(), unset);
    EXPECT_EQ(KorSamples::line({}).actualSize({20, 16}), QSize(20, 16)) << "a shorter piece, no smaller one";
    EXPECT_TRUE(KorSamples::hatch({"NO-SUCH-PATTERN"}).isNull());
    EXPECT_TRUE(KorSamples::leader({.arrow = 9}).isNull());
}

TEST_F(ValuePicturesTest, FieldsAndCellsShowValuesAsPicturesAndNames) {
    TabContent group("Tabs", "Group");
    group.addPage(new KorDSMPageAppearance(&m_window));
    group.addPage(new KorDSMPageReprMapRule(&m_window));
    group.addPage(new KorDSMPageDimensionTitleProperties(&m_window));
    group.createPages();
    auto& look = item<KorDsmAppearanceItem>("HB main part");
    show(group, look);
    auto& color = control<QComboBox>(6004);
    EXPECT_EQ(color.count(), 257);
    EXPECT_EQ(color.currentText(), "7 Foreground");
    choose(6004, "1 Red");
    EXPECT_EQ(look.getRecord().visibleColor, 1);
    EXPECT_EQ(drawn(color.itemIcon(color.currentIndex()), color.iconSize()),
              drawn(KorSamples::color(1), color.iconSize()));
    EXPECT_FALSE(control<QComboBox>(6003).itemIcon(control<QComboBox>(6003).currentIndex()).isNull());
    const auto sample = [&] { return control<QLineEdit>(6010).actions().value(0)->icon(); };
    const QImage thin = drawn(sample(), KorSamples::kShortSize);
    type(6010, "2");
    EXPECT_NE(drawn(sample(), KorSamples::kShortSize), thin);
    const auto hatch = [&] { return drawn(control<QComboBox>(6009).itemIcon(1), KorSamples::kSampleSize); };
    const QImage aslant = hatch();
    type(6103, "0");
    EXPECT_NE(hatch(), aslant) << "the hatch in the list is the one that was edited below it";

    show(group, item<KorDsmReprMapRuleItem>("HB workshop"));
    turnTo(1);
    const auto& grid = *page().findChild<KorMFCGridCtrl*>();
    EXPECT_FALSE(grid.item(0, 2)->icon().isNull()) << "the appearance of the entry";
    EXPECT_TRUE(grid.item(0, 1)->icon().isNull()) << "a qualifier set looks like nothing";

    auto& request = item<KorDsmDimRequestItem>();
    show(group, request);
    turnTo(2);
    const auto* choice = page().findChild<PictureChoice*>();
    for (const int position : {3, 1}) {
        click(choice->radios()[static_cast<std::size_t>(position)].first);
        EXPECT_EQ(request.getRecord().titlePosition, position);
        EXPECT_EQ(choice->findChild<KorInfoCtrl*>()->accessibleName(),
                  position == 3 ? "The title behind the dimension line"
                                : "The title below the dimension line");
    }
}

TEST_F(ValuePicturesTest, NumbersThatMeanSomethingElseAreReadAndTypedAsWords) {
    const struct {
        eTableType table;
        int column;
        CellValue value;
        const char* text;
        const char* typed;
    } cases[] = {
        {kTableDimRequest, 9, std::int64_t{1}, "Below the line", "below the line"},
        {kTableDimRequest, 9, std::int64_t{12}, "12", "12"},
        {kTableLeaderStyle, 2, std::int64_t{3}, "Dot", "3"},
        {kTableAnnotationType, 6, std::int64_t{18}, "Assembly", "assembly"},
        {kTableAppearance, 4, std::int64_t{256}, "256 By layer", "by layer"},
        {kTableAppearance, 4, std::int64_t{36}, "36 Orange, dark", "orange, dark"},
        {kTablePointSelection, 7, std::int64_t{0}, "All", "all"},
        {kTableLengthClip, 6, -1.0, "Default", "default"},
        {kTableLengthClip, 8, std::int64_t{-1}, "Default", "Default"},
        {kTableScale, 3, std::int64_t{2}, "Imperial", "imperial"},
    };
    for (const auto& each : cases) {
        const TableSchema& table = *findTable(each.table);
        const Column& column = *table.column(each.column);
        SCOPED_TRACE(table.name + "." + column.name);
        EXPECT_EQ(KorDSMValueText::toText(table, column, each.value), each.text);
        const auto parsed = KorDSMValueText::parse(table, column, each.typed);
        EXPECT_TRUE(parsed);
        EXPECT_EQ(parsed.value, each.value);
    }
    const TableSchema& scales = *findTable(kTableScale);
    EXPECT_FALSE(KorDSMValueText::parse(scales, *scales.column(3), "3"));
}
