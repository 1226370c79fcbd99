#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <string>

class KorElidedLabel;
class QBoxLayout;
class QPushButton;
class QWidget;

/// Tells in a window's status line which database is waited for, because another program has locked it, and
/// lets the user give up by Esc or a button; nothing else can be touched meanwhile. It is asked as long as it
/// lives. Where the window is not shown, whoever was to be asked before is.
class LockNotice : public QObject {
    Q_OBJECT

public:
    /// Numbers of the controls.
    static constexpr int kSentence = 1215;
    static constexpr int kGiveUp = 1216;

    /// `line` is the layout of the status line; its widget owns what is added, and the notice.
    explicit LockNotice(QBoxLayout* line);
    ~LockNotice() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Notices;

    static bool ask(const std::string& file, std::chrono::milliseconds waited);
    bool goOn(const std::string& file, std::chrono::milliseconds waited);
    void show(const std::string& file);
    void hide();
    void showCursor(bool waits);

    Notices& m_notices;
    QWidget* m_bar;
    KorElidedLabel* m_sentence;
    QPushButton* m_giveUp;
    QTimer m_end; ///< nobody tells that the wait is over: what comes next in the event loop does
    bool m_givenUp = false;
    bool m_showsCursor = false;
};
