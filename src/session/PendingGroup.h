#pragma once

#include "data/StyleDatabases.h"

#include <utility>

/// The writes of one command: one step of undo. Commands don't run inside one another.
class PendingGroup {
public:
    /// `label` says in the undo menu what the command did.
    explicit PendingGroup(const KorString& label) : m_before(pending().steps().size()) {
        pending().beginGroup(label);
    }
    ~PendingGroup() { close(); }
    PendingGroup(const PendingGroup&) = delete;
    PendingGroup& operator=(const PendingGroup&) = delete;

    /// How many steps stood before it.
    std::size_t begin() const { return m_before; }

    /// Ends the group before its time.
    void close() {
        if (std::exchange(m_open, false))
            pending().endGroup();
    }
    /// Takes back what was written so far, without a trace, and ends the group. After `close` only while
    /// nothing else was written.
    void takeBack() {
        close();
        if (pending().steps().size() == m_before)
            return;
        StyleDatabases::current().undo();
        pending().forgetTakenBack();
    }

private:
    static PendingLog& pending() { return StyleDatabases::current().pending(); }

    std::size_t m_before;
    bool m_open = true;
};
