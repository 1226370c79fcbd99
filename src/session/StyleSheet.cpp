#include "session/StyleSheet.h"

#include "base/Translation.h"
#include "data/ScopedSource.h"
#include "data/StyleDatabases.h"
#include "drawing/StyleRows.h"
#include "records/OwnWords.h"
#include "records/TableDeclarations.h"
#include "session/KorDSMQualifierWords.h"
#include "session/KorDSMValueText.h"

#include <cmath>

namespace {

struct SheetLine {
    enum eKind : std::uint8_t { kTitle, kHeading, kItem, kMore, kRest };

    eKind kind = kItem;
    KorString text;
};

// The name of a row in quotes; empty for none.
template <typename R>
KorString named(StyleRows& rows, std::int32_t key) {
    const R* row = rows.row<R>(key);
    return row ? KorString::format(translated("\"%s\""), {OwnWords::nameOf(tableOf<R>, *row)}) : KorString();
}

class SheetWords {
public:
    SheetWords(StyleRows& rows, const StructDetailStyle& style, const Drawing& drawing)
        : m_rows(rows), m_style(style), m_drawing(drawing) {}

    std::vector<SheetLine> words() {
        add(SheetLine::kTitle, m_style.name);
        if (!m_style.description.isEmpty())
            add(SheetLine::kItem, m_style.description);
        addViews();
        for (const std::int32_t map : m_maps)
            addMap(map);
        for (const std::int32_t strategy : m_strategies)
            addDimensions(strategy);
        if (!m_drawing.notes.empty())
            add(SheetLine::kHeading, translated("Not in the drawing"));
        for (const std::string& note : m_drawing.notes)
            add(SheetLine::kItem, note);
        return std::move(m_lines);
    }

private:
    void add(SheetLine::eKind kind, const KorString& text) { m_lines.push_back({kind, text}); }
    static void remember(std::vector<std::int32_t>& keys, std::int32_t key) {
        if (key > 0 && std::ranges::find(keys, key) == keys.end())
            keys.push_back(key);
    }

    void addViews() {
        add(SheetLine::kHeading, translated("Views"));
        for (int i = 0; i < m_style.getLengthItems(); ++i) {
            const auto* view = m_rows.row<StructDetViewRequest>(m_style.getViewRequestAt(i));
            if (!view)
                continue;
            const auto drawn = std::ranges::find(m_drawing.views, view->key, &ViewPicture::key);
            const bool isDrawn = drawn != m_drawing.views.end();
            add(SheetLine::kItem,
                isDrawn ? KorString::format("%s, %s", {view->name, KorDSMValueText::scaleText(drawn->scale)})
                        : KorString::format(translated("%s, not drawn for this part"), {view->name}));
            const std::pair<KorString, KorString> uses[] = {
                {translated("placed"),
                 named<StructDetViewArrangeDirection>(m_rows, view->arrangeDirectionKey)},
                {translated("drawn by"), named<StructDetObjReprMap>(m_rows, view->reprMapKey)},
                {translated("measured by"), named<StructDetViewDimStrategy>(m_rows, view->dimStrategyKey)},
                {translated("shortened by"), named<StructDetViewLengthClip>(m_rows, view->lengthClipKey)}};
            KorString words;
            for (const auto& [how, by] : uses)
                if (!by.isEmpty())
                    words = words + (words.isEmpty() ? "" : ", ") + how + " " + by;
            if (!words.isEmpty())
                add(SheetLine::kMore, words);
            remember(m_maps, view->reprMapKey);
            remember(m_strategies, view->dimStrategyKey);
        }
    }

    void addMap(std::int32_t key) {
        const auto* map = m_rows.row<StructDetObjReprMap>(key);
        if (!map)
            return;
        add(SheetLine::kHeading,
            KorString::format(translated("What the map \"%s\" draws how; the first that fits decides"),
                              {map->name}));
        int place = 0;
        for (const auto* entry : m_rows.parts<StructDetObjReprMapKey>(&StructDetObjReprMapKey::reprMapKey,
                                                                      key, &StructDetObjReprMapKey::order)) {
            const KorString objects = KorDSMQualifierWords::sentenceOf(entry->qualifierSetKey);
            add(SheetLine::kItem,
                KorString::format("%d. %s", {KorString::number(std::int64_t{++place}),
                                             objects.isEmpty() ? translated("nothing yet") : objects}));
            const KorString look = named<StructDetObjAppearance>(m_rows, entry->appearanceKey);
            const KorString label =
                named<StructDetObjAnnotationStrategy>(m_rows, entry->annotationStrategyKey);
            add(SheetLine::kMore,
                label.isEmpty()
                    ? KorString::format(translated("drawn as %s, without labels"), {look})
                    : KorString::format(translated("drawn as %s, labelled by %s"), {look, label}));
        }
        add(SheetLine::kRest, map->hideUnmatched != 0 ? translated("All others are left out.")
                                                      : translated("All others are drawn plainly."));
    }

    void addDimensions(std::int32_t key) {
        const auto* strategy = m_rows.row<StructDetViewDimStrategy>(key);
        if (!strategy)
            return;
        add(SheetLine::kHeading,
            KorString::format(translated("What \"%s\" measures, from the part outwards"), {strategy->name}));
        int place = 0;
        for (const auto* item : m_rows.parts<StructDetViewDimStrategyItem>(
                 &StructDetViewDimStrategyItem::strategyKey, key, &StructDetViewDimStrategyItem::order))
            if (const auto* request = m_rows.row<StructDetViewDimRequestLinear>(item->dimRequestKey))
                add(SheetLine::kItem,
                    KorString::format("%d. %s", {KorString::number(std::int64_t{++place}), request->name}));
    }

