#pragma once

#include "records/RowRef.h"

#include <QWidget>

class KorDSMPage;
class PageFields;

/// What stands fixed below the last row of a list in which the first fitting row decides: what becomes of
/// what no row fits.
class RestRow : public QWidget {
    Q_OBJECT

public:
    /// `page` is not owned. The row belongs to the list of these parts, for which it must exist.
    RestRow(KorDSMPage& page, eTableType parts);

    /// Whether a list of these parts has such a row.
    static bool isFor(eTableType parts);

    /// Shows what this row of the current source says.
    void load(RowRef whole);

private:
    KorDSMPage& m_page;
    RowRef m_whole;
    int m_column;
    PageFields* m_fields = nullptr; // made when it is known whose column it is
};
