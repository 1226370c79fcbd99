#include "data/store/odbc/OdbcConnection.h"

#include "data/store/odbc/OdbcLine.h"

#include <utility>

namespace {

// Most answers come at once; a word and a way to give up are for the others.
constexpr std::chrono::milliseconds kAtOnce{40};
constexpr std::chrono::milliseconds kGlance{200};
constexpr std::chrono::milliseconds kFarewell{1000};

} // namespace

OdbcConnection::OdbcConnection(const std::string& name, OdbcLimits limits)
    : m_name(name), m_login(name, limits.login), m_wait(name, limits.statement), m_limits(limits) {}

OdbcConnection::~OdbcConnection() {
    close();
}

// A line that answers is ended before this returns; the thread of another one ends when the answer comes, or
// with the program.
void OdbcConnection::close() {
    m_isInTransaction = false;
    if (!m_line)
        return;
    const auto line = std::exchange(m_line, nullptr);
    std::unique_lock lock(line->mutex);
    line->isLeft = true;
    line->changed.notify_all();
    if (!line->job)
        line->changed.wait_for(lock, kFarewell, [&] { return line->isEnded; });
    const bool isEnded = line->isEnded;
    lock.unlock();
    isEnded ? m_thread.join() : m_thread.detach();
}

bool OdbcConnection::isDone(std::chrono::milliseconds moment) const {
    std::unique_lock lock(m_line->mutex);
    return m_line->changed.wait_for(lock, moment, [&] { return !m_line->job; });
}

OdbcError OdbcConnection::run(const Job& job, bool keepsWaiting) {
    const auto wait = [&](LockWait& patience) {
        bool isAnswered = isDone(kAtOnce);
        for (int attempt = 0; !isAnswered && patience.again(attempt); ++attempt)
            isAnswered = isDone(std::chrono::milliseconds(0));
        return isAnswered || isDone(std::chrono::milliseconds(0));
    };
    if (!m_line)
        return {OdbcError::eKind::kLost};
    LockWait& patience = m_engine.empty() ? m_login : m_wait;
    const bool wasIdle = isDone(std::chrono::milliseconds(0));
    if (!wasIdle && (keepsWaiting || !wait(patience))) {
        if (!keepsWaiting)
            close();
        return {keepsWaiting ? OdbcError::eKind::kBusy : OdbcError::eKind::kFrozen};
    }
    {
        const std::lock_guard lock(m_line->mutex);
        m_line->job = job;
        m_line->changed.notify_all();
    }
    if (keepsWaiting ? isDone(kGlance) : wait(patience)) {
        if (m_line->result.isLineGone()) {
            OdbcError lost = std::move(m_line->result);
            close();
            return lost;
        }
        return m_line->result;
    }
    if (keepsWaiting)
        return {OdbcError::eKind::kBusy};
    close();
    return {OdbcError::eKind::kFrozen};
}

OdbcError OdbcConnection::open(const std::string& text) {
    close();
    m_engine.clear();
    m_login = LockWait(m_name, m_limits.login);
    m_wait = LockWait(m_name, m_limits.statement);
    const OdbcLibrary* library = OdbcLibrary::instance();
    if (!library)
        return {OdbcError::eKind::kNoManager};
    m_line = std::make_shared<OdbcLine>(*library);
    m_thread = std::thread([line = m_line] { OdbcLine::serve(line); });
    const auto limit = std::chrono::duration_cast<std::chrono::seconds>(m_limits.login);
    OdbcError error = run([=](OdbcLine& line) { return line.connect(text, limit); });
    if (error) {
        close();
        return error;
    }
    m_engine = m_line->engine;
    m_quote = m_line->quote;
    return {};
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

OdbcError OdbcConnection::glance(const std::string& sql, OdbcRows& rows) {
    OdbcError error = run([=](OdbcLine& line) { return line.query(sql); }, true);
    rows = error ? OdbcRows() : std::move(m_line->found);
    return error;
}

OdbcError OdbcConnection::select(const std::string& sql, const std::vector<std::size_t>& rooms) {
    return run([=](OdbcLine& line) { return line.select(sql, rooms); });
}

OdbcError OdbcConnection::fetch() {
    return run([](OdbcLine& line) { return line.fetch(); });
}

const OdbcBlock& OdbcConnection::block() const {
    static const OdbcBlock none;
    return m_line ? m_line->block : none;
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
