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
    /// What `saveState` gives and `restoreState` takes, with the width that the left pane has where it does
    /// not give way.
    QByteArray saveWanted();
    void restoreWanted(const QByteArray& state);
    /// Lets the left pane give way where the right one would have less than `width` pixels, and come back
    /// when there is room again. Where the user puts the bar it stays until the window changes its size.
    void setRightRoom(int width);

protected:
    QSplitterHandle* createHandle() override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void giveWay();

    int m_rightRoom = 0;
    int m_leftBefore = 0; // it gave way; 0 where it did not
};
