#include "controls/KorMFCGridCtrl.h"

#include <QHeaderView>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace {

// Of both sides of a caption, with the line between columns.
int captionMargins(const QHeaderView& header) {
    return 2 * header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header) + 2;
}

} // namespace

void KorMFCGridCtrl::setColumnWidths(const std::vector<int>& percentages) {
    m_percentages = percentages;
    applyColumnWidths();
}

void KorMFCGridCtrl::applyColumnWidths() {
    constexpr int kTolerance = 20;
    const QScopedValueRollback sizing(m_sizing, true);
    const int width = viewport()->width();
    int before = 0;
    for (int column = 0; column < columnCount() && column < static_cast<int>(m_percentages.size());
         ++column) {
        int share =
            static_cast<int>(std::lround(m_percentages[static_cast<std::size_t>(column)] * width / 100.0));
        if (std::abs(before + share - width) < kTolerance)
            share = std::abs(width - before);
        setColumnWidth(column, share);
        before += share;
    }
}

// Of the columns that are shown; 0 for the others.
std::vector<int> KorMFCGridCtrl::leastWidths() const {
    constexpr int kShortText = 14; // letters
    const QFontMetrics metrics = horizontalHeader()->fontMetrics();
    const int margins = captionMargins(*horizontalHeader());
    std::vector<int> least(static_cast<std::size_t>(columnCount()));
    for (int column = 0; column < columnCount(); ++column) {
        int& width = least[static_cast<std::size_t>(column)];
        if (isColumnHidden(column))
            continue;
        width = horizontalHeader()->minimumSectionSize();
        for (const QString& word : horizontalHeaderItem(column)->text().split(u' '))
            width = std::max(width, metrics.horizontalAdvance(word) + margins);
        if (m_kinds[static_cast<std::size_t>(column)] == eReadOnly)
            width =
                std::max(width, std::min(sizeHintForColumn(column), kShortText * metrics.averageCharWidth()));
    }
    return least;
}

void KorMFCGridCtrl::fitColumns() {
    m_isFitted = true;
    if (m_sizing)
        return;
    const QScopedValueRollback sizing(m_sizing, true);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setResizeContentsPrecision(0); // of the rows in sight, however many there are
    const std::vector<int> least = leastWidths();
    int rest = std::max(viewport()->width() - std::reduce(least.begin(), least.end()), 0);
    int growing = 0;
    for (std::size_t column = 0; column < least.size(); ++column)
        growing += least[column] > 0 && m_kinds[column] != eReadOnly;
    for (std::size_t column = 0; column < least.size(); ++column) {
        if (least[column] == 0)
            continue;
        const int share = m_kinds[column] == eReadOnly ? 0 : rest / growing--;
        rest -= share;
        setColumnWidth(static_cast<int>(column), least[column] + share);
    }
    wrapCaptions();
}

void KorMFCGridCtrl::wrapCaptions() {
    QHeaderView& header = *horizontalHeader();
    const int margins = captionMargins(header);
    const int line = header.fontMetrics().height();
    int most = line;
    for (int column = 0; column < columnCount(); ++column) {
        QTableWidgetItem* caption = horizontalHeaderItem(column);
        const bool isNumber = m_kinds[static_cast<std::size_t>(column)] == eNumber;
        caption->setData(Qt::TextAlignmentRole, static_cast<int>(isNumber ? Qt::AlignRight : Qt::AlignLeft) |
                                                    static_cast<int>(Qt::AlignVCenter) |
                                                    static_cast<int>(Qt::TextWordWrap));
        const QRect room(0, 0, columnWidth(column) - margins, 0);
        if (!isColumnHidden(column))
            most = std::max(
                most, header.fontMetrics().boundingRect(room, Qt::TextWordWrap, caption->text()).height());
    }
    const int height = header.sizeHint().height() + most - line;
    if (header.minimumHeight() == height)
        return;
    header.setFixedHeight(height);
    Q_EMIT captionsWrapped();
}
