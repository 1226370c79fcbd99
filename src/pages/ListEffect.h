#pragma once

#include "session/KorDSMListEffect.h"

#include <QObject>

class KorMFCGridCtrl;
class QMenu;

/// Columns behind those of an edited list: how many objects of the preview's sample part each row takes, and,
/// where rows are asked in their order, how many it fits that a row before takes. They are there while a
/// preview is, or a row never acts.
class ListEffect : public QObject {
    Q_OBJECT

public:
    /// `grid`, which shows rows of this table, is not owned and has its own columns already.
    ListEffect(KorMFCGridCtrl& grid, eTableType parts);

    /// Shows what is so of the record whose rows, with these keys, the grid shows.
    void show(RowRef whole, const std::vector<std::int32_t>& keys);
    /// The objects of the sample part that a cell counts; none for other cells.
    std::vector<int> objectsAt(int row, int column) const;
    /// Adds the command that leaves rows out on trial; nothing without a preview.
    void addTo(QMenu& menu, const std::vector<std::int32_t>& keys) const;

private:
    void showRow(int place, const KorDSMListEffect::Row& row);

    KorMFCGridCtrl& m_grid;
    bool m_isFirstMatch;
    int m_takes;
    int m_takenBefore;                         // -1: no row can be taken before another
    std::vector<KorDSMListEffect::Row> m_rows; // as the grid has them
};
