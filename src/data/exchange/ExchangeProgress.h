#pragma once

#include "data/exchange/ExchangeReport.h"

/// Tells the installed callbacks of one exchange, from its construction to its destruction.
class ExchangeProgress {
public:
    ExchangeProgress(const ExchangeCallbacks& callbacks, std::size_t steps, const KorString& name)
        : m_callbacks(callbacks) {
        if (m_callbacks.start)
            m_callbacks.start(static_cast<int>(steps), name);
    }
    ~ExchangeProgress() {
        if (m_callbacks.end)
            m_callbacks.end();
    }
    ExchangeProgress(const ExchangeProgress&) = delete;
    ExchangeProgress& operator=(const ExchangeProgress&) = delete;

    /// One more step is done. Returns false when the user has cancelled.
    bool step() {
        ++m_done;
        if (m_callbacks.step)
            m_callbacks.step(m_done);
        return !m_callbacks.isCancelled || !m_callbacks.isCancelled();
    }
    void message(const KorString& text) const {
        if (m_callbacks.message)
            m_callbacks.message(text);
    }

private:
    const ExchangeCallbacks& m_callbacks;
    int m_done = 0;
};
