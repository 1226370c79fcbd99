#pragma once

#include "model/items/KorDSMDatabaseItem.h"
#include "records/RowRef.h"

#include <QObject>

class KorDSMDataStructure;
struct Column;
class QAction;
class QMenu;
class QWidget;
class TreeSelection;
class UsageViews;
class WindowRefresh;

/// What can be done in the trees beside the commands of the strip: groups and categories are made and
/// renamed, and records that others use are renamed, copied for one user alone, and deleted where nobody uses
/// them.
class RecordMenu : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object; `window` is the one that asks and has the key of renaming.
    RecordMenu(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
               WindowRefresh& refresh, UsageViews& usages);
    ~RecordMenu() override;

    /// Adds what can be done with the item, where its source may be changed.
    void addTo(QMenu& menu, KorDSMDatabaseItem& item);
    /// Deletes what is selected, where the strip's command does not.
    void removeSelected();

private:
    void follow();
    void addMakers(QMenu& menu, KorDSMDatabaseItem& item);
    void makeFor(KorDSMDatabaseItem& item, const Column& column);
    void makeGroup(KorDSMDatabaseItem& item);
    void makeGroupHere();
    void rename();
    void followCopy(KorDSMDatabaseItem* item);
    void copy();
    void copyInstead(RowRef shared);
    void remove(const std::vector<KorDSMDatabaseItem*>& items);
    KorString askName(int itemType, const KorString& initial, bool proposes);

    QWidget& m_window;
    KorDSMDataStructure& m_structure;
    TreeSelection& m_selection;
    WindowRefresh& m_refresh;
    UsageViews& m_usages;
    QAction* m_rename;   // where the strip's command cannot rename
    QAction* m_copy;     // the same
    QAction* m_newGroup; // has the key of new definitions where none can be made
};
