#include "data/store/odbc/OdbcStore.h"

#include "base/KorAssert.h"
#include "base/Translation.h"
#include "data/store/odbc/OdbcTables.h"

#include <random>
#include <utility>

namespace {

std::uint32_t newMark() {
    std::random_device random;
    std::uint32_t mark = 0;
    while (mark == 0)
        mark = static_cast<std::uint32_t>(random());
    return mark;
}

} // namespace

OdbcStore::OdbcStore(ServerAddress address, OdbcLimits limits, const SchemaHistory& history)
    : m_database(std::move(address), limits), m_schema(m_database, history), m_writer(m_database),
      m_log(m_database), m_limits(limits), m_history(history) {}

OdbcStore::~OdbcStore() {
    endRead();
    rollback();
}

OpenedServer OdbcStore::open(const ServerAddress& address, eMode mode, OdbcLimits limits,
                             const SchemaHistory& history) {
    auto store = std::unique_ptr<OdbcStore>(new OdbcStore(address, limits, history));
    Result<> result = store->m_database.connect();
    if (result)
        result = store->look();
    std::optional<std::int64_t> mayWrite = 0;
    if (result && mode == eMode::kWrite)
        result =
            store->m_database.queryInteger(store->m_database.dialect->may(eServerRole::kEditor), mayWrite);
    if (!result)
        return {std::move(result), {}, store->m_database.opened};
    store->m_readOnly = mayWrite.value_or(0) == 0;
    const bool isHindered = mode == eMode::kWrite && store->m_readOnly;
    return {isHindered ? store->m_database.fault(eServerFault::kReadOnly) : Result<>(), std::move(store)};
}

// What the database is now is taken as known.
Result<> OdbcStore::look() {
    OdbcSchema::State state;
    Result<> result = checkState(state);
    if (result)
        know(state.lastChange);
    return result;
}

Result<> OdbcStore::checkState(OdbcSchema::State& state) {
    if (Result<> result = m_schema.read(state); !result)
        return result;
    if (state.version < m_history.current())
        return m_database.fault(eServerFault::kOlder, std::to_string(state.version));
    m_version = state.version;
    m_database.forgetLayouts();
    return {};
}

void OdbcStore::know(std::int64_t lastChange) {
    m_knownChanges = othersChanges(lastChange);
    m_range = {lastChange, lastChange, {}};
    m_news.state = ServerNews::eState::kSame;
    m_whyUnread.clear();
    m_isAnswering = false;
}

bool OdbcStore::isReadOnly() const {
    return !refuseReadOnly();
}

std::string OdbcStore::whyTooNew() const {
    return m_version > m_history.current()
               ? m_database.fault(eServerFault::kNewer, std::to_string(m_version)).error
               : std::string();
}

std::string OdbcStore::whyReadOnly() const {
    return refuseReadOnly().error;
}

Result<> OdbcStore::refuseReadOnly() const {
    if (m_outcome == eOutcome::kUnknown)
        return m_database.fault(eServerFault::kWaitsForOutcome);
    if (m_version > m_history.current())
        return {whyTooNew()};
    return m_readOnly ? m_database.fault(eServerFault::kReadOnly) : Result<>();
}

Result<> OdbcStore::readTable(const TableSchema& table, RowArray& rows, std::vector<ReadProblem>& problems) {
    if (m_database.connection.isInTransaction())
        return readOdbcTable(m_database, table, rows, problems);
    std::int64_t state = 0;
    Result<> result = beginRead(state);
    if (result)
        result = readOdbcTable(m_database, table, rows, problems);
    endRead();
    return result;
}

Result<> OdbcStore::beginRead(std::int64_t& state) {
    OdbcError error;
    m_isReading = !m_database.connection.isInTransaction();
    if (m_isReading)
        error = m_database.connection.begin();
    std::optional<std::int64_t> last;
    Result<> result = m_database.failure(error);
    if (result)
        result = m_database.queryInteger(
            (m_isReading ? m_database.dialect->oneState() : std::string()) + m_schema.lastChangeSql(), last);
    if (!result) {
        endRead();
        return result;
    }
    state = othersChanges(last.value_or(0) - (m_sequence > 0 ? 1 : 0));
    return {};
}

void OdbcStore::endRead() {
    if (std::exchange(m_isReading, false) && m_database.connection.isInTransaction())
        static_cast<void>(m_database.connection.end(false));
}

Result<> OdbcStore::begin() {
    if (m_sequence > 0)
        return {};
    if (Result<> refused = refuseReadOnly(); !refused)
        return refused;
    if (!m_database.connection.isOpen() && !m_whyUnread.empty())
        return {m_whyUnread};
    m_outcome = eOutcome::kNotStored;
    Result<> result = m_database.failure(m_database.connection.begin());
    if (result)
        result = takeTurn();
    if (!result)
        rollback();
    return result;
}

