#include "controls/KorMFCGridCtrl.h"

#include "base/KorAssert.h"
#include "controls/KorAccessible.h"
#include "controls/KorGridDelegate.h"
#include "controls/KorQt.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <iterator>

namespace {

QStringList toQtList(const std::vector<KorString>& texts) {
    QStringList list;
    for (const KorString& text : texts)
        list.append(toQt(text));
    return list;
}

Qt::ItemFlags flagsOf(KorMFCGridCtrl::EKind kind) {
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    switch (kind) {
    case KorMFCGridCtrl::eReadOnly:
        return flags;
    case KorMFCGridCtrl::eCheck:
    case KorMFCGridCtrl::eRadio:
        return flags | Qt::ItemIsUserCheckable;
    default:
        return flags | Qt::ItemIsEditable;
    }
}

} // namespace

KorMFCGridCtrl::KorMFCGridCtrl(QWidget* parent)
    : QTableWidget(parent), m_delegate(new KorGridDelegate(this)) {
    setItemDelegate(m_delegate);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    connect(this, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
        if (m_filling)
            return;
        clearOtherRadios(*item);
        Q_EMIT cellEdited(item->row(), item->column());
    });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (!m_sizing)
            m_percentages.clear();
    });
}

KorMFCGridCtrl::~KorMFCGridCtrl() {
    KorAccessible::forget(this);
    disconnect();
    horizontalHeader()->disconnect(this);
}

int KorMFCGridCtrl::insertColumn(const KorString& title, EKind kind) {
    const QScopedValueRollback sizing(m_sizing, true);
    const int column = columnCount();
    setColumnCount(column + 1);
    auto* header = new QTableWidgetItem(toQt(title));
    header->setTextAlignment(Qt::AlignVCenter | (kind == eNumber ? Qt::AlignRight : Qt::AlignLeft));
    header->setToolTip(toQt(title)); // there may be no room for all of it
    setHorizontalHeaderItem(column, header);
    m_kinds.push_back(kind);
    return column;
}

void KorMFCGridCtrl::setColumnChoices(int column, const std::vector<KorString>& choices,
                                      const std::vector<QIcon>& pictures) {
    QTableWidgetItem* header = horizontalHeaderItem(column);
    if (!KorAssert::check(header != nullptr, "the grid has such a column"))
        return;
    const QScopedValueRollback filling(m_filling, true);
    // All cells share one list: where they share it already, none of them has to compare its texts.
    QStringList list = header->data(KorGridDelegate::kChoicesRole).toStringList();
    if (QStringList wanted = toQtList(choices); wanted != list)
        list = std::move(wanted);
    header->setData(KorGridDelegate::kChoicesRole, list);
    m_delegate->setPictures(column, pictures);
    for (int row = 0; row < rowCount(); ++row)
        cell(row, column)->setData(KorGridDelegate::kChoicesRole, list);
}

void KorMFCGridCtrl::setColumnTree(int column, std::function<void(VELComboTree&)> fill) {
    m_delegate->setTree(column, std::move(fill));
    setColumnChoices(column, {});
}

int KorMFCGridCtrl::addRow(const std::vector<KorString>& texts) {
    const QScopedValueRollback filling(m_filling, true);
    const int row = rowCount();
    setRowCount(row + 1);
    for (int column = 0; column < columnCount(); ++column) {
        const auto at = static_cast<std::size_t>(column);
        const EKind kind = m_kinds[at];
        const QString text = at < texts.size() ? toQt(texts[at]) : QString();
        auto* item = new QTableWidgetItem(kind == eCheck ? QString() : text);
        item->setFlags(flagsOf(kind) | (dragEnabled() ? Qt::ItemIsDragEnabled : Qt::NoItemFlags));
        if (kind == eCheck)
            item->setCheckState(text == u"1" ? Qt::Checked : Qt::Unchecked);
        if (kind == eRadio) {
            item->setCheckState(Qt::Unchecked);
            item->setData(KorGridDelegate::kRadioRole, true);
        }
        if (kind == eNumber)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (kind == eCombo)
            item->setData(KorGridDelegate::kChoicesRole,
                          horizontalHeaderItem(column)->data(KorGridDelegate::kChoicesRole));
        setItem(row, column, item);
    }
    return row;
}

void KorMFCGridCtrl::deleteRow(int row) {
    if (KorAssert::check(row >= 0 && row < rowCount(), "the grid has such a row"))
        removeRow(row);
}

int KorMFCGridCtrl::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void KorMFCGridCtrl::selectRow(int row) {
    const QScopedValueRollback filling(m_filling, true);
    if (row >= 0)
        setCurrentCell(row, 0);
    else
        clearSelection();
}

void KorMFCGridCtrl::setSelectsSeveral(bool on) {
    setSelectionMode(on ? ExtendedSelection : SingleSelection);
}

std::vector<int> KorMFCGridCtrl::selectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::ranges::sort(rows);
    return rows;
}

