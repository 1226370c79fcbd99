#pragma once

#include "app/Commands.h"
#include "app/RunningEditor.h"

#include <QWidget>

#include <deque>
#include <memory>

/// Opens the file that is to be shown beside the others, and remembers what is to be selected in the window:
/// the style that is named, or the file's first. Complains of what cannot be shown and returns an exit code.
eExitCode selectStart(EditOptions options);

/// What comes to the program's window while it is open: files that are dropped on it, and what other starts
/// of the program were to show. It is done when nothing else asks for an answer.
class OpenWindow : public QObject {
public:
    /// `window` must outlive the object. What `running` keeps is shown when the window is.
    OpenWindow(QWidget& window, std::unique_ptr<RunningEditor> running);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void take(const OpenRequest& request);
    void showNext();
    void show(const OpenRequest& request);

    QWidget& m_window;
    std::deque<OpenRequest> m_waiting;
    std::unique_ptr<RunningEditor> m_running;
};
