#pragma once

#include <QSplitter>

/// Two panes side by side with an upright bar between them, or one above the other. The first pane keeps its
/// size when the window grows. The bar can be reached with the Tab key and moved with the arrow keys, Home
/// and End.
class KorVerticalSplitter : public QSplitter {
    Q_OBJECT

public:
    explicit KorVerticalSplitter(QWidget* parent = nullptr);

    /// Sets the width of the left pane in pixels, or the height of the upper one, as far as both panes'
    /// minimum sizes allow.
    void setLeftWidth(int width);
    int leftWidth() const;

protected:
    QSplitterHandle* createHandle() override;
    void showEvent(QShowEvent* event) override;
};
