#pragma once

#include "app/Commands.h"
#include "app/SourceChoice.h"
#include "base/Result.h"
#include "records/RowRef.h"

struct FilingCell;
struct FoundRow;

/// One row that the user named.
struct RowChoice {
    SourceId source;
    const TableSchema* table = nullptr;
    KorOdbcKey key;

    const StructRecord* record() const;
    RowRef ref() const { return {table->type, key}; }

    /// Where the record is filed, if another row says so: a detail style is filed by the number by which the
    /// host knows it.
    std::vector<FilingCell> filingCells() const;

    /// Why others than this row would change with it, or may, in one sentence; empty when that is not so. Its
    /// source must be current.
    KorString whyShared() const;

    /// Finds the row in the sources that the user means. It has the run name `options.name`, or, where no row
    /// is called so, the key in brackets, as "[12]": parts of other rows often have no name of their own. The
    /// User database comes first, then Standard, then the add-ins. Of several rows of one name none is found.
    static FoundRow find(const RowOptions& options);

    /// The same in a source of which every table was read, in one state.
    static FoundRow findInOneState(const RowOptions& options);

    /// The same for a row that is to be changed: without a source in the User database.
    static FoundRow findToChange(const RowOptions& options);

    /// What all rows of a table are called on the screen.
    static std::vector<KorString> namesIn(const StyleTable& table);
    /// Names in quotes with commas; of many only the first.
    static KorString listOf(const std::vector<KorString>& names);
    /// What to say where a name stands for several rows of a table; empty for one key.
    static KorString severalNamed(StyleSource& source, const StyleTable& table,
                                  const std::vector<std::int32_t>& keys);

    /// The table of a kind: by its name, or by what the editor calls its rows in any of its languages.
    static Result<const TableSchema*> findKind(const std::string& kind);
};

/// A cell that says where a record is filed.
struct FilingCell {
    RowChoice row;
    const Column* column;
};

/// What came of a search for a row.
struct FoundRow : Result<RowChoice> {
    eExitCode code = kExitDone; ///< above 0 after a failure

    FoundRow(RowChoice row) : Result(std::move(row)) {}
    FoundRow(Result<> failed, eExitCode why = kExitFailed) : Result(std::move(failed)), code(why) {}

    /// Tells the user what could not be read, and why there is no row; returns the code.
    eExitCode tell() const;
};
