#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

#include <string>
#include <vector>

/// Rows with all that they use, as they were at one moment and apart from any database, so that they outlive
/// their originals.
class FrozenRecords {
public:
    /// The rows of a source as a text that `read` understands. A failure says why the source cannot tell all
    /// that they use.
    static Result<std::string> textOf(StyleSource& source, const std::vector<RowRef>& rows);
    /// What such a text holds; null for any other text.
    static std::unique_ptr<FrozenRecords> read(std::string_view text);

    /// The table of the rows.
    eTableType table() const { return m_table; }
    /// The rows in the order in which they were given, with the keys that they had.
    const std::vector<std::shared_ptr<const StructRecord>>& rows() const { return m_rows; }
    /// What they use, under the keys that they have there.
    StyleSource& used() { return *m_used; }
    /// Whether they came from this source.
    bool cameFrom(StyleSource& source) const;

private:
    FrozenRecords() = default;

    std::string m_origin; // the file
    eTableType m_table = kNoTable;
    std::vector<std::shared_ptr<const StructRecord>> m_rows;
    std::unique_ptr<StyleSource> m_used;
};
