#pragma once

#include "base/KorString.h"

#include <QPointer>
#include <QWidget>

#include <vector>

/// Remembers under a name where a window stood, how large it was and how its splitters were set, and says
/// for controls how they follow the window's size. The forms' layouts do the moving itself.
class MemoryDlg {
public:
    /// How a control follows the window's size; values can be added up.
    enum EAnchor {
        eMoveX = 1,    ///< keeps its distance from the right edge
        eMoveY = 2,    ///< keeps its distance from the lower edge
        eStretchX = 4, ///< becomes wider
        eStretchY = 8, ///< becomes higher
    };

    explicit MemoryDlg(const KorString& name) : m_name(name) {}

    /// Binds the window whose controls the numbers mean. The window is not owned.
    void setWindow(QWidget* window);

    /// Says how the control of that number follows the window (a sum of EAnchor values). Stretching is
    /// taken over at once, or when the window is bound; moving is what the layout's spacers do. A number
    /// without a control is ignored. Splitters among the registered controls are remembered.
    void registerControl(int controlId, int flags);

    /// Brings the window to its remembered place, size and splitter positions, and returns true. A place that
    /// is on no screen any more is moved onto one. Returns false when nothing is remembered: the window keeps
    /// its size, as far as its screen has room for it and its frame.
    bool restore();
    /// Stores place, size and splitter positions.
    void writeSetting() const;

private:
    struct Control {
        int id;
        int flags;
    };

    void apply(const Control& control) const;
    void fitToScreen() const;

    KorString m_name;
    QPointer<QWidget> m_window;
    std::vector<Control> m_controls;
};
