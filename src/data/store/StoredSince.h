#pragma once

#include "data/store/StyleStore.h"
#include "records/RowRef.h"

#include <map>

/// Who stored something, and when.
struct StoredBy {
    std::string user;
    std::string when;        ///< date and time of day here, as "2026-11-26 10:42"
    std::int64_t number = 0; ///< of the commit: those that came later have higher ones
};

/// What other programs stored in a database since a state that is known.
struct StoredSince {
    struct Table {
        const TableSchema* table = nullptr;
        bool isWhole = false;           ///< `rows` are all that there are
        std::unique_ptr<RowArray> rows; ///< those that were written, as they are stored now
        std::vector<std::int32_t> gone;
        std::vector<ReadProblem> problems;
    };

    bool isKnown = false;   ///< otherwise it cannot be told, and everything is to be read again
    std::int64_t state = 0; ///< of the database, as `StyleStore::beginRead` tells it
    std::vector<Table> tables;
    std::map<RowRef, StoredBy> authors; ///< by row; with key 0 by table where too many rows were written

    /// Who wrote the row last; empty where that is not known.
    StoredBy authorOf(RowRef row) const {
        StoredBy last;
        for (const RowRef each : {row, RowRef{row.table, 0}})
            if (const auto found = authors.find(each);
                found != authors.end() && found->second.number >= last.number)
                last = found->second;
        return last;
    }
};
