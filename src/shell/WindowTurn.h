#pragma once

#include <functional>

class KorMessageTarget;
class QWidget;

/// The turn of one editor window. An item has one entry, so of several windows one at a time shows the data
/// structure: the one that was used last.
class WindowTurn {
public:
    /// What a window does when its turn ends, and when it comes.
    struct Calls {
        std::function<void()> letGo;
        std::function<void()> show;
    };
    /// `window` is the one that asks about shared records, `target` the one that gets the messages; both must
    /// outlive the object.
    WindowTurn(QWidget& window, KorMessageTarget& target, Calls calls)
        : m_window(window), m_target(target), m_calls(std::move(calls)) {}
    WindowTurn(const WindowTurn&) = delete;
    WindowTurn& operator=(const WindowTurn&) = delete;
    ~WindowTurn();

    /// The window that shows the data structure, if any, lets go of it: whoever loads or frees its items
    /// calls this before. The window has it again when it is activated.
    static void releaseDataStructure();

    /// Takes the turn, without showing anything yet.
    void begin();
    /// Takes the turn and shows the data structure; nothing happens when it is this window's already.
    void take();
    /// The window is left: the one that was open before has its turn.
    void end();
    bool isMine() const;

private:
    void letGo();

    QWidget& m_window;
    KorMessageTarget& m_target;
    Calls m_calls;
};
