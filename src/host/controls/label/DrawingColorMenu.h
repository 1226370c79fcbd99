#pragma once

#include "controls/label/LabelDesignerTexts.h"

#include <QColor>
#include <QMenu>

class QLabel;
class QTableWidget;

/// The palette of the drawing colours as a menu: a grid to be clicked, or walked with the arrow keys and
/// chosen from with Return, and the name of the colour under the mouse or the cursor.
class DrawingColorMenu : public QMenu {
    Q_OBJECT

public:
    explicit DrawingColorMenu(QWidget* parent = nullptr);

    void setTexts(const LabelDesignerTexts& texts) { m_texts = texts; }
    /// The foreground colour is the one that shows on `background`.
    void setBackground(const QColor& background) { m_background = background; }
    void setCurrent(int number) { m_current = number; }

Q_SIGNALS:
    void chosen(int number);

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void layOut();
    void setUpGrid();
    void fillGrid();
    void choose(int row, int column);
    void nameCell(int row, int column);

    LabelDesignerTexts m_texts;
    QColor m_background = Qt::black;
    int m_current = 0;
    QTableWidget* m_grid = nullptr;
    QLabel* m_name = nullptr;
};
