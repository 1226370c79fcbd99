#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>

/// Finds rows of one source in another one. A row is the same as a row of the target when it has the same
/// name, or that name with a number behind it (which an import gives where a name is taken), and the same
/// content: equal cells, references to rows that are the same, and equal parts. Groups and categories are the
/// same when they have the same name: whatever else they hold only orders them. Where a row is listed does
/// not count.
class RowMatcher {
public:
    /// Both sources must outlive the matcher.
    RowMatcher(StyleSource& from, StyleSource& to) : m_from(from), m_to(to) {}

    /// Key of the row in the target that is the same as `row`, or 0.
    std::int32_t find(RowRef row);
    /// From now on `row` counts as the same as the row `key` of the target.
    void set(RowRef row, std::int32_t key) { m_found[row] = key; }
    /// Looks for `row` again when it is asked for next.
    void forget(RowRef row) { m_found.erase(row); }

    /// A copy of a row as it would stand in the target: without a key, with references to the same rows
    /// there. A reference to a row that is not there is cleared. Null when a row referred to has no
    /// counterpart.
    std::shared_ptr<StructRecord> translated(RowRef row) { return translated(row, nullptr, 0); }
    /// The same for a row that belongs to another one, whose counterpart `whole` is. Where the part bears the
    /// name of the other row, it bears the counterpart's.
    std::shared_ptr<StructRecord> translatedPart(const Referrer& part, const StructRecord& whole);

private:
    // A row of the target with its parts.
    struct Candidate {
        std::int32_t key = 0;
        std::vector<Referrer> parts;
    };
    // The rows of the target that bear one name, alone or with a number behind it, by their content.
    struct Namesakes {
        std::unordered_map<std::size_t, std::vector<Candidate>> byContent;
        int known = 0; // how many of them were looked at; the next one bears this number
    };

    std::int32_t search(RowRef row);
    std::shared_ptr<StructRecord> translated(RowRef row, const Column* known, std::int32_t key);
    std::optional<std::size_t> contentHash(RowRef row);
    const Namesakes& namesakes(eTableType table, const KorString& name);
    bool equalContent(RowRef row, const Candidate& candidate);
    bool equalParts(RowRef row, const Candidate& candidate);

    StyleSource& m_from;
    StyleSource& m_to;
    std::map<RowRef, std::int32_t> m_found;
    std::map<std::pair<eTableType, KorString>, Namesakes> m_namesakes;
};
