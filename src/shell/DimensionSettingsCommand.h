#pragma once

#include "records/KorDSNDefinitions.h"

#include <QObject>

class CommandStrip;
class KorDSMDatabaseItem;
class QMenu;
class QWidget;
class RightSide;
class TreeSelection;

/// What new dimensions and titles of the selected source start from, in a dialog.
class DimensionSettingsCommand : public QObject {
    Q_OBJECT

public:
    /// Gives the strip's command its action. All must outlive the object.
    DimensionSettingsCommand(QWidget& window, TreeSelection& selection, RightSide& rightSide,
                             CommandStrip& strip);

    /// The entry of the context menu in a source that can only be looked at, where the strip's command is
    /// off.
    void addTo(QMenu& menu, KorDSMDatabaseItem& item);

private:
    void open(SourceId source);

    QWidget& m_window;
    TreeSelection& m_selection;
    RightSide& m_rightSide;
};
