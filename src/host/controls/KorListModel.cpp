#include "controls/KorListModel.h"

#include "controls/KorQt.h"

#include <QLocale>
#include <QSize>

#include <algorithm>
#include <limits>
#include <numeric>

namespace {

const KorString& textOf(const KorListRow& row, int column) {
    static const KorString kNone;
    const auto at = static_cast<std::size_t>(column);
    return at < row.texts.size() ? row.texts[at] : kNone;
}

/// The value of a cell; what is no number comes before all numbers.
double numberOf(const QString& text) {
    bool ok = false;
    const double value = QLocale().toDouble(text.trimmed(), &ok);
    return ok ? value : -std::numeric_limits<double>::infinity();
}

/// The language whose order counts. The "C" locale sorts by code points, which is no order for people.
QLocale sortLocale() {
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

KorListModel::KorListModel(QObject* parent) : QAbstractTableModel(parent), m_collator(sortLocale()) {
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

int KorListModel::addColumn(const KorString& title, bool ofNumbers) {
    const int column = columnCount();
    beginInsertColumns({}, column, column);
    m_columns.push_back({title, ofNumbers});
    endInsertColumns();
    return column;
}

void KorListModel::clearColumns() {
    beginResetModel();
    m_columns.clear();
    m_rows.clear();
    m_sortColumn = -1;
    endResetModel();
}

KorListModel::Key KorListModel::keyOf(const KorListRow& row) const {
    const QString text = toQt(textOf(row, m_sortColumn));
    const bool number = m_columns[static_cast<std::size_t>(m_sortColumn)].ofNumbers;
    return {number ? numberOf(text) : 0.0, m_collator.sortKey(number ? QString() : text)};
}

bool KorListModel::isLess(const Key& left, const Key& right) const {
    const int order = left.number < right.number   ? -1
                      : left.number > right.number ? 1
                                                   : left.text.compare(right.text);
    return m_sortOrder == Qt::AscendingOrder ? order < 0 : order > 0;
}

int KorListModel::insert(KorListRow row) {
    int at = rowCount();
    if (m_sortColumn >= 0) {
        const Key key = keyOf(row);
        const auto place = std::upper_bound(
            m_rows.begin(), m_rows.end(), key,
            [this](const Key& left, const KorListRow& right) { return isLess(left, keyOf(right)); });
        at = static_cast<int>(place - m_rows.begin());
    }
    beginInsertRows({}, at, at);
    m_rows.insert(m_rows.begin() + at, std::move(row));
    endInsertRows();
    return at;
}

void KorListModel::replace(std::vector<KorListRow> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    if (m_sortColumn >= 0)
        reorder(sortedOrder());
    endResetModel();
}

void KorListModel::remove(int row) {
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

KorListRow* KorListModel::rowAt(int row) {
    return row >= 0 && row < rowCount() ? &m_rows[static_cast<std::size_t>(row)] : nullptr;
}

int KorListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int KorListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant KorListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const KorListRow& row = m_rows[static_cast<std::size_t>(index.row())];
    const bool number = m_columns[static_cast<std::size_t>(index.column())].ofNumbers;
    if (role == Qt::DisplayRole)
        return toQt(textOf(row, index.column()));
    if (role == Qt::DecorationRole && index.column() == 0 && m_images && row.image >= 0)
        return m_images->at(row.image);
    if (role == Qt::SizeHintRole && index.column() == 0 && m_rowHeight > 0)
        return QSize(m_rowHeight, m_rowHeight);
    if (role == Qt::AccessibleTextRole && index.column() == 0 && m_checkBoxes && row.texts.size() > 1)
        return toQt(row.texts[1]); // a box alone in its column stands for the text beside it
    if (role == Qt::CheckStateRole && index.column() == 0 && m_checkBoxes)
        return row.checked ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::TextAlignmentRole && number)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool KorListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    KorListRow* row = rowAt(index.row());
    if (role != Qt::CheckStateRole || !m_checkBoxes || index.column() != 0 || !row)
        return false;
    row->checked = value.toInt() == Qt::Checked;
    changed(index.row());
    Q_EMIT checkToggled(index.row());
    return true;
}

Qt::ItemFlags KorListModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return m_checkBoxes && index.column() == 0 ? usual | Qt::ItemIsUserCheckable : usual;
}

QVariant KorListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount())
        return {};
    const Column& column = m_columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return toQt(column.title);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter | (column.ofNumbers ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

std::vector<int> KorListModel::sortedOrder() const {
    std::vector<Key> keys;
    keys.reserve(m_rows.size());
    for (const KorListRow& row : m_rows)
        keys.push_back(keyOf(row));
    std::vector<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int left, int right) {
        return isLess(keys[static_cast<std::size_t>(left)], keys[static_cast<std::size_t>(right)]);
    });
    return order;
}

void KorListModel::reorder(const std::vector<int>& order) {
    std::vector<KorListRow> sorted;
    sorted.reserve(order.size());
    for (const int row : order)
        sorted.push_back(std::move(m_rows[static_cast<std::size_t>(row)]));
    m_rows = std::move(sorted);
}

void KorListModel::sort(int column, Qt::SortOrder order) {
    m_sortColumn = column < columnCount() ? column : -1;
    m_sortOrder = order;
    if (m_sortColumn < 0)
        return;
    Q_EMIT layoutAboutToBeChanged();
    const std::vector<int> sorted = sortedOrder();
    std::vector<int> newRowOf(sorted.size());
    for (std::size_t row = 0; row < sorted.size(); ++row)
        newRowOf[static_cast<std::size_t>(sorted[row])] = static_cast<int>(row);
    reorder(sorted);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& old : before)
        after.append(index(newRowOf[static_cast<std::size_t>(old.row())], old.column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}
