#pragma once

class ApplyState;
class QWidget;
class TreeSelection;
class WindowRefresh;

/// Export and import of detail styles.
class ExchangeCommands {
public:
    /// All must outlive the object; `window` is the one that asks.
    ExchangeCommands(QWidget& window, TreeSelection& selection, ApplyState& applyState,
                     WindowRefresh& refresh)
        : m_window(window), m_selection(selection), m_applyState(applyState), m_refresh(refresh) {}

    void exportStyle();
    void importStyles();

private:
    QWidget& m_window;
    TreeSelection& m_selection;
    ApplyState& m_applyState;
    WindowRefresh& m_refresh;
};
