#pragma once

#include <QDialog>

#include <filesystem>

class QTextBrowser;
class QToolBar;

/// Shows help pages beside the editor. One window serves all topics; links lead from page to page, and the
/// tools back, forward and to the first one.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent);

    /// Shows a page in the help window of the active window, opening it when needed.
    static void show(const std::filesystem::path& page);

private:
    QToolBar* makeTools();

    QTextBrowser* m_browser;
};
