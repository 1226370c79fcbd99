#pragma once

#include "support/TempFolder.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

/// A line to the socket of a server, by a socket in a folder of its own, with which something goes wrong at a
/// request of the client's.
class LineProxy {
public:
    enum class eTrouble {
        kNone,
        kCutBefore,    ///< the line breaks before the server gets the request
        kCutAfter,     ///< after the server has answered, before the client gets the answer
        kFreezeBefore, ///< the server does not get the request, and nobody is told
        kFreezeAfter,  ///< the client does not get the answer, and nobody is told
    };

    explicit LineProxy(std::string server);
    ~LineProxy();
    LineProxy(const LineProxy&) = delete;
    LineProxy& operator=(const LineProxy&) = delete;

    const std::filesystem::path& folder() const { return m_folder.path(); }
    /// At the n-th request from now on. Where `stays` new lines are refused from then on.
    void strikeAt(int request, eTrouble trouble, bool stays);
    /// Before a request that holds the text is handed on `action` runs, in another thread, of one line at a
    /// time. What it uses must outlive the object.
    void before(std::string text, std::function<void()> action) {
        const std::scoped_lock lock(m_acting);
        m_text = std::move(text);
        m_action = std::move(action);
    }
    /// How long each request takes longer than without it.
    void setDelay(std::chrono::milliseconds delay) { m_delay = delay; }
    /// How many there were so far.
    int requests() const { return m_requests; }
    bool hasStruck() const { return m_left < 0; }
    /// Tells, also when the line is gone, whether a client waits for an answer that does not come.
    std::function<bool()> frozen() const {
        return [frozen = m_frozen] { return *frozen > 0; };
    }
    /// New lines are good again, and frozen ones break.
    void mend();

private:
    void accept();
    void serve(int client);
    bool answer(int client, int server);
    void actBefore(int client);

    std::string m_server;
    TempFolder m_folder;
    std::mutex m_acting;
    std::string m_text;
    std::function<void()> m_action;
    int m_listener = -1;
    std::atomic<std::chrono::milliseconds> m_delay = std::chrono::milliseconds(0);
    std::atomic<int> m_requests = 0;
    std::atomic<int> m_left = 0; ///< requests until it strikes; -1 afterwards
    std::atomic<eTrouble> m_trouble = eTrouble::kNone;
    std::atomic<bool> m_stays = false;
    std::atomic<int> m_generation = 0; ///< of lines: raised when frozen ones are to break
    std::shared_ptr<std::atomic<int>> m_frozen = std::make_shared<std::atomic<int>>(0);
    std::atomic<bool> m_ends = false;
    std::list<std::thread> m_lines;
    std::thread m_accepting;
};
