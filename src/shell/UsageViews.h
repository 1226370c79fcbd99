#pragma once

#include "session/KorDSMWhereUsed.h"

#include <QObject>

class KorDSMDataStructure;
class KorDSMDatabaseItem;
class Navigation;
class QMenu;
class QWidget;

/// Where records are used, and the way to their users.
class UsageViews : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object; `window` is the one that asks.
    UsageViews(QWidget& window, KorDSMDataStructure& structure, Navigation& navigation);

    /// Says that these users forbid a command, and goes to the one that is chosen.
    void tellOf(const std::vector<KorDSMUsage>& users);
    /// Adds the command that lists the item's users, where the item has a record.
    void addTo(QMenu& menu, KorDSMDatabaseItem& item);

private:
    void list(const KorDSMDatabaseItem& item);
    void goTo(const KorDSMUsage& usage);

    QWidget& m_window;
    KorDSMDataStructure& m_structure;
    Navigation& m_navigation;
};
