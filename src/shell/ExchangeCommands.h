#pragma once

#include "session/KorDSMImport.h"

#include <QString>

class CommandStrip;
class KorDSMDataStructure;
class QWidget;
class TreeSelection;
class WindowRefresh;

/// Export and import of detail styles.
class ExchangeCommands {
public:
    /// Gives the commands of `strip` their actions. All must outlive the object; `window` is the one that
    /// asks.
    ExchangeCommands(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
                     WindowRefresh& refresh, CommandStrip& strip);

private:
    void exportStyles();
    QString askFile(const std::vector<KorDSMDatabaseItem*>& items);
    void importStyles();
    void bring(const KorDSMImport& import, const KorDSMDeepCopy::Wish& wish);
    std::vector<KorDSMDatabaseItem*> itemsOf(const std::vector<KorDSMRowChange>& changes);

    QWidget& m_window;
    KorDSMDataStructure& m_structure;
    TreeSelection& m_selection;
    WindowRefresh& m_refresh;
};
