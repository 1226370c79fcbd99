#pragma once

#include "base/KorString.h"

#include <QDialog>

#include <filesystem>

class QTextBrowser;
class QToolBar;

/// Shows help pages beside the editor. One window serves all topics; links lead from page to page, and the
/// tools back, forward and to the first one. A modal dialog that asks for help has it in front of itself as
/// long as it is open; then the help is behind it again where it was before.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent);

    /// Shows a page, from the named place on, in the help window of the active window, opening it when
    /// needed.
    static void show(const std::filesystem::path& page, const KorString& place);

    void done(int result) override;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void moveTo(QWidget* parent);
    QToolBar* makeTools();

    QTextBrowser* m_browser;
    bool m_wasVisible = false; ///< before a modal dialog had it
};
