#include "controls/linetype/LinetypeDelegate.h"

#include "controls/linetype/LinetypeModel.h"
#include "controls/linetype/LinetypePainter.h"

#include <QApplication>

namespace {

constexpr int kMargin = 4;
constexpr int kWidthInLetters = 40;

} // namespace

void LinetypeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    const LinetypeDefinition* linetype = LinetypeModel::definition(index);
    if (!linetype)
        return;
    const bool enabled = item.state & QStyle::State_Enabled;
    const bool active = item.state & QStyle::State_Active;
    const auto group = !enabled ? QPalette::Disabled : active ? QPalette::Active : QPalette::Inactive;
    const bool selected = item.state & QStyle::State_Selected;
    painter->save();
    painter->setFont(item.font);
    painter->setPen(item.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    LinetypePainter::paintEntry(*painter, item.rect.adjusted(kMargin, 0, -kMargin, 0), *linetype);
    painter->restore();
}

QSize LinetypeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {option.fontMetrics.averageCharWidth() * kWidthInLetters,
            option.fontMetrics.height() + 2 * kMargin};
}
