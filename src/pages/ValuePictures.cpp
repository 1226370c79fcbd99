#include "pages/ValuePictures.h"

#include "base/LinetypeFile.h"
#include "controls/KorPictures.h"
#include "controls/linetype/HostLinetypes.h"
#include "controls/samples/KorSamples.h"
#include "operations/CurrentRows.h"
#include "pages/ValuePictureTable.h"
#include "records/TableDeclarations.h"
#include "services/KOSettings.h"

#include <algorithm>

namespace {

constexpr QSize kPictureSize(17, 17);
constexpr QSize kClippingSize(48, 16);

constexpr int kHatchPattern = 2;
constexpr int kLineWeight = 10;
constexpr int kLeaderArrow = 2;

const StructRecord* target(const Column& column, const CellValue& value) {
    const auto* key = std::get_if<std::int64_t>(&value);
    return key ? CurrentRows::find(column.target, KorOdbcKey(static_cast<std::int32_t>(*key))) : nullptr;
}

template <typename R>
const R* rowOf(std::int32_t key) {
    return static_cast<const R*>(CurrentRows::find(tableOf<R>, KorOdbcKey(key)));
}

// The pattern of a line type; nothing where neither the host nor its file knows it.
std::optional<LinetypePattern> patternOf(const StructLinetypes& linetype) {
    if (linetype.lineTypeId != 0) {
        const auto* host = std::ranges::find(HostLinetypes::kAll, linetype.lineTypeId, &HostLinetype::id);
        return host == std::end(HostLinetypes::kAll) ? std::nullopt : LinetypePatterns::parse(host->pattern);
    }
    const auto [folder, file] = LinetypeFile::split(linetype.filePath);
    const KorString support = KOSettings::getInstance().getPathData() + "\\Shared\\Support";
    const auto read = LinetypeFile::shared(LinetypeFile::pathOf(folder.isEmpty() ? support : folder, file));
    const LinetypeDefinitionPtr definition = read->find(linetype.name);
    return definition ? std::optional(definition->pattern) : std::nullopt;
}

QIcon pictureOf(const StructLinetypes& linetype) {
    const auto pattern = patternOf(linetype);
    return pattern ? KorSamples::line({*pattern}) : QIcon();
}

Hatch hatchOf(const StructDetHatchSettings& hatch) {
    return {hatch.pattern, hatch.angle, hatch.spacing, hatch.color};
}

QIcon pictureOf(const StructDetHatchSettings& hatch) {
    return KorSamples::hatch(hatchOf(hatch));
}

QIcon pictureOf(const StructDetLeaderStyle& leader) {
    return KorSamples::leader({leader.arrow, leader.arrowSize, leader.landing});
}

KorSamples::Line lineOf(std::int32_t linetypeKey, std::int32_t color, double weight) {
    const auto* linetype = rowOf<StructLinetypes>(linetypeKey);
    const auto pattern = linetype ? patternOf(*linetype) : std::nullopt;
    return {pattern.value_or(LinetypePattern()), color, weight};
}

enum eStatus : std::int32_t { kNotDrawn, kDrawn, kAsHidden };

// As drawings take it: what has no status is drawn.
std::int32_t statusOf(std::int32_t key) {
    const auto* status = rowOf<StructDetailVisibilityStatus>(key);
    return status ? status->status : kDrawn;
}

QIcon pictureOf(const StructDetObjAppearance& look) {
    const auto* hatch = rowOf<StructDetHatchSettings>(look.hatchKey);
    const std::int32_t visible = statusOf(look.visibleStatusKey);
    const KorSamples::Line hiddenLine = lineOf(look.hiddenLinetypeKey, look.hiddenColor, look.lineWeight);
    return KorSamples::appearance(
        {visible != kNotDrawn,
         visible == kAsHidden ? hiddenLine
                              : lineOf(look.visibleLinetypeKey, look.visibleColor, look.lineWeight),
         statusOf(look.hiddenStatusKey) != kNotDrawn, hiddenLine, hatch ? hatchOf(*hatch) : Hatch{}});
}

QIcon pictureOf(const StructClippingType& type) {
    return KorPictures::bitmap(type.picture1);
}

QIcon pictureOf(const StructBitmap& picture) {
    return KorPictures::bitmap(picture.resource);
}

/// A table whose rows are drawn from what they hold.
struct Drawn {
    eTableType table;
    QSize size;
    QIcon (*picture)(const StructRecord& row);
};

template <typename R>
Drawn drawn(QSize size) {
    return {tableOf<R>, size, [](const StructRecord& row) { return pictureOf(static_cast<const R&>(row)); }};
}

const std::vector<Drawn>& drawnTables() {
    static const std::vector<Drawn> tables = {
        drawn<StructLinetypes>(KorSamples::kSampleSize),
        drawn<StructDetHatchSettings>(KorSamples::kSampleSize),
        drawn<StructDetLeaderStyle>(KorSamples::kSampleSize),
        drawn<StructDetObjAppearance>(KorSamples::kSampleSize),
        drawn<StructClippingType>(kClippingSize),
        drawn<StructBitmap>(kPictureSize),
    };
    return tables;
}

const PicturedColumn* find(const std::vector<PicturedColumn>& all, eTableType table, int column) {
    const auto found = std::ranges::find_if(
        all, [&](const PicturedColumn& each) { return each.table == table && each.column == column; });
    return found == all.end() ? nullptr : &*found;
}

int numberIn(const std::vector<PicturedColumn>& all, eTableType table, int column, std::int64_t value) {
    const PicturedColumn* known = find(all, table, column);
    const std::int64_t place = known ? value - known->first : -1;
    return place >= 0 && place < static_cast<std::int64_t>(known->pictures.size())
               ? known->pictures[static_cast<std::size_t>(place)]
               : 0;
}

bool isArrow(eTableType table, const Column& column) {
    return table == kTableLeaderStyle && column.number == kLeaderArrow;
}

QSize sizeOfRows(eTableType table) {
    const auto drawing = std::ranges::find(drawnTables(), table, &Drawn::table);
    if (drawing != drawnTables().end())
        return drawing->size;
    const auto& rows = ValuePictureTable::rows();
    return std::ranges::find(rows, table, &ShownBy::table) == rows.end() ? QSize() : kPictureSize;
}

} // namespace

