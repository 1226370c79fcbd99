#include "data/store/odbc/OdbcLine.h"

#include <algorithm>
#include <array>
#include <exception>
#include <numeric>

namespace {

constexpr std::size_t kRowsOfBlock = 512;
constexpr std::size_t kRowsOfSmallBlock = 32; // with much room in each cell
constexpr std::size_t kSmallRoom = 4096;
constexpr std::size_t kBytesOfBlock = std::size_t{4} << 20; // where a row takes less

bool isGood(SQLRETURN code) {
    return code == SQL_SUCCESS || code == SQL_SUCCESS_WITH_INFO;
}

// Both take numbers and lengths in the place of addresses.
SQLPOINTER asPointer(std::uintptr_t number) {
    return reinterpret_cast<SQLPOINTER>(number); // NOLINT(performance-no-int-to-ptr)
}

SQLCHAR* asText(const std::string& text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
}

// Nobody would catch what a job throws.
OdbcError done(const std::function<OdbcError(OdbcLine&)>& job, OdbcLine& line) {
    try {
        return job(line);
    } catch (const std::bad_alloc&) {
        return {OdbcError::eKind::kOther, "not enough memory"};
    } catch (const std::length_error&) { // of what a table asks room for
        return {OdbcError::eKind::kOther, "not enough memory"};
    } catch (const std::exception& problem) {
        return {OdbcError::eKind::kOther, problem.what()};
    }
}

} // namespace

void OdbcLine::disconnect() {
    if (m_statement)
        library.freeHandle(SQL_HANDLE_STMT, m_statement);
    if (m_connection) {
        library.endTran(SQL_HANDLE_DBC, m_connection, SQL_ROLLBACK); // a line in a transaction does not end
        library.disconnect(m_connection);
        library.freeHandle(SQL_HANDLE_DBC, m_connection);
    }
    if (m_environment)
        library.freeHandle(SQL_HANDLE_ENV, m_environment);
    m_statement = SQL_NULL_HSTMT;
    m_connection = SQL_NULL_HDBC;
    m_environment = SQL_NULL_HENV;
}

void OdbcLine::serve(const std::shared_ptr<OdbcLine>& line) {
    std::unique_lock lock(line->mutex);
    while (true) {
        line->changed.wait(lock, [&] { return line->isLeft || line->job; });
        if (line->isLeft)
            break;
        const auto job = line->job;
        lock.unlock();
        OdbcError result = done(job, *line);
        lock.lock();
        line->result = std::move(result);
        line->job = nullptr;
        line->changed.notify_all();
    }
    lock.unlock();
    line->disconnect();
    lock.lock();
    line->isEnded = true;
    line->changed.notify_all();
}

OdbcError OdbcLine::errorOf(SQLSMALLINT type, SQLHANDLE handle, bool isConnecting) const {
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 1024> message{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    if (!isGood(library.getDiagRec(type, handle, 1, state.data(), &native, message.data(),
                                   static_cast<SQLSMALLINT>(message.size()), &length)))
        return OdbcError::of("08000", "no answer", isConnecting);
    return OdbcError::of(reinterpret_cast<const char*>(state.data()),
                         reinterpret_cast<const char*>(message.data()), isConnecting);
}

OdbcError OdbcLine::checked(SQLRETURN code) const {
    return isGood(code) || code == SQL_NO_DATA ? OdbcError() : errorOf(SQL_HANDLE_STMT, m_statement);
}

std::string OdbcLine::info(SQLUSMALLINT what) const {
    std::array<char, 256> text{};
    SQLSMALLINT length = 0;
    return isGood(library.getInfo(m_connection, what, text.data(), static_cast<SQLSMALLINT>(text.size()),
                                  &length))
               ? std::string(text.data())
               : std::string();
}

OdbcError OdbcLine::connect(const std::string& text, std::chrono::seconds limit) {
    if (!isGood(library.allocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment)) ||
        !isGood(library.setEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0)) ||
        !isGood(library.allocHandle(SQL_HANDLE_DBC, m_environment, &m_connection)))
        return {OdbcError::eKind::kNoManager};
    library.setConnectAttr(m_connection, SQL_ATTR_LOGIN_TIMEOUT,
                           asPointer(static_cast<std::uintptr_t>(limit.count())), SQL_IS_UINTEGER);
    const SQLRETURN code =
        library.driverConnect(m_connection, nullptr, asText(text), static_cast<SQLSMALLINT>(text.size()),
                              nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!isGood(code)) {
        OdbcError error = errorOf(SQL_HANDLE_DBC, m_connection, true);
        library.freeHandle(SQL_HANDLE_DBC, m_connection);
        m_connection = SQL_NULL_HDBC;
        return error;
    }
    engine = info(SQL_DBMS_NAME);
    quote = info(SQL_IDENTIFIER_QUOTE_CHAR);
    return {};
}

