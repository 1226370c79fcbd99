#pragma once

#include "data/exchange/ExchangeReport.h"
#include "data/exchange/FrozenRecords.h"
#include "records/WriteResult.h"

#include <memory>

/// Rows of a list as they were when they were copied, with all that they use: for lists of the same kind,
/// also in another source or another running editor, after the originals are gone.
class KorDSMCopiedRows {
public:
    /// What is to be kept of rows of one table; fails where their source cannot tell all that they use.
    static Result<KorString> textOf(SourceId source, const std::vector<RowRef>& rows);
    /// Reads such a text; null where it is none of rows of this table.
    static std::unique_ptr<KorDSMCopiedRows> read(const KorString& text, eTableType table);

    std::size_t count() const { return m_frozen->rows().size(); }
    KorString name(std::size_t row) const { return m_frozen->rows()[row]->name; }

    /// How many of the records that the rows use another source has.
    struct Comparison {
        int equal = 0;
        std::vector<KorString> different = {}; ///< of the same name, but with another content: which ones
        std::vector<KorString> missing = {};   ///< which ones
        KorString error = {};                  ///< why they cannot be brought at all
    };
    /// It is found by bringing what the rows use by these columns, which is taken back without a trace.
    Comparison compareWith(SourceId source, const std::vector<const Column*>& columns);

    /// Brings what the rows use by these columns into the current source, within the step of a command;
    /// `values` gets, for each row, what its cells are there.
    WriteResult bring(const std::vector<const Column*>& columns, eNamesakes namesakes,
                      std::vector<std::vector<CellValue>>& values, ImportReport& report);

private:
    explicit KorDSMCopiedRows(std::unique_ptr<FrozenRecords> frozen) : m_frozen(std::move(frozen)) {}

    RowRef target(std::size_t row, const Column& column) const;

    std::unique_ptr<FrozenRecords> m_frozen;
};
