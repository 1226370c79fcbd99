#include "dialogs/SearchHitList.h"

#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/KorStyle.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace {

constexpr int kMargin = 6;
constexpr int kIcon = 20;

QString placeOf(const KorDSMSearchHit& hit) {
    QStringList steps;
    for (const KorString& step : {hit.path, hit.source})
        if (!step.isEmpty())
            steps << toQt(step);
    return steps.join(QStringLiteral(" · "));
}

// In bold what fits.
QList<QTextLayout::FormatRange> formatsOf(const SearchWords& words, const KorString& text) {
    QList<QTextLayout::FormatRange> formats;
    const auto lengthUpTo = [&text](std::size_t end) {
        return static_cast<int>(toQt(KorString(text.view().substr(0, end))).size());
    };
    for (const SearchMark& mark : words.marks(text)) {
        QTextLayout::FormatRange range;
        range.start = lengthUpTo(mark.begin);
        range.length = lengthUpTo(mark.begin + mark.length) - range.start;
        range.format.setFontWeight(QFont::Bold);
        formats << range;
    }
    return formats;
}

void drawMarked(QPainter& painter, const QRect& rect, const QFont& font, const SearchWords& words,
                const KorString& text) {
    QTextLayout layout(toQt(text), font);
    layout.setFormats(formatsOf(words, text));
    QTextOption single;
    single.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(single);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(rect.width());
    layout.endLayout();
    painter.save();
    painter.setClipRect(rect);
    layout.draw(&painter, rect.topLeft());
    painter.restore();
}

} // namespace

SearchHitList::SearchHitList(PictureOf pictureOf, QObject* parent)
    : QAbstractListModel(parent), m_pictureOf(std::move(pictureOf)) {}

void SearchHitList::show(const SearchWords& words, std::vector<KorDSMSearchHit> hits) {
    beginResetModel();
    m_words = words;
    m_hits = std::move(hits);
    endResetModel();
}

int SearchHitList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_hits.size());
}

QVariant SearchHitList::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {}; // Ctrl+C asks for the current row also where there is none
    const KorDSMSearchHit& found = hit(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return toQt(found.text);
    case Qt::DecorationRole:
        if (found.icon != 0)
            return KorPictures::icon(found.icon);
        return found.row.key > 0 ? QIcon() : m_pictureOf(found);
    case Qt::ToolTipRole:
        return QStringLiteral("%1\n%2").arg(toQt(found.text), placeOf(found));
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1, %2, %3").arg(toQt(found.text), toQt(found.kindText), placeOf(found));
    default:
        return {};
    }
}

void SearchHitDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    const auto& list = static_cast<const SearchHitList&>(*index.model());
    const KorDSMSearchHit& hit = list.hit(index.row());
    QStyleOptionViewItem whole = option;
    initStyleOption(&whole, index);
    const QIcon icon = whole.icon;
    whole.text.clear();
    whole.icon = {};
    const QStyle* style = whole.widget ? whole.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &whole, painter, whole.widget);

    const bool isSelected = whole.state & QStyle::State_Selected;
    const QPalette::ColorGroup group = !hit.isOffered                       ? QPalette::Disabled
                                       : whole.state & QStyle::State_Active ? QPalette::Active
                                                                            : QPalette::Inactive;
    painter->setPen(
        whole.palette.color(group, isSelected && hit.isOffered ? QPalette::HighlightedText : QPalette::Text));
    const QRect rect = whole.rect.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    icon.paint(painter, QRect(rect.left(), rect.center().y() - kIcon / 2, kIcon, kIcon), Qt::AlignCenter,
               hit.isOffered ? QIcon::Normal : QIcon::Disabled);
    const int height = whole.fontMetrics.height();
    const QString kind = toQt(hit.kindText);
    const int kindWidth = whole.fontMetrics.horizontalAdvance(kind);
    const QRect first(rect.left() + kIcon + kMargin, rect.top(), rect.width() - kIcon - kMargin, height);
    painter->drawText(first, Qt::AlignRight | Qt::AlignVCenter, kind);
    drawMarked(*painter, first.adjusted(0, 0, -kindWidth - 2 * kMargin, 0), whole.font, list.words(),
               hit.text);
    painter->drawText(first.translated(0, height), Qt::AlignLeft | Qt::AlignVCenter,
                      whole.fontMetrics.elidedText(placeOf(hit), Qt::ElideMiddle, first.width()));
    // The field keeps the focus, so that nothing else frames the row.
    if (isSelected) {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(KorStyle::focusColor(option.widget ? option.widget->window()->palette()
                                                           : QApplication::palette()));
        painter->drawRect(whole.rect.adjusted(0, 0, -1, -1));
    }
}

QSize SearchHitDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {200, 2 * option.fontMetrics.height() + 2 * kMargin};
}
