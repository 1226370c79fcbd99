#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <QObject>

class DataFolder;
class QMenu;
class QWidget;

/// Where the databases are: the command of sources that asks for it, and the passwords of servers that want
/// one.
class SourcesCommand : public QObject {
    Q_OBJECT

public:
    /// `window` is the one that asks, and must outlive the object.
    explicit SourcesCommand(QWidget& window) : m_window(window) {}

    /// Adds the command where the item is a source.
    void addTo(QMenu& menu, const KorDSMDatabaseItem& item);
    /// Asks for the password of each source that was refused, until it is right or the user gives up.
    static void askForPasswords(DataFolder& folder);

private:
    QWidget& m_window;
};
