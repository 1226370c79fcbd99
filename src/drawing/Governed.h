#pragma once

#include "picture/Primitive.h"

#include <set>
#include <unordered_map>

class StyleSource;

/// Which primitives of a drawing a field, or a record, has a say in: by their provenance. Made once per
/// drawing; it keeps nothing of that, and its answers are places in the order of `Drawing::all`.
class Governed {
public:
    using Places = std::vector<std::size_t>;

    Governed() = default;
    explicit Governed(const Drawing& drawing);

    /// The primitives that this column of the record made so, ascending; column 0: any of its columns.
    Places by(SourceId source, const RowRef& row, int column = 0) const;
    /// The same, and also where a column acts only through what refers to its record: a point of a dimension
    /// request, a qualifier of a set, a word of a list, the settings of a style.
    Places by(StyleSource& source, const RowRef& row, int column) const;
    /// Where on the sheet they stand; empty where there are none.
    Box2 box(SourceId source, const RowRef& row, int column = 0) const;

private:
    struct Step {
        SourceId source;
        std::vector<int> columns;
        std::size_t chain; ///< index of the provenance that has it
    };
    struct Chain {
        Places places;
        Box2 box;
    };

    std::vector<const Chain*> chainsOf(SourceId source, const RowRef& row, int column) const;

    Places placedByProjection(StyleSource& source) const;

    void addThrough(StyleSource& source, const RowRef& row, std::set<RowRef>& seen, Places& places) const;

    std::vector<Chain> m_chains; // of each provenance that occurs
    std::unordered_map<std::uint64_t, std::vector<Step>> m_steps;
};
