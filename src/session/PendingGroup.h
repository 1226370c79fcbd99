#pragma once

#include "data/StyleDatabases.h"

/// The writes of one command: one step of undo. Commands don't run inside one another.
class PendingGroup {
public:
    /// `label` says in the undo menu what the command did.
    explicit PendingGroup(const KorString& label) : m_before(pending().steps().size()) {
        pending().beginGroup(label);
    }
    ~PendingGroup() {
        if (m_open)
            pending().endGroup();
    }
    PendingGroup(const PendingGroup&) = delete;
    PendingGroup& operator=(const PendingGroup&) = delete;

    /// Takes back what was written so far, without a trace, and ends the group.
    void takeBack() {
        pending().endGroup();
        m_open = false;
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