void KorMFCGridCtrl::selectRows(const std::vector<int>& rows) {
    const QScopedValueRollback filling(m_filling, true);
    clearSelection();
    if (rows.empty())
        return;
    setCurrentCell(rows.front(), std::max(currentColumn(), 0));
    // At once, and few ranges: whoever hears of a selection asks for all of its rows.
    QItemSelection selection;
    for (auto first = rows.begin(); first != rows.end();) {
        auto last = first;
        while (std::next(last) != rows.end() && *std::next(last) == *last + 1)
            ++last;
        selection.select(model()->index(*first, 0), model()->index(*last, columnCount() - 1));
        first = std::next(last);
    }
    selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void KorMFCGridCtrl::setOpensRows(bool on) {
    m_opensRows = on;
    setEditTriggers(on ? SelectedClicked | EditKeyPressed | AnyKeyPressed
                       : DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
}

void KorMFCGridCtrl::setRowsMovable(bool on) {
    setDragEnabled(on);
    setDragDropMode(on ? InternalMove : NoDragDrop);
    setDragDropOverwriteMode(false);
    setDropIndicatorShown(false); // which is as wide as one cell
}

void KorMFCGridCtrl::editCell(int row, int column) {
    setCurrentCell(row, column);
    if (m_enabled)
        QTableWidget::edit(currentIndex());
}

QTableWidgetItem* KorMFCGridCtrl::cell(int row, int column) const {
    QTableWidgetItem* found = item(row, column);
    KorAssert::check(found != nullptr, "the grid has such a cell");
    return found;
}

KorString KorMFCGridCtrl::getCellText(int row, int column) const {
    const QTableWidgetItem* item = cell(row, column);
    return item ? fromQt(item->text()) : KorString();
}

void KorMFCGridCtrl::setCellText(int row, int column, const KorString& text) {
    const QScopedValueRollback filling(m_filling, true);
    if (QTableWidgetItem* item = cell(row, column))
        item->setText(toQt(text));
}

void KorMFCGridCtrl::setCellPicture(int row, int column, const QIcon& picture) {
    const QScopedValueRollback filling(m_filling, true);
    QTableWidgetItem* item = cell(row, column);
    if (item && !(picture.isNull() && item->icon().isNull()))
        item->setIcon(picture);
}

bool KorMFCGridCtrl::isCellChecked(int row, int column) const {
    const QTableWidgetItem* item = cell(row, column);
    return item && item->checkState() == Qt::Checked;
}

void KorMFCGridCtrl::setCellCheck(int row, int column, bool checked) {
    const QScopedValueRollback filling(m_filling, true);
    if (QTableWidgetItem* item = cell(row, column)) {
        item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
        clearOtherRadios(*item);
    }
}

bool KorMFCGridCtrl::hasRadio(int row, int column) const {
    const QTableWidgetItem* found = item(row, column);
    return found && found->data(KorGridDelegate::kRadioRole).toBool();
}

void KorMFCGridCtrl::clearOtherRadios(const QTableWidgetItem& chosen) {
    const QScopedValueRollback filling(m_filling, true);
    if (chosen.checkState() != Qt::Checked || !hasRadio(chosen.row(), chosen.column()))
        return;
    for (int column = 0; column < columnCount(); ++column)
        if (column != chosen.column() && hasRadio(chosen.row(), column))
            item(chosen.row(), column)->setCheckState(Qt::Unchecked);
}

bool KorMFCGridCtrl::chooseNextRadio(int step) {
    const int row = currentRow();
    const int next = currentColumn() + step;
    if (!m_enabled || !hasRadio(row, currentColumn()) || !hasRadio(row, next))
        return false;
    setCurrentCell(row, next);
    item(row, next)->setCheckState(Qt::Checked);
    return true;
}

void KorMFCGridCtrl::setCellEnabled(int row, int column, bool enable) {
    const QScopedValueRollback filling(m_filling, true);
    QTableWidgetItem* item = cell(row, column);
    if (!item)
        return;
    const Qt::ItemFlags flags = flagsOf(m_kinds[static_cast<std::size_t>(column)]);
    if (m_kinds[static_cast<std::size_t>(column)] != eRadio) {
        item->setFlags(enable ? flags : Qt::ItemIsSelectable);
        return;
    }
    item->setFlags(enable ? flags : flagsOf(eReadOnly));
    item->setData(Qt::CheckStateRole, enable ? QVariant(Qt::Unchecked) : QVariant());
    item->setData(KorGridDelegate::kRadioRole, enable);
}

void KorMFCGridCtrl::enableWindow(bool enable) {
    if (m_enabled == enable)
        return;
    m_enabled = enable;
    m_delegate->setEnabled(enable);
    viewport()->update();
}

bool KorMFCGridCtrl::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // Checks are turned here as well, not only texts edited.
    return m_enabled && QTableWidget::edit(index, trigger, event);
}

// A question that the cell's value led to may have the activation still: the editor is not seen to have the
// focus then.
void KorMFCGridCtrl::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    const QWidget* focus = window()->focusWidget();
    const bool hadFocus = editor && focus && (focus == editor || editor->isAncestorOf(focus));
    QTableWidget::closeEditor(editor, hint);
    if (hadFocus && !isEditing())
        setFocus();
}

void KorMFCGridCtrl::commitEdit() {
    if (QWidget* editor = indexWidget(currentIndex())) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void KorMFCGridCtrl::dropEdit() {
    if (QWidget* editor = indexWidget(currentIndex()))
        closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

void KorMFCGridCtrl::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isChoice = std::ranges::find(m_kinds, eRadio) != m_kinds.end();
    const bool sideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (sideways && chooseNextRadio(event->key() == Qt::Key_Left ? -1 : 1)) {
        event->accept();
    } else if (enter && currentIndex().isValid() && !isChoice) {
        event->accept();             // Enter in a grid must not press the dialog's default button
        if (state() == EditingState) // the Enter that ends editing comes by here, too
            return;
        if (m_opensRows)
            Q_EMIT rowOpened(currentRow(), currentColumn());
        else
            QTableWidget::edit(currentIndex());
    } else if (event->key() == Qt::Key_Delete && m_enabled && selectedRow() >= 0) {
        event->accept();
        Q_EMIT deletePressed(selectedRow());
    } else {
        QTableWidget::keyPressEvent(event);
    }
}

void KorMFCGridCtrl::resizeEvent(QResizeEvent* event) {
    QTableWidget::resizeEvent(event);
    applyColumnWidths();
    if (m_isFitted)
        fitColumns();
}
