#pragma once

#include <QObject>

#include <functional>

class QAction;
class QWidget;

/// What can be done with the preview, as commands of the window: with keys that hold wherever the focus is,
/// and where the search finds them.
class PreviewCommands : public QObject {
    Q_OBJECT

public:
    /// `press` does what the button of the pane with this number does. The commands belong to `window`, which
    /// must outlive the object.
    PreviewCommands(QWidget& window, const std::function<void(int tool)>& press);

    /// Whether there is a drawing to look at, and one of what is stored to be compared with it.
    void setEnabled(bool isShown, bool isComparable);

private:
    QAction* m_comparison = nullptr;
    QList<QAction*> m_actions;
};
