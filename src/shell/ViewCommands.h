#pragma once

#include "session/KorDSMStyleViews.h"

#include <QObject>

class Navigation;
class QMenu;
class QWidget;
class SectionViews;
class WindowRefresh;

/// Which views a detail style has: commands of the context menu.
class ViewCommands : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object; `window` is the one that asks.
    ViewCommands(QWidget& window, SectionViews& sections, Navigation& navigation, WindowRefresh& refresh);

    /// Adds the commands that the item has, if it has any.
    void addTo(QMenu& menu, KorDSMDatabaseItem& item);

private:
    bool hasRoom(KorDSMDatabaseItem& item);
    void addChosen(KorDSMDatabaseItem& item);
    void add(KorDSMDatabaseItem& item, const KorDSMViewList::Wish& wish);
    void addNew(KorDSMDatabaseItem& item);
    static int placeBehind(KorDSMDatabaseItem& item);
    void show(KorDSMDatabaseItem& item, const std::vector<KorDSMRowChange>& changes, int place);

    QWidget& m_window;
    SectionViews& m_sections;
    Navigation& m_navigation;
    WindowRefresh& m_refresh;
};
