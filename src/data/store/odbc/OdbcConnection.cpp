#include "data/store/odbc/OdbcConnection.h"

#include "base/EditorSession.h"
#include "data/store/odbc/OdbcLine.h"

#include <algorithm>

#include <utility>

namespace {

// Most answers come at once. For the others events go on, and after a while there is a word, and a way to
// give up.
constexpr std::chrono::milliseconds kAtOnce{40};

/// Lines that take long to end: a server that is gone says no farewell. The session waits a moment for them,
/// since what they use ends with the program.
class Farewells {
public:
    ~Farewells() {
        constexpr std::chrono::milliseconds kLongest{1000};
        const auto end = std::chrono::steady_clock::now() + kLongest;
        for (auto& [line, thread] : m_all) {
            std::unique_lock lock(line->mutex);
            const bool isEnded = line->changed.wait_until(lock, end, [&] { return line->isEnded; });
            lock.unlock();
            isEnded ? thread.join() : thread.detach();
        }
    }
    void add(std::shared_ptr<OdbcLine> line, std::thread thread) {
        std::erase_if(m_all, [](auto& each) { return hasEnded(each); });
        m_all.emplace_back(std::move(line), std::move(thread));
    }

private:
    using Leaving = std::pair<std::shared_ptr<OdbcLine>, std::thread>;

    static bool hasEnded(Leaving& leaving) {
        std::unique_lock lock(leaving.first->mutex);
        const bool isEnded = leaving.first->isEnded;
        lock.unlock();
        if (isEnded)
            leaving.second.join();
        return isEnded;
    }

    std::vector<Leaving> m_all;
};

} // namespace

OdbcConnection::OdbcConnection(const std::string& name, OdbcLimits limits)
    : m_name(name), m_login(name, limits.login, kAtOnce), m_wait(name, limits.statement, kAtOnce),
      m_limits(limits) {}

OdbcConnection::~OdbcConnection() {
    close();
    leave(std::exchange(m_next, {}));
}

OdbcConnection::Served OdbcConnection::serve(const OdbcLibrary& library, Job job) {
    Served served{std::make_shared<OdbcLine>(library), {}};
    served.line->job = std::move(job);
    served.thread = std::thread([line = served.line] { OdbcLine::serve(line); });
    return served;
}

// A line that answers is mostly ended before this returns; the thread of another one ends when the answer
// comes, or with the program.
void OdbcConnection::leave(Served served) {
    if (!served.line)
        return;
    std::unique_lock lock(served.line->mutex);
    served.line->isLeft = true;
    served.line->changed.notify_all();
    const bool isAtWork = bool(served.line->job);
    if (!isAtWork)
        served.line->changed.wait_for(lock, kAtOnce, [&] { return served.line->isEnded; });
    const bool isEnded = served.line->isEnded;
    lock.unlock();
    if (isEnded)
        served.thread.join();
    else if (isAtWork)
        served.thread.detach();
    else
        EditorSession::currentPart<Farewells>().add(std::move(served.line), std::move(served.thread));
}

void OdbcConnection::close() {
    m_isInTransaction = m_isAsking = m_isFetching = false;
    m_line = nullptr;
    leave(std::exchange(m_served, {}));
}

bool OdbcConnection::isDone(OdbcLine& line, std::chrono::milliseconds moment) {
    std::unique_lock lock(line.mutex);
    return line.changed.wait_for(lock, moment, [&] { return !line.job; });
}

void OdbcConnection::give(OdbcLine& line, Job job) {
    const std::lock_guard lock(line.mutex);
    line.job = std::move(job);
    line.changed.notify_all();
}

// Many short waits, one after the other, are a long one.
bool OdbcConnection::waitFor(OdbcLine& line, LockWait& patience) {
    constexpr std::chrono::milliseconds kPause{200}; // between two pieces of work
    auto now = std::chrono::steady_clock::now();
    if (now - m_answered > kPause)
        m_turned = now;
    bool isAnswered = isDone(line, kAtOnce);
    now = m_answered = std::chrono::steady_clock::now();
    if (isAnswered && now - m_turned >= kAtOnce) {
        m_turned = now;
        patience.turn();
    }
    for (int attempt = 0; !isAnswered && patience.again(attempt); ++attempt)
        isAnswered = isDone(line, std::chrono::milliseconds(0));
    return isAnswered || isDone(line, std::chrono::milliseconds(0));
}

// What came of waiting for a line. Events that ran meanwhile may have closed it.
OdbcError OdbcConnection::answerOf(const std::shared_ptr<OdbcLine>& line, bool isAnswered) {
    if (m_line != line)
        return {OdbcError::eKind::kLost};
    OdbcError error = isAnswered ? line->result : OdbcError{OdbcError::eKind::kFrozen};
    if (error.isLineGone())
        close();
    return error;
}

