#pragma once

#include "base/Result.h"
#include "data/store/ServerNews.h"
#include "records/TableSchema.h"

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

struct StoredSince;

/// One stored cell of a row to be changed, with the value that it must still hold.
struct CellChange {
    std::int32_t key = 0;
    const Column* column = nullptr;
    CellValue stored;
    CellValue wanted;
};

/// The net change of one table: what a commit has to write. Records are of the table's own type and are
/// owned by the caller for the time of the call.
struct TableChange {
    const TableSchema* table = nullptr;
    std::vector<CellChange> cells;
    std::vector<const StructRecord*> appended;
    std::vector<const StructRecord*> deleted; ///< with the content that the stored row must still have

    bool isEmpty() const { return cells.empty() && appended.empty() && deleted.empty(); }
};

/// A place where the stored database no longer holds what it held when it was read.
struct StoreConflict {
    const TableSchema* table = nullptr;
    std::int32_t key = 0;
    const Column* column = nullptr; ///< null when the whole row is concerned (gone, or its key taken)
    std::string stored;             ///< what the database holds now, as text; empty when the row is gone
    std::string mine;
    std::string before; ///< what it held when this program read it
};

/// A cell, row, column or table that is not as declared.
struct ReadProblem {
    std::string sentence = {}; ///< names file, table, row and column, and says what to do
    bool kept = false;         ///< the stored value is used although it is outside its range; otherwise the
                               ///< default stands in its place, or the row is left out
    const TableSchema* table = nullptr; ///< null where no table in particular is concerned
    const Column* column = nullptr;     ///< null where whole rows are concerned
    std::int32_t key = 0;               ///< of the row whose one cell is concerned, or 0; a write mends it
};

/// One style database in a database engine. A store reads tables whole and applies changes in transactions;
/// it holds no rows itself.
class StyleStore {
public:
    enum class eOutcome {
        kNotStored,
        kUnknown, ///< the line broke meanwhile: the next `reopen` that succeeds finds it out, and until then
                  ///< the store is read-only
        kStored,  ///< `reopen` found that it was stored all the same
    };

    virtual ~StyleStore() = default;

    /// File name or connection, for sentences to the user.
    virtual const std::string& name() const = 0;
    virtual bool isReadOnly() const = 0;
    /// One sentence when a newer version of the program made the database: then it is read-only, and may hold
    /// more than can be read here. Otherwise empty.
    virtual std::string whyTooNew() const { return {}; }
    /// One sentence why the store is read-only, and what can be done; empty where it is not.
    virtual std::string whyReadOnly() const = 0;

    /// Reads all rows of `table`, sorted by key, into the empty array `rows`. Cells that do not fit their
    /// column keep the default and are reported in `problems`; a missing table or column likewise. A later
    /// write to such a cell replaces what is stored there, if it is still the same. When reading breaks off,
    /// the result is a failure and `rows` is empty: half a table would look like deleted rows.
    virtual Result<> readTable(const TableSchema& table, RowArray& rows,
                               std::vector<ReadProblem>& problems) = 0;

    /// Until `endRead` all tables are read in one state of the database, whatever other programs write.
    /// `state` becomes a number that differs from an earlier one when another program changed the database
    /// between. After a failure nothing is open. Inside of a transaction of `begin` it reads in that
    /// transaction.
    virtual Result<> beginRead(std::int64_t& state) = 0;
    /// Harmless when nothing is open.
    virtual void endRead() = 0;

    /// What is damaged in the whole database, one sentence each; empty when it is sound. Takes as long as
    /// reading everything.
    virtual std::vector<std::string> integrityFindings() = 0;

    /// Opens the transaction in which the following `apply` calls take part. Fails when the store is
    /// read-only, when another program holds the database, or when its file was replaced.
    virtual Result<> begin() = 0;
    /// Writes one table's change. A cell is written only where the row still holds the old value, a row is
    /// deleted only while it is as it was, a row is appended only where its key is free; anything else is
    /// added to `conflicts`, and the rest is done. After any failure or conflict the caller must roll back.
    virtual Result<> apply(const TableChange& change, std::vector<StoreConflict>& conflicts) = 0;
    /// The number that `commit` leaves in the database: it tells whether the open transaction was stored. 0
    /// where nothing can be told.
    virtual std::uint32_t markOfChange() = 0;
    /// Whether a commit left this number. Where the database can hold one number only it is that of the last
    /// commit, so that false tells nothing.
    virtual bool holdsMark(std::uint32_t mark) = 0;
    /// Keeps what was applied since `begin`. On failure nothing is kept and the transaction has ended, unless
    /// `outcome` says otherwise.
    virtual Result<> commit() = 0;
    /// What became of the last commit that failed.
    virtual eOutcome outcome() const { return eOutcome::kNotStored; }
    /// Ends the transaction without keeping anything. Harmless when none is open.
    virtual void rollback() = 0;

    /// Whether another program changed or replaced the database since it was opened or last acknowledged.
    /// While another program is just writing it says what it knew before.
    virtual bool changedOutside() = 0;
    /// Reads what other programs stored since the state that is known, and takes the present one as known;
    /// reads nothing where that cannot be told. May connect again.
    virtual Result<> readSince(StoredSince&) { return {}; }
    /// What is stored could not be read after `reopen`, so that no state of it is known.
    virtual void doubt() {}
    /// Whether the database is on a server, which is asked by `glance`.
    virtual bool isOnServer() const { return false; }
    /// What a server said last. Asks it now and then, without waiting for it, and tells it that these rows
    /// have pending changes here.
    virtual ServerNews glance(const std::set<RowRef>&) { return {}; }
    /// More rows need not be told.
    static constexpr std::size_t kMostRowsTold = 30;
    /// Opens the database anew under its name and takes its state as known. The caller then reads everything
    /// again. On failure everything else fails for the same reason until it succeeds.
    virtual Result<> reopen() = 0;
    /// Takes the present state as known without reading it; what differs will be a conflict when written.
    virtual void acknowledge() = 0;
};
