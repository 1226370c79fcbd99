#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

/// Waiting for a database that another program has locked, or for a server: a short while without asking,
/// then asking, until there is an answer, the user gives up or the time is over. Whoever gave up once does
/// not wait again for the same database in the same command.
class LockWait {
public:
    /// Called again and again while it, by its name, is waited for; returns whether to go on waiting. It may
    /// run an event loop, but must not use the databases.
    using Ask = std::function<bool(const std::string& name, std::chrono::milliseconds waited)>;

    using Clock = std::chrono::steady_clock;
    using Now = std::function<Clock::time_point()>;

    static constexpr std::chrono::milliseconds kLimit{5000};
    static constexpr std::chrono::milliseconds kWordless{250}; ///< another program's short write

    /// `limit` is the longest wait where it is not the common one, `unasked` how long nobody is asked.
    explicit LockWait(std::string file, std::optional<std::chrono::milliseconds> limit = {},
                      std::chrono::milliseconds unasked = kWordless)
        : m_file(std::move(file)), m_limit(limit), m_unasked(unasked) {}

    /// What is asked in the current session; an empty one waits without a word. Returns the one before.
    static Ask setAsk(Ask ask);
    /// The longest wait. Returns the one before.
    static std::chrono::milliseconds setLimit(std::chrono::milliseconds limit);
    /// What time it is, for the waits of the current session; an empty one takes the clock's. Returns the one
    /// before.
    static Now setNow(Now now);
    /// Whether a database is being waited for, so that nothing else may use the databases.
    static bool isWaiting();

    /// The user began something new, for which a database is worth waiting for again. Without anybody who
    /// says so it is after the longest wait.
    static void nextCommand();

    /// While one lives, waiting ends before a word would be due: for looks that are repeated soon.
    class Brief {
    public:
        Brief();
        ~Brief();
        Brief(const Brief&) = delete;
        Brief& operator=(const Brief&) = delete;
    };

    /// Lets events go on between the parts of long work on the database.
    void turn();
    /// Waits a moment; `attempt` counts from 0 for each lock. Returns whether to try again.
    bool again(int attempt);
    /// Whether the user gave this one up in the present command.
    bool wasDeclined() const;

private:
    bool goesOn(std::chrono::milliseconds waited);

    std::chrono::milliseconds longest() const;

    std::string m_file;
    std::optional<std::chrono::milliseconds> m_limit;
    std::chrono::milliseconds m_unasked;
    Clock::time_point m_start;
    Clock::time_point m_givenUp;
    int m_givenUpIn = 0; ///< the command, counted from 1
    int m_declinedIn = 0;
};
