#include "drawing/Governed.h"

#include <algorithm>

namespace {

std::uint64_t placeOf(const RowRef& row) {
    return static_cast<std::uint64_t>(row.table) << 32 | static_cast<std::uint32_t>(row.key);
}

} // namespace

Governed::Governed(const Drawing& drawing) {
    std::unordered_map<const Provenance*, std::size_t> known;
    std::size_t place = 0;
    for (const Primitive* primitive : drawing.all()) {
        const Provenance* provenance = primitive->provenance.get();
        const auto [chain, isNew] = known.try_emplace(provenance, m_chains.size());
        if (isNew) {
            m_chains.emplace_back();
            if (provenance)
                for (const ProvenanceStep& step : *provenance)
                    m_steps[placeOf(step.row)].push_back({step.source, step.columns, chain->second});
        }
        m_chains[chain->second].places.push_back(place++);
        m_chains[chain->second].box.add(primitive->box());
    }
}

std::vector<const Governed::Chain*> Governed::chainsOf(SourceId source, const RowRef& row, int column) const {
    std::vector<const Chain*> chains;
    const auto found = m_steps.find(placeOf(row));
    if (found == m_steps.end())
        return chains;
    for (const Step& step : found->second)
        if (const Chain* chain = &m_chains[step.chain];
            step.source == source && (chains.empty() || chains.back() != chain) &&
            (column == 0 || std::ranges::find(step.columns, column) != step.columns.end()))
            chains.push_back(chain);
    return chains;
}

Governed::Places Governed::by(SourceId source, const RowRef& row, int column) const {
    Places places;
    for (const Chain* chain : chainsOf(source, row, column))
        places.insert(places.end(), chain->places.begin(), chain->places.end());
    std::ranges::sort(places);
    return places;
}

Box2 Governed::box(SourceId source, const RowRef& row, int column) const {
    Box2 box;
    for (const Chain* chain : chainsOf(source, row, column))
        box.add(chain->box);
    return box;
}
