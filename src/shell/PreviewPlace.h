#pragma once

#include <QObject>

class KorVerticalSplitter;
class PreviewPane;
class QWidget;

/// Where the preview stands in the window: beside the pages or below them, how large, and whether it is
/// shown. All of it is remembered from one window to the next.
class PreviewPlace : public QObject {
    Q_OBJECT

public:
    /// Puts the pane into the splitter, behind what it has, and hides it. All must outlive the object;
    /// `window` is asked for its screen.
    PreviewPlace(QWidget& window, KorVerticalSplitter& splitter, PreviewPane& pane);

    /// Whether the pane was shown when it was last left; at first where the screen is wide.
    bool wasShown() const;
    bool isShown() const { return m_isShown; }
    /// Returns whether that was otherwise.
    bool setShown(bool shown);
    /// From beside to below, or back.
    void turn();
    void remember() const;
    /// How much wider a window is to open, that was never opened before.
    int wantedWidth() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isWide() const;
    bool isBelow() const;
    void setOrientation(Qt::Orientation orientation);
    void layOut();

    QWidget& m_window;
    KorVerticalSplitter& m_splitter;
    PreviewPane& m_pane;
    bool m_isShown = false;
};