QIcon ValuePictures::of(const TableSchema& table, const Column& column, const CellValue& value) {
    if (column.isReference()) {
        const StructRecord* row = sizeOfRows(column.target).isEmpty() ? nullptr : target(column, value);
        return row ? ofRow(*findTable(column.target), *row) : QIcon();
    }
    const auto* whole = std::get_if<std::int64_t>(&value);
    if (!whole)
        return {};
    const int number = static_cast<int>(*whole);
    if (column.isColor)
        return column.isInRange(number) ? KorSamples::color(number) : QIcon();
    if (isArrow(table.type, column))
        return KorSamples::leader({.arrow = number});
    const int picture = numberIn(ValuePictureTable::small(), table.type, column.number, *whole);
    return picture ? KorPictures::bitmap(picture) : QIcon();
}

QIcon ValuePictures::ofRow(const TableSchema& table, const StructRecord& row) {
    const auto drawing = std::ranges::find(drawnTables(), table.type, &Drawn::table);
    if (drawing != drawnTables().end())
        return drawing->picture(row);
    const auto shown = std::ranges::find(ValuePictureTable::rows(), table.type, &ShownBy::table);
    if (shown == ValuePictureTable::rows().end())
        return {};
    for (const int number : shown->columns) {
        const Column& column = *table.column(number);
        if (QIcon picture = of(table, column, column.read(&row)); !picture.isNull())
            return picture;
    }
    return {};
}

QSize ValuePictures::sizeFor(const TableSchema& table, const Column& column) {
    if (column.isReference())
        return sizeOfRows(column.target);
    if (column.isColor)
        return KorSamples::kSwatchSize;
    if (isArrow(table.type, column))
        return KorSamples::kSampleSize;
    return find(ValuePictureTable::small(), table.type, column.number) ? kPictureSize : QSize();
}

QSize ValuePictures::largestSize() {
    return KorSamples::kSampleSize.expandedTo(kPictureSize);
}

bool ValuePictures::isOffered(eTableType table, const StructRecord& row) {
    return table != kTableBitmap || std::ranges::count(ValuePictureTable::ofCategories(),
                                                       static_cast<const StructBitmap&>(row).resource) > 0;
}

bool ValuePictures::isShownInField(const TableSchema& table, const Column& column) {
    return (table.type == kTableAppearance && column.number == kLineWeight) ||
           (table.type == kTableHatchSettings && column.number == kHatchPattern);
}

QIcon ValuePictures::inField(const TableSchema& table, const Column& column, const StructRecord& row) {
    if (!isShownInField(table, column))
        return {};
    if (table.type == kTableHatchSettings)
        return KorSamples::hatch(hatchOf(static_cast<const StructDetHatchSettings&>(row)),
                                 KorSamples::kShortSize);
    KorSamples::Line line;
    line.weight = static_cast<const StructDetObjAppearance&>(row).lineWeight;
    return KorSamples::line(line, KorSamples::kShortSize);
}

int ValuePictures::explaining(const TableSchema& table, const Column& column, std::int32_t value) {
    return numberIn(ValuePictureTable::large(), table.type, column.number, value);
}

std::vector<std::pair<std::int32_t, int>> ValuePictures::declared(const TableSchema& table,
                                                                  const Column& column) {
    std::vector<std::pair<std::int32_t, int>> all;
    if (const PicturedColumn* known = find(ValuePictureTable::small(), table.type, column.number))
        for (std::size_t i = 0; i < known->pictures.size(); ++i)
            all.emplace_back(known->first + static_cast<std::int32_t>(i), known->pictures[i]);
    return all;
}
