#pragma once

#include "data/store/odbc/OdbcLog.h"
#include "data/store/odbc/OdbcSchema.h"
#include "data/store/odbc/OdbcWriter.h"

class OdbcStore;

/// What came of opening a database on a server. A failure with a store says why it may only be read although
/// writing was asked for.
struct OpenedServer : Result<> {
    std::unique_ptr<OdbcStore> store = {}; ///< null when it cannot be used
    OdbcError line = {};                   ///< why there is none to the server
};

/// A style database on a server, by its ODBC driver. Several programs work on it at once: each commit raises
/// the number of the last change in its transaction, by which the others see that something changed, and
/// leaves a mark, by which it finds out after a broken line whether it took place.
class OdbcStore final : public StyleStore {
public:
    enum class eMode { kRead, kWrite };

    static OpenedServer open(const ServerAddress& address, eMode mode, OdbcLimits limits = {},
                             const SchemaHistory& history = SchemaHistory::own());
    ~OdbcStore() override;

    const std::string& name() const override { return m_database.name(); }
    bool isReadOnly() const override;
    std::string whyTooNew() const override;
    std::string whyReadOnly() const override;
    Result<> readTable(const TableSchema& table, RowArray& rows, std::vector<ReadProblem>& problems) override;
    Result<> beginRead(std::int64_t& state) override;
    void endRead() override;
    std::vector<std::string> integrityFindings() override { return {}; }
    /// A transaction that is open goes on.
    Result<> begin() override;
    Result<> apply(const TableChange& change, std::vector<StoreConflict>& conflicts) override;
    std::uint32_t markOfChange() override { return m_mark; }
    bool holdsMark(std::uint32_t mark) override;
    Result<> commit() override;
    eOutcome outcome() const override { return m_outcome; }
    void rollback() override;
    bool changedOutside() override;
    Result<> readSince(StoredSince& since) override;
    bool isOnServer() const override { return true; }
    void doubt() override;
    ServerNews glance(const std::set<RowRef>& pending) override;
    Result<> reopen() override;
    void acknowledge() override;

private:
    OdbcStore(ServerAddress address, OdbcLimits limits, const SchemaHistory& history);

    Result<> look();
    Result<> checkState(OdbcSchema::State& state);
    void know(std::int64_t lastChange);
    /// Ends the connection, since nothing is known of what is stored. Returns why.
    Result<> giveUpReading(Result<> why);
    void ask(const std::set<RowRef>& pending);
    void hear(const OdbcRows& rows);
    Result<> refuseReadOnly() const;
    Result<> takeTurn();
    Result<> keep();
    void findOutcome();
    /// Of the commit or fence that left the mark; none where that is not known.
    std::optional<std::int64_t> sequenceOf(std::uint32_t mark);
    std::int64_t othersChanges(std::int64_t lastChange) const { return lastChange - m_ownChanges; }

    OdbcDatabase m_database;
    OdbcSchema m_schema;
    OdbcWriter m_writer;
    OdbcLog m_log;
    const OdbcLimits m_limits;
    const SchemaHistory& m_history;
    int m_version = 0;
    bool m_readOnly = true;
    bool m_isReading = false;      ///< the open transaction is one of `beginRead`
    bool m_hasConflict = false;    ///< in the open transaction
    std::int64_t m_sequence = 0;   ///< of the open transaction; 0 where none writes
    std::uint32_t m_mark = 0;      ///< of the open transaction, or of the one whose outcome is not known
    std::int64_t m_ownChanges = 0; ///< that this store committed
    static constexpr std::int64_t kNothingKnown = -1;
    std::int64_t m_knownChanges = 0; ///< of others, or nothing known
    OdbcLog::Range m_range;          ///< of commits whose rows are to be read next
    eOutcome m_outcome = eOutcome::kNotStored;
    std::string m_whyUnread;    ///< why the last reading again failed; empty where none did
    bool m_isAnswering = false; ///< although that failed
    ServerNews m_news;
    std::chrono::steady_clock::time_point m_asked;
    int m_line = 0;            ///< by which it was asked
    int m_heard = 0;           ///< answers, by that line
    std::set<RowRef> m_marked; ///< by that line
};
