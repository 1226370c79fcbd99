#include "controls/label/DrawingColorMenu.h"

#include "controls/KorReadable.h"
#include "controls/label/DrawingColors.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QWidgetAction>

namespace {

constexpr int kRows = 11;
constexpr int kColumns = 24;
constexpr int kCell = 18;
constexpr int kNumberRole = Qt::UserRole;

// The colours with names, the greys, then the two without a colour of their own, then the hues column by
// column, pure shades above pale ones. -1 where there is no colour.
int numberAt(int row, int column) {
    if (row > 0)
        return 10 * (column + 1) + (row <= 5 ? 2 * (row - 1) : 2 * (row - 6) + 1);
    if (column < 9)
        return column + 1;
    if (column >= 10 && column < 16)
        return 240 + column;
    return column == 17 ? DrawingColors::kByLayer : column == 18 ? DrawingColors::kByBlock : -1;
}

class SwatchDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QVariant color = index.data(Qt::BackgroundRole);
        if (!color.isValid())
            return;
        const QColor fill = color.value<QColor>();
        const QRect box = option.rect.adjusted(1, 1, -2, -2);
        const bool current = option.state & QStyle::State_Selected;
        painter->fillRect(box, fill);
        painter->setPen(QPen(current ? option.palette.color(QPalette::Highlight)
                                     : KorReadable::mixed(option.palette.color(QPalette::Window),
                                                          option.palette.color(QPalette::WindowText), 0.4),
                             current ? 3 : 1));
        painter->drawRect(box);
        painter->setPen(DrawingColors::foreground(fill));
        painter->drawText(box, Qt::AlignCenter, index.data(Qt::DisplayRole).toString());
    }
};

} // namespace

// The grid is made when it is first needed, not with every page that has a designer.
DrawingColorMenu::DrawingColorMenu(QWidget* parent) : QMenu(parent) {
    connect(this, &QMenu::aboutToShow, this, [this] {
        if (!m_grid)
            layOut();
        fillGrid();
    });
}

void DrawingColorMenu::layOut() {
    m_grid = new QTableWidget(kRows, kColumns);
    m_name = new QLabel;
    auto* panel = new QWidget;
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_grid);
    layout->addWidget(m_name);
    setUpGrid();
    auto* action = new QWidgetAction(this);
    action->setDefaultWidget(panel);
    addAction(action);
}

void DrawingColorMenu::setUpGrid() {
    m_grid->horizontalHeader()->hide();
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setMinimumSectionSize(kCell);
    m_grid->verticalHeader()->setMinimumSectionSize(kCell);
    m_grid->horizontalHeader()->setDefaultSectionSize(kCell);
    m_grid->verticalHeader()->setDefaultSectionSize(kCell);
    m_grid->setShowGrid(false);
    m_grid->setFrameShape(QFrame::NoFrame);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setFixedSize(kColumns * kCell, kRows * kCell);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setTabKeyNavigation(false);
    m_grid->setMouseTracking(true);
    m_grid->viewport()->setAutoFillBackground(false);
    m_grid->setItemDelegate(new SwatchDelegate(m_grid));
    m_grid->installEventFilter(this);
    connect(m_grid, &QTableWidget::cellClicked, this, &DrawingColorMenu::choose);
    connect(m_grid, &QTableWidget::cellEntered, this, &DrawingColorMenu::nameCell);
    connect(m_grid, &QTableWidget::currentCellChanged, this, &DrawingColorMenu::nameCell);
}

void DrawingColorMenu::fillGrid() {
    m_grid->setAccessibleName(m_texts.color);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            const int number = numberAt(row, column);
            auto* item = new QTableWidgetItem;
            item->setFlags(number < 0 ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setData(kNumberRole, number);
            if (number >= 0) {
                item->setBackground(DrawingColors::swatch(number, m_background));
                item->setData(Qt::AccessibleTextRole, m_texts.colorName(number));
            }
            if (number == DrawingColors::kByLayer || number == DrawingColors::kByBlock)
                item->setText(m_texts.colorName(number).section(QChar(QChar::Space), -1).left(1).toUpper());
            m_grid->setItem(row, column, item);
            if (number == m_current)
                m_grid->setCurrentItem(item);
        }
    }
}

void DrawingColorMenu::showEvent(QShowEvent* event) {
    QMenu::showEvent(event);
    m_grid->setFocus();
}

bool DrawingColorMenu::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            choose(m_grid->currentRow(), m_grid->currentColumn());
            return true;
        }
        if (key == Qt::Key_Escape) {
            close();
            return true;
        }
    }
    return QMenu::eventFilter(object, event);
}

void DrawingColorMenu::choose(int row, int column) {
    const int number = row < 0 || column < 0 ? -1 : numberAt(row, column);
    if (number < 0)
        return;
    close();
    Q_EMIT chosen(number);
}

void DrawingColorMenu::nameCell(int row, int column) {
    const int number = row < 0 || column < 0 ? -1 : numberAt(row, column);
    m_name->setText(number < 0 ? QString() : m_texts.colorName(number));
}