// Others wait from now on until this change is stored or taken back.
Result<> OdbcStore::takeTurn() {
    const std::string raise =
        "UPDATE " + m_database.dialect->table(kStateTable) + " SET last_change = last_change + 1";
    const std::string returning = m_database.dialect->returning("last_change");
    std::optional<std::int64_t> last;
    Result<> result = returning.empty() ? m_database.execute(raise) : Result<>();
    if (result)
        result =
            m_database.queryInteger(returning.empty() ? m_schema.lastChangeSql() : raise + returning, last);
    m_sequence = last.value_or(0);
    m_mark = newMark();
    return result;
}

Result<> OdbcStore::apply(const TableChange& change, std::vector<StoreConflict>& conflicts) {
    if (!KorAssert::check(m_sequence > 0, "changes are applied in a transaction"))
        return m_database.failure({OdbcError::eKind::kOther, translated("no transaction").toStdString()});
    const std::size_t before = conflicts.size();
    Result<> result = m_writer.apply(change, conflicts);
    m_hasConflict |= conflicts.size() > before;
    // Rows that nobody told of are otherwise, so nothing that was read can be relied on.
    if (conflicts.size() > before && othersChanges(m_sequence - 1) == m_knownChanges)
        m_knownChanges = kNothingKnown;
    return result;
}

Result<> OdbcStore::commit() {
    Result<> result;
    if (!KorAssert::check(!m_hasConflict, "what conflicts is not committed"))
        result = m_database.failure(
            {OdbcError::eKind::kOther, translated("a part of the change was not applied").toStdString()});
    if (result)
        result = keep();
    if (!result) {
        rollback();
        return result;
    }
    ++m_ownChanges;
    if (m_sequence == m_range.known + 1)
        m_range.known = m_sequence;
    else
        m_range.own.insert(m_sequence);
    m_sequence = 0;
    m_writer.finish(true);
    return {};
}

// Whether the change is stored, whatever became of the line. Where it breaks before COMMIT nothing is.
Result<> OdbcStore::keep() {
    std::vector<std::string> notes = m_writer.notes(m_sequence, m_mark);
    if (m_database.dialect->takesSeveralStatements())
        for (std::size_t i = notes.size(); i-- > 1; notes.pop_back())
            notes.front() += "; " + notes[i];
    if (Result<> result = m_database.execute(notes); !result)
        return result;
    const OdbcError error = m_database.connection.end(true);
    if (!error)
        return {};
    findOutcome();
    if (m_outcome == eOutcome::kStored)
        return {};
    return m_outcome == eOutcome::kUnknown ? m_database.fault(eServerFault::kUnknownOutcome)
                                           : m_database.failure(error);
}

// Nobody but the transaction in question has this mark: where it can be stored once more that one was taken
// back, and can never be kept any more. Where it cannot, it was kept, or an earlier try stored the mark of
// which the answer was lost. As long as the transaction is open the answer waits.
void OdbcStore::findOutcome() {
    m_outcome = eOutcome::kUnknown;
    if (!m_database.connect())
        return;
    OdbcError error = m_database.connection.begin();
    if (!error)
        error = m_database.connection.execute(m_writer.fence(m_mark));
    if (!m_database.connection.isOpen() || m_database.connection.end(!error))
        return;
    if (!error)
        m_outcome = eOutcome::kNotStored;
    else if (error.kind == OdbcError::eKind::kKeyTaken)
        if (const std::optional<std::int64_t> sequence = sequenceOf(m_mark))
            m_outcome = *sequence > 0 ? eOutcome::kStored : eOutcome::kNotStored;
}

std::optional<std::int64_t> OdbcStore::sequenceOf(std::uint32_t mark) {
    std::optional<std::int64_t> sequence;
    const Result<> result =
        m_database.queryInteger("SELECT sequence FROM " + m_database.dialect->table(kCommitTable) +
                                    " WHERE mark = " + std::to_string(mark),
                                sequence);
    return result ? sequence : std::nullopt;
}

bool OdbcStore::holdsMark(std::uint32_t mark) {
    return sequenceOf(mark).value_or(0) > 0;
}

void OdbcStore::rollback() {
    m_writer.finish(false);
    m_hasConflict = false;
    m_sequence = 0;
    if (m_database.connection.isInTransaction() && !m_isReading)
        static_cast<void>(m_database.connection.end(false));
}

bool OdbcStore::changedOutside() {
    if (!m_database.connection.isOpen() || m_outcome == eOutcome::kUnknown)
        return true;
    if (m_isReading)
        return false;
    if (m_sequence > 0) // nobody else stores anything until this transaction ends
        return othersChanges(m_sequence - 1) != m_knownChanges;
    std::optional<std::int64_t> last;
    return !m_database.queryInteger(m_schema.lastChangeSql(), last) ||
           othersChanges(last.value_or(0)) != m_knownChanges;
}

Result<> OdbcStore::readSince(StoredSince& since) {
    since = {};
    if (m_outcome == eOutcome::kUnknown || m_knownChanges == kNothingKnown)
        return {};
    endRead();
    rollback();
    Result<> result;
    if (!m_database.connection.isOpen()) {
        OdbcSchema::State state;
        result = m_database.connect();
        if (result)
            result = checkState(state);
    }
    if (result)
        result = beginRead(since.state);
    if (!result)
        return giveUpReading(std::move(result));
    m_range.last = since.state + m_ownChanges;
    result = m_log.read(m_range, since);
    endRead();
    if (result && since.isKnown)
        know(m_range.last);
    return result;
}