    StyleRows& m_rows;
    const StructDetailStyle& m_style;
    const Drawing& m_drawing;
    std::vector<SheetLine> m_lines;
    std::vector<std::int32_t> m_maps;
    std::vector<std::int32_t> m_strategies;
};

// Lines, of which there is at least one, as texts in columns, all of one width.
class SheetColumns {
public:
    SheetColumns(const Box2& drawn, double textSize) : m_size(textSize) {
        constexpr double kColumn = 48; // sizes of the text, about 60 letters
        m_count = std::max(1, static_cast<int>(drawn.width() / (kColumn * textSize)));
        m_width = std::max(drawn.width() / m_count, kColumn * textSize) - 2 * textSize;
        m_left = drawn.low.u + textSize;
        m_top = drawn.low.v - textSize;
    }

    Primitives lay(const std::vector<SheetLine>& lines) {
        for (const SheetLine& line : lines)
            wrap(line);
        std::size_t all = 0;
        for (const Primitives& block : m_blocks)
            all += block.size();
        std::size_t rows = all / static_cast<std::size_t>(m_count) + 1;
        while (columnsOf(rows).back() >= m_count)
            ++rows;
        return placed(columnsOf(rows));
    }

private:
    Primitive textOf(const SheetLine& line) const {
        Primitive text;
        text.kind = Primitive::kText;
        text.purpose = Primitive::kTitle;
        text.style = {"Arial", line.kind == SheetLine::kTitle ? m_size * 1.4 : m_size, 7};
        text.style.bold = line.kind == SheetLine::kTitle || line.kind == SheetLine::kHeading;
        text.points = {{line.kind == SheetLine::kMore ? 3 * m_size : 0.0, 0}};
        return text;
    }

    // The column of each block where columns have so many rows.
    std::vector<int> columnsOf(std::size_t rows) const {
        std::vector<int> columns = {0};
        std::size_t filled = m_blocks.front().size();
        for (auto block = m_blocks.begin() + 1; block != m_blocks.end(); ++block) {
            const bool isNext = filled + block->size() > rows;
            columns.push_back(columns.back() + isNext);
            filled = (isNext ? 0 : filled) + block->size();
        }
        return columns;
    }

    Primitives placed(const std::vector<int>& columns) {
        Primitives texts;
        int row = 0;
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            if (i > 0 && columns[i] != columns[i - 1])
                row = 0;
            for (Primitive& text : m_blocks[i]) {
                if (text.text.empty()) {
                    row += row > 0; // a column begins without a gap
                    continue;
                }
                text.points[0] = text.points[0] + Vec2{m_left + columns[i] * (m_width + 2 * m_size),
                                                       m_top - ++row * m_size * 1.7};
                texts.push_back(std::move(text));
            }
        }
        return texts;
    }

    // A heading stands in one column with what it heads, and so does all of a sentence, and the rest of a
    // list with its last entry.
    Primitives& blockOf(const SheetLine& line) {
        const bool isHeaded = m_last == SheetLine::kTitle || m_last == SheetLine::kHeading;
        if (m_blocks.empty() || (line.kind < SheetLine::kMore && !isHeaded))
            m_blocks.emplace_back();
        m_last = line.kind;
        return m_blocks.back();
    }

    void wrap(const SheetLine& line) {
        Primitives& block = blockOf(line);
        if (line.kind == SheetLine::kHeading)
            block.push_back(textOf({}));
        Primitive text = textOf(line);
        const std::string words = line.text.toStdString();
        for (std::size_t at = 0; at < words.size();) {
            const std::size_t end = std::min(words.find(' ', at), words.size());
            Primitive longer = text;
            longer.text += (text.text.empty() ? "" : " ") + words.substr(at, end - at);
            if (!text.text.empty() && longer.points[0].u + longer.textWidth() > m_width) {
                block.push_back(text);
                text.text = words.substr(at, end - at);
                text.points[0].u = 3 * m_size;
            } else {
                text = std::move(longer);
            }
            at = end + 1;
        }
        block.push_back(std::move(text));
    }

    double m_size;
    int m_count = 1;
    double m_width = 0;
    double m_left = 0;
    double m_top = 0;
    std::vector<Primitives> m_blocks; // texts that stand together, at first
    SheetLine::eKind m_last = SheetLine::kItem;
};

} // namespace

PicturePage StyleSheet::pageOf(const PicturePage& drawn, const Drawing& drawing, SourceId source,
                               std::int32_t style) {
    StyleRows rows(*StyleDatabases::current().source(source));
    const ScopedSource current(source);
    PicturePage page = drawn;
    const auto* record = rows.row<StructDetailStyle>(style);
    if (!record)
        return page;
    constexpr double kPaper = 400; // mm: a larger sheet is printed smaller, and its texts still read
    const double size = 2.5 * std::max(1.0, drawn.box.width() / kPaper);
    Primitives texts = SheetColumns(drawn.box, size).lay(SheetWords(rows, *record, drawing).words());
    Box2 box = boxOf(texts);
    box.low = box.low - Vec2{size, 2 * size};
    page.box.add(box);
    page.primitives.insert(page.primitives.end(), std::make_move_iterator(texts.begin()),
                           std::make_move_iterator(texts.end()));
    return page;
}
