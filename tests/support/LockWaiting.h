#pragma once

#include "data/store/LockWait.h"

#include <utility>

/// How long, and with what word, this process waits for locks while the object lives: at first without a word
/// and hardly at all.
class LockWaiting {
public:
    explicit LockWaiting(std::chrono::milliseconds limit = std::chrono::milliseconds(20),
                         LockWait::Ask ask = {})
        : m_limit(LockWait::setLimit(limit)), m_ask(LockWait::setAsk(std::move(ask))) {}
    LockWaiting(const LockWaiting&) = delete;
    LockWaiting& operator=(const LockWaiting&) = delete;
    ~LockWaiting() {
        LockWait::setLimit(m_limit);
        LockWait::setAsk(std::move(m_ask));
    }

private:
    std::chrono::milliseconds m_limit;
    LockWait::Ask m_ask;
};