OdbcError OdbcConnection::run(Job job) {
    if (!m_line)
        return {OdbcError::eKind::kLost};
    LockWait& patience = m_engine.empty() ? m_login : m_wait;
    m_isAsking = m_isFetching = false;
    const std::shared_ptr<OdbcLine> line = m_line;
    bool isAnswered = waitFor(*line, patience);
    if (isAnswered && m_line == line) {
        give(*line, std::move(job));
        isAnswered = waitFor(*line, patience);
    }
    return answerOf(line, isAnswered);
}

OdbcConnection::Job OdbcConnection::connecting(const std::string& text) const {
    const auto limit = std::chrono::duration_cast<std::chrono::seconds>(m_limits.login);
    return [=](OdbcLine& line) { return line.connect(text, limit); };
}

OdbcError OdbcConnection::open(const std::string& text) {
    close();
    if (!m_next.line && (m_login.wasDeclined() || m_wait.wasDeclined()))
        return {OdbcError::eKind::kFrozen}; // who gives a wait up does not want the next one
    m_engine.clear();
    m_login = LockWait(m_name, m_limits.login, kAtOnce);
    m_wait = LockWait(m_name, m_limits.statement, kAtOnce);
    const OdbcLibrary* library = OdbcLibrary::instance();
    if (!library)
        return {OdbcError::eKind::kNoManager};
    m_served = m_next.line ? std::exchange(m_next, {}) : serve(*library, connecting(text));
    const std::shared_ptr<OdbcLine> line = m_line = m_served.line;
    const bool isAnswered = waitFor(*line, m_login);
    if (OdbcError error = answerOf(line, isAnswered)) {
        if (m_line == line)
            close();
        return error;
    }
    ++m_number;
    m_engine = m_line->engine;
    m_quote = m_line->quote;
    return {};
}

OdbcError OdbcConnection::prepare(const std::string& text) {
    const OdbcLibrary* library = OdbcLibrary::instance();
    if (!library)
        return {OdbcError::eKind::kNoManager};
    const auto now = std::chrono::steady_clock::now();
    if (!m_next.line) {
        if (now < m_nextTry)
            return {OdbcError::eKind::kBusy};
        m_next = serve(*library, connecting(text));
        m_nextTry = now + m_limits.retry;
    }
    if (!isDone(*m_next.line, std::chrono::milliseconds(0)))
        return {OdbcError::eKind::kBusy};
    OdbcError error = m_next.line->result;
    if (error)
        leave(std::exchange(m_next, {}));
    return error;
}

OdbcError OdbcConnection::begin() {
    OdbcError error = run([](OdbcLine& line) { return line.setTransactions(true); });
    m_isInTransaction = !error;
    return error;
}

OdbcError OdbcConnection::end(bool keep) {
    m_isInTransaction = false;
    OdbcError error = run([=](OdbcLine& line) { return line.end(keep); });
    if (error)
        close();
    return error;
}

OdbcError OdbcConnection::execute(const std::string& sql, std::int64_t* rows) {
    OdbcError error = run([=](OdbcLine& line) { return line.execute(sql); });
    if (rows)
        *rows = error ? -1 : m_line->rows;
    return error;
}

OdbcError OdbcConnection::query(const std::string& sql, OdbcRows& rows) {
    OdbcError error = run([=](OdbcLine& line) { return line.query(sql); });
    rows = error ? OdbcRows() : std::move(m_line->found);
    return error;
}

void OdbcConnection::ask(const std::string& sql) {
    if (!m_line || !isDone(*m_line, std::chrono::milliseconds(0)))
        return;
    give(*m_line, [=](OdbcLine& line) { return line.query(sql); });
    m_isAsking = true;
}

OdbcError OdbcConnection::answer(OdbcRows& rows) {
    if (!m_isAsking || !isDone(*m_line, std::chrono::milliseconds(0)))
        return {OdbcError::eKind::kBusy};
    m_isAsking = false;
    OdbcError error = std::move(m_line->result);
    rows = error ? OdbcRows() : std::move(m_line->found);
    if (error.isLineGone())
        close();
    return error;
}

OdbcError OdbcConnection::select(const std::string& sql, const std::vector<std::size_t>& rooms) {
    return run([=](OdbcLine& line) { return line.select(sql, rooms); });
}

// While the caller works on some rows the next ones are fetched.
OdbcError OdbcConnection::fetch() {
    const auto next = [](OdbcLine& line) { return line.fetch(); };
    if (!m_line)
        return {OdbcError::eKind::kLost};
    if (!std::exchange(m_isFetching, false))
        give(*m_line, next);
    const std::shared_ptr<OdbcLine> line = m_line;
    const bool isAnswered = waitFor(*line, m_wait);
    if (OdbcError error = answerOf(line, isAnswered))
        return error;
    std::swap(m_block, line->block);
    m_isFetching = m_block.size() > 0;
    if (m_isFetching)
        give(*line, next);
    return {};
}

std::int64_t OdbcConnection::expectedRows() const {
    return m_line ? m_line->rows : -1;
}

void OdbcConnection::endSelect() {
    if (m_line)
        static_cast<void>(run([](OdbcLine& line) {
            line.endSelect();
            return OdbcError();
        }));
}
