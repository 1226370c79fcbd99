#pragma once

#include "base/KorString.h"

class KorElidedLabel;
class QLabel;
class QProgressBar;
class QWidget;
struct DsmProgress;

/// The line at the bottom of the window: what is selected and why it cannot be changed, the progress of
/// longer work, which database is waited for, and who else works on it.
class StatusLine {
public:
    /// Fills the line of the window's template. The window owns what is added.
    explicit StatusLine(QWidget& window);

    /// `note` says in a few words that nothing can be changed, `reason` why, where there is more to say. What
    /// is too long for the line can be read in a tooltip.
    void show(const KorString& status, const KorString& note, const KorString& reason);
    /// Says something else until the next status comes.
    void say(const KorString& text);
    /// Says who else is there, which server gives no answer, and what waits; each may be empty.
    void showServers(const KorString& colleagues, const KorString& trouble, const KorString& waits);
    /// Shows progress in place of the status; paints at once, while what the user does waits.
    void showProgress(const DsmProgress& progress);

private:
    KorElidedLabel* m_status;
    KorElidedLabel* m_readOnly;
    KorElidedLabel* m_servers;
    QLabel* m_progressText;
    QProgressBar* m_progress;
};
