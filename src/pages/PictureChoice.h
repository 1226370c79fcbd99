#pragma once

#include "records/TableSchema.h"

#include <QGroupBox>

#include <utility>
#include <vector>

class KorInfoCtrl;
class QRadioButton;

/// The values of a column as radio buttons beside a picture that explains the chosen one. The
/// buttons are numbered controls, so that a page's table binds them to the column (`PageField::radios`).
class PictureChoice : public QGroupBox {
    Q_OBJECT

public:
    /// The buttons get the numbers from `firstControl` on. The column's values have names and large pictures.
    PictureChoice(const TableSchema& table, const Column& column, int firstControl);

    /// Number of each button, and the value that it stands for.
    const std::vector<std::pair<int, int>>& radios() const { return m_radios; }

private:
    QRadioButton* addRadio(const KorString& name, int control, int value);

    const TableSchema& m_table;
    const Column& m_column;
    std::vector<std::pair<int, int>> m_radios;
    KorInfoCtrl* m_picture;
};