Result<> OdbcStore::giveUpReading(Result<> why) {
    m_whyUnread = why.error;
    m_isAnswering = m_database.connection.isOpen();
    m_database.connection.close();
    return why;
}

// The next look says that something changed, but not at once.
void OdbcStore::doubt() {
    m_knownChanges = kNothingKnown;
    m_asked = std::chrono::steady_clock::now() + m_limits.retry;
}

// A server that gives no answer is not asked a second time.
ServerNews OdbcStore::glance(const std::set<RowRef>& pending) {
    using enum ServerNews::eState;
    constexpr int kLooksWithoutAnswer = 3;
    OdbcConnection& connection = m_database.connection;
    const auto now = std::chrono::steady_clock::now();
    if (!connection.isOpen()) {
        const OdbcError error = connection.prepare(m_database.address.login());
        m_isAnswering = m_isAnswering && (!error || error.kind == OdbcError::eKind::kBusy);
        m_news = {!error ? kBack : m_isAnswering ? kSame : kLost};
    } else if (m_outcome == eOutcome::kUnknown) {
        m_news.state = kBack;
    } else if (!connection.isInTransaction()) {
        OdbcRows rows;
        const bool wasAsking = connection.isAsking();
        const OdbcError error = connection.answer(rows);
        if (wasAsking && !error)
            hear(rows);
        else if (error.kind != OdbcError::eKind::kBusy)
            m_news = {connection.isOpen() ? kChanged : kLost}; // and nobody is known any more
        else if (wasAsking && now - m_asked > kLooksWithoutAnswer * m_limits.look)
            m_news.state = kNoAnswer;
        const bool isHeard = wasAsking && !connection.isAsking(); // whoever reads now would not hear the next
        if (connection.isOpen() && !connection.isAsking() && now - m_asked >= m_limits.look &&
            !(isHeard && m_news.state == kChanged))
            ask(pending);
    }
    return m_news;
}

// Who is there is asked for less often, and few rows are marked: that costs the server more.
void OdbcStore::ask(const std::set<RowRef>& pending) {
    constexpr int kAsksForMarks = 4;
    const OdbcDialect& dialect = *m_database.dialect;
    std::string sql = m_schema.lastChangeSql();
    if (std::exchange(m_line, m_database.connection.number()) != m_database.connection.number()) {
        m_marked.clear();
        m_heard = 0;
    }
    if (m_heard % kAsksForMarks == 0)
        sql = dialect.withMarks(sql);
    std::set<RowRef> wanted = pending;
    wanted.insert(RowRef());
    if (!dialect.mark({}, true).empty()) {
        for (const RowRef row : m_marked)
            if (!wanted.contains(row))
                sql += "; " + dialect.mark(row, false);
        for (const RowRef row : wanted)
            if (!m_marked.contains(row))
                sql += "; " + dialect.mark(row, true);
        m_marked = std::move(wanted);
    }
    m_asked = std::chrono::steady_clock::now();
    m_database.connection.ask(sql);
}

void OdbcStore::hear(const OdbcRows& rows) {
    ++m_heard;
    std::map<std::int64_t, Colleague> colleagues;
    bool hasMarks = false;
    m_news.state = ServerNews::eState::kChanged; // unless it says what is known
    for (const auto& row : rows) {
        hasMarks = row.size() > 1;
        if (row[0] && othersChanges(numberIn(row[0])) == m_knownChanges)
            m_news.state = ServerNews::eState::kSame;
        if (row[0] || !hasMarks)
            continue;
        Colleague& colleague = colleagues[numberIn(row[1])];
        colleague.user = row[2].value_or("");
        const RowRef marked{static_cast<eTableType>(numberIn(row[3])),
                            static_cast<std::int32_t>(numberIn(row[4]))};
        if (marked.table != kNoTable)
            colleague.pending.push_back(marked);
    }
    if (!hasMarks)
        return;
    m_news.colleagues.clear();
    for (auto& [connection, colleague] : colleagues)
        m_news.colleagues.push_back(std::move(colleague));
}

Result<> OdbcStore::reopen() {
    endRead();
    rollback();
    if (m_outcome == eOutcome::kUnknown)
        findOutcome();
    Result<> result;
    if (m_outcome == eOutcome::kUnknown)
        result = m_database.fault(eServerFault::kWaitsForOutcome);
    else if (!m_database.connection.isOpen())
        result = m_database.connect();
    if (result)
        result = look();
    return result ? result : giveUpReading(std::move(result));
}

void OdbcStore::acknowledge() {
    std::optional<std::int64_t> last;
    if (m_database.queryInteger(m_schema.lastChangeSql(), last) && last)
        know(*last - (m_sequence > 0 ? 1 : 0));
    m_database.forgetLayouts();
}
