#include "controls/KorListCtrl.h"

#include "controls/KorItemSelection.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorQt.h"
#include "controls/KorStyle.h"

#include "base/KorAssert.h"
#include "controls/KorListModel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kRoomForLines = 8;

bool isRow(const KorListRow* row) {
    return KorAssert::check(row != nullptr, "the list has such a row");
}

} // namespace

KorListCtrl::KorListCtrl(QWidget* parent) : QTreeView(parent), m_model(new KorListModel(this)) {
    setModel(m_model);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setIconSize(QSize(16, 16));
    setSortingEnabled(true);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &KorListCtrl::rowsSelected);
    connect(m_model, &KorListModel::checkToggled, this, &KorListCtrl::checkToggled);
    connect(this, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT itemActivated(index.row()); });
}

KorListCtrl::~KorListCtrl() {
    selectionModel()->disconnect(this);
}

void KorListCtrl::setTextWhenEmpty(const KorString& text) {
    m_whenEmpty = toQt(text);
    setAccessibleDescription(m_whenEmpty);
    viewport()->update();
}

void KorListCtrl::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (m_model->rowCount() > 0 || m_whenEmpty.isEmpty())
        return;
    constexpr int kMargin = 24;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_whenEmpty);
}

void KorListCtrl::setImageList(KorImageListPtr images) {
    m_model->setImageList(std::move(images));
    viewport()->update();
}

void KorListCtrl::setCheckBoxes(bool on) {
    m_model->setCheckBoxes(on);
}

bool KorListCtrl::isChecked(int row) const {
    const KorListRow* at = m_model->rowAt(row);
    return isRow(at) && at->checked;
}

void KorListCtrl::setChecked(int row, bool checked) {
    if (KorListRow* at = m_model->rowAt(row); isRow(at)) {
        at->checked = checked;
        m_model->changed(row);
    }
}

void KorListCtrl::setGridLines(bool on) {
    m_gridLines = on;
    // Lines need room around what stands between them.
    const int content = std::max(fontMetrics().height(), style()->pixelMetric(QStyle::PM_IndicatorHeight));
    m_model->setRowHeight(on ? content + kRoomForLines : 0);
    viewport()->update();
}

void KorListCtrl::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                          const QModelIndex& index) const {
    QTreeView::drawRow(painter, options, index);
    if (!m_gridLines)
        return;
    painter->setPen(KorStyle::lineColor(palette(), QPalette::Base));
    const QRect row = options.rect;
    painter->drawLine(row.bottomLeft(), row.bottomRight());
    for (int column = 0; column < columnCount(); ++column) {
        const int right = columnViewportPosition(column) + columnWidth(column) - 1;
        painter->drawLine(right, row.top(), right, row.bottom());
    }
}

int KorListCtrl::insertColumn(const KorString& title, int width, EFormat format) {
    const int column = m_model->addColumn(title, format == eNumber);
    header()->setSectionResizeMode(column, width > 0 ? QHeaderView::Interactive : QHeaderView::Stretch);
    header()->setStretchLastSection(false);
    if (width > 0) {
        header()->setMinimumSectionSize(std::min(header()->minimumSectionSize(), width));
        header()->resizeSection(column, width);
    }
    return column;
}

void KorListCtrl::deleteAllColumns() {
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    m_model->clearColumns();
}

int KorListCtrl::columnCount() const {
    return m_model->columnCount();
}

int KorListCtrl::insertItem(KorListRow row) {
    return m_model->insert(std::move(row));
}

void KorListCtrl::setItems(std::vector<KorListRow> rows) {
    m_model->replace(std::move(rows));
}

void KorListCtrl::deleteItem(int row) {
    if (isRow(m_model->rowAt(row)))
        m_model->remove(row);
}

int KorListCtrl::deleteSelectedItems() {
    const std::vector<int> rows = selectedRows();
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        m_model->remove(*row);
    return static_cast<int>(rows.size());
}

int KorListCtrl::getItemCount() const {
    return m_model->rowCount();
}

KorString KorListCtrl::getItemText(int row, int column) const {
    const KorListRow* at = m_model->rowAt(row);
    const auto cell = static_cast<std::size_t>(column);
    return isRow(at) && cell < at->texts.size() ? at->texts[cell] : KorString();
}

void KorListCtrl::setItemText(int row, int column, const KorString& text) {
    KorListRow* at = m_model->rowAt(row);
    if (!isRow(at) || !KorAssert::check(column >= 0 && column < columnCount(), "the list has such a column"))
        return;
    const auto cell = static_cast<std::size_t>(column);
    at->texts.resize(std::max(at->texts.size(), cell + 1));
    at->texts[cell] = text;
    m_model->changed(row);
}

KorEntryData KorListCtrl::getItemData(int row) const {
    const KorListRow* at = m_model->rowAt(row);
    return isRow(at) ? at->data : KorEntryData();
}

int KorListCtrl::findRow(const std::function<bool(const KorListRow&)>& isWanted) const {
    const auto& rows = m_model->rows();
    const auto at = std::ranges::find_if(rows, isWanted);
    return at == rows.end() ? -1 : static_cast<int>(at - rows.begin());
}

void KorListCtrl::sortByColumn(int column, Qt::SortOrder order) {
    header()->setSortIndicator(column, order); // sorts: the view follows its header
}

void KorListCtrl::keepSorting(const KorString& name) {
    m_sortingName = name;
    connect(header(), &QHeaderView::sectionClicked, this, [this] {
        const std::int64_t order = header()->sortIndicatorOrder() == Qt::AscendingOrder ? 1 : -1;
        KorLayoutStore::write(m_sortingName,
                              KorString::number(order * (header()->sortIndicatorSection() + 1)));
    });
}

void KorListCtrl::restoreSorting() {
    const int kept = toQt(KorLayoutStore::read(m_sortingName)).toInt();
    if (kept != 0 && std::abs(kept) <= columnCount())
        sortByColumn(std::abs(kept) - 1, kept > 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void KorListCtrl::setMultiSelection(bool on) {
    setSelectionMode(on ? ExtendedSelection : SingleSelection);
}

void KorListCtrl::selectRow(int row) {
    if (row < 0)
        return clearSelection();
    if (isRow(m_model->rowAt(row)))
        selectionModel()->setCurrentIndex(m_model->index(row, 0),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

std::vector<int> KorListCtrl::selectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

int KorListCtrl::selectedRow() const {
    const std::vector<int> rows = selectedRows();
    return rows.empty() ? -1 : rows.front();
}

void KorListCtrl::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool selected = selectionModel()->hasSelection();
    if (enter && selected) {
        event->accept(); // Enter in a list must not press the dialog's default button
        Q_EMIT itemActivated(currentIndex().row());
    } else if (event->key() == Qt::Key_Delete && selected) {
        event->accept();
        Q_EMIT deletePressed();
    } else if (event->key() == Qt::Key_Space && selected && m_model->hasCheckBoxes()) {
        event->accept();
        const QModelIndex box = currentIndex().siblingAtColumn(0);
        m_model->setData(box, isChecked(box.row()) ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void KorListCtrl::initViewItemOption(QStyleOptionViewItem* option) const {
    QTreeView::initViewItemOption(option);
    KorItemSelection::soften(option);
}
