#include "session/KorDSMSelectionHistory.h"

void KorDSMSelectionHistory::record(KorTreeHandle entry, KorDSMDefines::eViewSections section) {
    if (canGoForward())
        m_entries.push_back(Entry(m_entries[static_cast<std::size_t>(m_position)]));
    m_entries.push_back({entry, section, false});
    m_position = static_cast<int>(m_entries.size()) - 1;
}

void KorDSMSelectionHistory::markStale(KorTreeHandle entry) {
    for (Entry& visited : m_entries)
        if (visited.entry == entry)
            visited.stale = true;
}

std::optional<KorDSMSelectionHistory::Entry> KorDSMSelectionHistory::step(int direction) {
    const int end = direction < 0 ? 0 : static_cast<int>(m_entries.size()) - 1;
    if (m_entries.empty() || m_position == end)
        return std::nullopt;
    const auto at = [this](int index) -> const Entry& { return m_entries[static_cast<std::size_t>(index)]; };
    const KorTreeHandle start = at(m_position).entry;
    do
        m_position += direction;
    while (m_position != end && (at(m_position).stale || at(m_position).entry == start));
    if (at(m_position).stale)
        return std::nullopt;
    return at(m_position);
}
