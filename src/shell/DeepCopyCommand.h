#pragma once

#include "controls/KorTreeModel.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/RowRef.h"

#include <QObject>

#include <vector>

class CommandStrip;
class KorDSMDataStructure;
class QAction;
class QMenu;
class QWidget;
class TreeSelection;
class WindowRefresh;

/// Copies records with all that they use from one source into another. On a node of a source that may be
/// changed it asks what is to come there; records of a source that is only read it offers to copy, also by
/// the key that copies elsewhere.
class DeepCopyCommand : public QObject {
    Q_OBJECT

public:
    /// Gives the strip's command its action. All must outlive the object.
    DeepCopyCommand(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
                    WindowRefresh& refresh, CommandStrip& strip);

    /// The entry of the context menu, where there is something to copy.
    void addTo(QMenu& menu, KorDSMDatabaseItem& item);
    /// An entry was dropped on another one. Copies where that lies in another source; returns whether it
    /// does.
    bool drop(KorTreeHandle from, KorTreeHandle to);

private:
    void bringInto();
    void copyOut();
    void copyHere(KorDSMDatabaseItem& item);
    void follow();
    void run(class KorDSMDialogDeepCopy& dialog);
    std::vector<RowRef> selectedRecords();

    QWidget& m_window;
    KorDSMDataStructure& m_structure;
    TreeSelection& m_selection;
    WindowRefresh& m_refresh;
    QAction* m_copyOut; // has the key of the usual copy where that is not possible
    QAction* m_bringIn;
};
