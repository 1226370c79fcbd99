#pragma once

#include "data/store/LockWait.h"
#include "data/store/odbc/OdbcBlock.h"
#include "data/store/odbc/OdbcError.h"

#include <functional>
#include <memory>
#include <thread>

struct OdbcLibrary;
struct OdbcLine;

/// How long a database on a server is waited for.
struct OdbcLimits {
    std::chrono::milliseconds login{10000};
    std::chrono::milliseconds statement{60000};
    std::chrono::milliseconds look{2000};  ///< between two looks at what others stored
    std::chrono::milliseconds retry{5000}; ///< between two tries to open a line in the background
};

/// One connection by a driver. Every call of the driver runs in a thread of the connection, and the caller
/// waits for it as for a lock: with a word, a limit and a way to give up. A line that gave no answer in time
/// is left to its thread and never used again; what comes late finds nobody. Nothing connects again by
/// itself, since that would hide what became of a transaction.
class OdbcConnection {
public:
    /// `name` is that of the database in sentences.
    OdbcConnection(const std::string& name, OdbcLimits limits);
    ~OdbcConnection();
    OdbcConnection(const OdbcConnection&) = delete;
    OdbcConnection& operator=(const OdbcConnection&) = delete;

    /// Opens a line in the place of the one before. `text` is a connection string for the driver manager.
    OdbcError open(const std::string& text);
    void close();
    /// Opens a line in the background, which the next `open` takes. `kBusy` while that is under way; after a
    /// failure it is tried again after a while.
    OdbcError prepare(const std::string& text);
    bool isOpen() const { return m_line != nullptr; }
    /// How many lines were opened so far.
    int number() const { return m_number; }
    /// Name of the database engine, and what it puts around names; empty where nothing is open.
    const std::string& engine() const { return m_engine; }
    const std::string& quote() const { return m_quote; }

    /// Whether statements belong to a transaction that begins with the next one, until `end`.
    OdbcError begin();
    OdbcError end(bool keep);
    bool isInTransaction() const { return m_isInTransaction; }

    /// Runs SQL that yields no rows. `rows` becomes the number of those it changed, -1 where that is not
    /// known.
    OdbcError execute(const std::string& sql, std::int64_t* rows = nullptr);
    /// Reads all rows of a small result.
    OdbcError query(const std::string& sql, OdbcRows& rows);
    /// Begins such a query without waiting for its answer, unless something else is under way.
    void ask(const std::string& sql);
    bool isAsking() const { return m_isAsking; }
    /// The answer to it, once; `kBusy` while there is none. Whoever runs something else meanwhile waits for
    /// it, and it is forgotten.
    OdbcError answer(OdbcRows& rows);

    /// Begins to read a large result, with room for texts of these sizes in its columns. The more room a row
    /// takes the fewer are fetched at once.
    OdbcError select(const std::string& sql, const std::vector<std::size_t>& rooms);
    /// Reads the next rows of it into `block`; none at its end.
    OdbcError fetch();
    const OdbcBlock& block() const { return m_block; }
    /// How many rows the large result has, -1 where that is not known.
    std::int64_t expectedRows() const;
    void endSelect();

private:
    using Job = std::function<OdbcError(OdbcLine&)>;
    /// A line with its thread.
    struct Served {
        std::shared_ptr<OdbcLine> line;
        std::thread thread;
    };

    static Served serve(const OdbcLibrary& library, Job job);
    static void leave(Served served);
    static bool isDone(OdbcLine& line, std::chrono::milliseconds moment);
    static void give(OdbcLine& line, Job job);
    bool waitFor(OdbcLine& line, LockWait& patience);
    OdbcError answerOf(const std::shared_ptr<OdbcLine>& line, bool isAnswered);
    OdbcError run(Job job);
    Job connecting(const std::string& text) const;

    std::string m_name;
    LockWait m_login;
    LockWait m_wait;
    OdbcLimits m_limits;
    Served m_served;
    Served m_next; ///< opened in the background
    std::chrono::steady_clock::time_point m_nextTry;
    std::shared_ptr<OdbcLine> m_line;               ///< the one that is used
    std::chrono::steady_clock::time_point m_turned; ///< when events went on last, or the work began
    std::chrono::steady_clock::time_point m_answered;
    std::string m_engine;
    std::string m_quote;
    int m_number = 0;
    bool m_isInTransaction = false;
    bool m_isAsking = false;
    bool m_isFetching = false;
    OdbcBlock m_block;
};
