#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <QObject>

#include <set>

class DataFolder;
class QMenu;
class QWidget;
class Reports;
class ServerWatch;
class WindowRefresh;

/// Where the databases are: the command of sources that asks for it, and the passwords of servers that want
/// one.
class SourcesCommand : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object; `window` is the one that asks.
    SourcesCommand(QWidget& window, WindowRefresh& refresh, Reports& reports, ServerWatch& servers)
        : m_window(window), m_refresh(refresh), m_reports(reports), m_servers(servers) {}

    /// Adds the command where the item is a source.
    void addTo(QMenu& menu, const KorDSMDatabaseItem& item);
    /// Asks where the databases are.
    void choose();
    /// Opens those of the databases that were moved anew of which nothing is pending any more.
    void follow();
    /// Asks for the password of each source that was refused, until it is right or the user gives up.
    static void askForPasswords(DataFolder& folder, QWidget* parent);

private:
    QWidget& m_window;
    WindowRefresh& m_refresh;
    Reports& m_reports;
    ServerWatch& m_servers;
    std::set<SourceId> m_moved; ///< and are not open where they are by now
};