OdbcError OdbcLine::setTransactions(bool on) {
    const auto value = asPointer(on ? SQL_AUTOCOMMIT_OFF : SQL_AUTOCOMMIT_ON);
    return isGood(library.setConnectAttr(m_connection, SQL_ATTR_AUTOCOMMIT, value, SQL_IS_UINTEGER))
               ? OdbcError()
               : errorOf(SQL_HANDLE_DBC, m_connection);
}

// Single statements again only after the transaction: that would keep an open one.
OdbcError OdbcLine::end(bool keep) {
    const bool done = isGood(library.endTran(SQL_HANDLE_DBC, m_connection, keep ? SQL_COMMIT : SQL_ROLLBACK));
    return done ? setTransactions(false) : errorOf(SQL_HANDLE_DBC, m_connection);
}

OdbcError OdbcLine::openStatement() {
    if (m_statement)
        library.freeHandle(SQL_HANDLE_STMT, m_statement);
    m_statement = SQL_NULL_HSTMT;
    if (!isGood(library.allocHandle(SQL_HANDLE_STMT, m_connection, &m_statement)))
        return errorOf(SQL_HANDLE_DBC, m_connection);
    // Braces in texts are no escapes.
    library.setStmtAttr(m_statement, SQL_ATTR_NOSCAN, asPointer(SQL_NOSCAN_ON), SQL_IS_UINTEGER);
    return {};
}

OdbcError OdbcLine::execute(const std::string& sql) {
    rows = -1;
    if (OdbcError error = openStatement())
        return error;
    SQLRETURN code = library.execDirect(m_statement, asText(sql), static_cast<SQLINTEGER>(sql.size()));
    SQLLEN count = -1;
    if (isGood(code) && isGood(library.rowCount(m_statement, &count)))
        rows = count;
    while (isGood(code))
        code = library.moreResults(m_statement);
    return checked(code);
}

OdbcError OdbcLine::query(const std::string& sql) {
    found.clear();
    OdbcError error = select(sql, {});
    while (!error && !(error = fetch()) && block.size() > 0)
        for (std::size_t row = 0; row < block.size(); ++row) {
            auto& cells = found.emplace_back();
            for (std::size_t column = 0; column < block.m_columns.size(); ++column)
                cells.emplace_back(block.cell(row, column));
        }
    endSelect();
    return error;
}

OdbcError OdbcLine::select(const std::string& sql, const std::vector<std::size_t>& rooms) {
    rows = -1;
    if (OdbcError error = openStatement())
        return error;
    const std::size_t room = std::accumulate(rooms.begin(), rooms.end(), std::size_t{0});
    m_rowsOfBlock =
        room == 0 ? kRowsOfSmallBlock : std::clamp<std::size_t>(kBytesOfBlock / room, 1, kRowsOfBlock);
    library.setStmtAttr(m_statement, SQL_ATTR_ROW_ARRAY_SIZE, asPointer(m_rowsOfBlock), 0);
    library.setStmtAttr(m_statement, SQL_ATTR_ROWS_FETCHED_PTR, &m_fetched, 0);
    SQLSMALLINT columns = 0;
    OdbcError error =
        checked(library.execDirect(m_statement, asText(sql), static_cast<SQLINTEGER>(sql.size())));
    if (!error)
        error = checked(library.numResultCols(m_statement, &columns));
    for (SQLRETURN code = SQL_SUCCESS; !error && columns == 0 && code != SQL_NO_DATA;) {
        code = library.moreResults(m_statement);
        error = checked(code);
        if (!error && code != SQL_NO_DATA)
            error = checked(library.numResultCols(m_statement, &columns));
    }
    if (error)
        return error;
    SQLLEN count = -1;
    if (isGood(library.rowCount(m_statement, &count)))
        rows = count;
    m_rooms = rooms.empty() ? std::vector(static_cast<std::size_t>(columns), kSmallRoom) : rooms;
    return {};
}

OdbcError OdbcLine::bind() {
    static_assert(sizeof(SQLLEN) == sizeof(std::ptrdiff_t));
    block.m_columns.resize(m_rooms.size());
    for (std::size_t i = 0; i < m_rooms.size(); ++i) {
        OdbcBlock::Cells& cells = block.m_columns[i];
        cells.room = m_rooms[i];
        cells.texts.resize(m_rooms[i] * m_rowsOfBlock);
        cells.lengths.resize(m_rowsOfBlock);
        if (OdbcError error = checked(library.bindCol(
                m_statement, static_cast<SQLUSMALLINT>(i + 1), SQL_C_CHAR, cells.texts.data(),
                static_cast<SQLLEN>(m_rooms[i]), reinterpret_cast<SQLLEN*>(cells.lengths.data()))))
            return error;
    }
    return {};
}

OdbcError OdbcLine::fetch() {
    m_fetched = 0;
    block.m_size = 0;
    if (OdbcError error = bind())
        return error;
    const SQLRETURN code = library.fetch(m_statement);
    if (isGood(code))
        block.m_size = m_fetched;
    return checked(code);
}

void OdbcLine::endSelect() {
    if (m_statement)
        library.freeStmt(m_statement, SQL_CLOSE);
}
