#pragma once

class ApplyState;
class CommandStrip;
class QWidget;
class TreeSelection;
class WindowRefresh;

/// Export and import of detail styles.
class ExchangeCommands {
public:
    /// Gives the commands of `strip` their actions. All must outlive the object; `window` is the one that
    /// asks.
    ExchangeCommands(QWidget& window, TreeSelection& selection, ApplyState& applyState,
                     WindowRefresh& refresh, CommandStrip& strip);

private:
    void exportStyle();
    void importStyles();

    QWidget& m_window;
    TreeSelection& m_selection;
    ApplyState& m_applyState;
    WindowRefresh& m_refresh;
};
