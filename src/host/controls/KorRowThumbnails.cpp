#include "controls/KorRowThumbnails.h"

#include <QEvent>
#include <QTreeView>

#include <algorithm>

namespace {

constexpr int kAround = 4; // rows out of sight of which pictures are made, too
constexpr int kMargin = 4;

// The row that is so many rows away in sight, or would be after scrolling.
QModelIndex neighbour(const QAbstractItemView& view, QModelIndex row, int step) {
    const auto* tree = qobject_cast<const QTreeView*>(&view);
    if (!tree)
        return row.sibling(row.row() + step, 0);
    return step > 0 ? tree->indexBelow(row) : tree->indexAbove(row);
}

} // namespace

KorRowThumbnails::KorRowThumbnails(QAbstractItemView& view, SubjectOf subjectOf)
    : QStyledItemDelegate(&view), m_view(view), m_subjectOf(std::move(subjectOf)) {
    view.setItemDelegate(this);
    view.viewport()->installEventFilter(this);
    view.installEventFilter(this);
    connect(view.model(), &QAbstractItemModel::modelReset, this, [] {
        if (KorThumbnails* maker = KorThumbnails::current())
            maker->lookAgain();
    });
    if (KorThumbnails* maker = KorThumbnails::current()) {
        connect(maker, &KorThumbnails::made, view.viewport(), qOverload<>(&QWidget::update));
        connect(maker, &KorThumbnails::switched, this, &KorRowThumbnails::layOut);
    }
}

bool KorRowThumbnails::areShown() const {
    const KorThumbnails* maker = KorThumbnails::current();
    return m_isWanted && maker && maker->areShown();
}

void KorRowThumbnails::setWanted(bool wanted) {
    if (std::exchange(m_isWanted, wanted) != wanted)
        layOut();
}

void KorRowThumbnails::layOut() {
    m_view.doItemsLayout();
    m_view.viewport()->update();
}

QSize KorRowThumbnails::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize usual = QStyledItemDelegate::sizeHint(option, index);
    const int height = KorThumbnails::kSize.height() + kMargin;
    return areShown() ? usual.expandedTo({usual.width(), height}) : usual;
}

void KorRowThumbnails::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.column() != 0 || !areShown())
        return;
    const KorThumbnails::Subject subject = m_subjectOf(index);
    if (!subject)
        return;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = KorThumbnails::kSize;
    // A selected row is told by its ground; its drawing stays as clear as the others.
    const QPixmap picture = KorThumbnails::current()->picture(subject, m_view.devicePixelRatioF());
    option->icon = {};
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled, QIcon::Active, QIcon::Selected})
        option->icon.addPixmap(picture, mode);
}

bool KorRowThumbnails::eventFilter(QObject* watched, QEvent* event) {
    KorThumbnails* maker = KorThumbnails::current();
    if (event->type() == QEvent::Paint && watched == m_view.viewport())
        want();
    else if (event->type() == QEvent::Hide && watched == &m_view && maker)
        maker->want(m_view, {}, 1);
    return false;
}

void KorRowThumbnails::want() {
    KorThumbnails* maker = KorThumbnails::current();
    if (!maker)
        return;
    std::vector<KorThumbnails::Subject> subjects;
    const auto add = [&](const QModelIndex& row) {
        if (const KorThumbnails::Subject subject = m_subjectOf(row))
            subjects.push_back(subject);
    };
    const int bottom = m_view.viewport()->height();
    const QModelIndex first = areShown() ? m_view.indexAt({1, 1}) : QModelIndex();
    QModelIndex row = first.siblingAtColumn(0);
    for (; row.isValid() && m_view.visualRect(row).top() < bottom; row = neighbour(m_view, row, 1))
        add(row);
    for (int i = 0; i < kAround && row.isValid(); ++i, row = neighbour(m_view, row, 1))
        add(row);
    row = first.siblingAtColumn(0);
    for (int i = 0; i < kAround && (row = neighbour(m_view, row, -1)).isValid(); ++i)
        add(row);
    maker->want(m_view, std::move(subjects), m_view.devicePixelRatioF());
}
