#pragma once

#include <QTimer>

#include <functional>

class Reports;
class StatusLine;

/// Looks at databases on servers while a window is open: what others stored is shown, and who they are. Does
/// nothing where no source is on one.
class ServerWatch : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object. `mayShow` says whether the window can show other data now.
    ServerWatch(Reports& reports, StatusLine& status, std::function<bool()> mayShow);

    /// Begins to look, now and then.
    void begin();
    /// Looks now.
    void look();

private:
    void lookSoon();

    Reports& m_reports;
    StatusLine& m_status;
    std::function<bool()> m_mayShow;
    QTimer m_timer;
    bool m_waits = false; ///< for the user to leave what is being edited
};
