#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <QObject>

class ApplyState;
class QMenu;
class QWidget;

/// The command of a source that removes the parts whose record does not exist.
class CompactCommand : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the object; `window` is the one that asks.
    CompactCommand(QWidget& window, ApplyState& applyState) : m_window(window), m_applyState(applyState) {}

    /// Adds the command where the item has it.
    void addTo(QMenu& menu, const KorDSMDatabaseItem& item);

private:
    void compact(SourceId source);

    QWidget& m_window;
    ApplyState& m_applyState;
};
