#pragma once

#include "app/Commands.h"
#include "app/SourceChoice.h"

/// One row that the user named.
struct RowChoice {
    SourceId source;
    const TableSchema* table = nullptr;
    KorOdbcKey key;

    const StructRecord* record() const;

    /// Finds the row in the sources that the user means. It has the run name `options.name`, or, where no row
    /// is called so, the key in brackets, as "[12]": parts of other rows often have no name of their own. The
    /// User database comes first, then Standard, then the add-ins. Of several rows of one name none is found.
    /// On failure an exit code above 0, with a sentence for the user in `error`.
    static eExitCode find(const RowOptions& options, RowChoice& row, KorString& error);

    /// The same in a source of which every table was read, in one state.
    static eExitCode findInOneState(const RowOptions& options, RowChoice& row, KorString& error);

    /// What to say where a name stands for several rows of a table; empty for one key.
    static KorString severalNamed(const StyleTable& table, const std::vector<std::int32_t>& keys);

    /// The table of a kind; null, with a sentence for the user, when there is none.
    static const TableSchema* findKind(const std::string& kind, KorString& error);
};
