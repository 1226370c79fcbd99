#pragma once

#include "controls/KorTreeModel.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/RowRef.h"

#include <optional>
#include <vector>

class CommandStrip;
class KorDSMDataStructure;
class QWidget;
class RightSide;
class TreeSelection;
class UsageViews;
class WindowRefresh;

/// The commands that change which definitions exist, what they are called and where they are filed.
class DefinitionCommands {
public:
    /// Gives the commands of `strip` their actions. All must outlive the object; `window` is the one that
    /// asks.
    DefinitionCommands(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
                       RightSide& rightSide, WindowRefresh& refresh, UsageViews& usages, CommandStrip& strip);

    /// Files the record of one entry under the group of another one.
    void drop(KorTreeHandle from, KorTreeHandle to);

private:
    void makeNew();
    void copy();
    void copyEach(const std::vector<KorDSMDatabaseItem*>& items);
    void rename();
    void remove();
    /// What only the items use and the user wants to be deleted with them; nothing where they are to stay.

    QWidget& m_window;
    KorDSMDataStructure& m_structure;
    TreeSelection& m_selection;
    RightSide& m_rightSide;
    WindowRefresh& m_refresh;
    UsageViews& m_usages;
};
