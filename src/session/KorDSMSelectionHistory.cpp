#include "session/KorDSMSelectionHistory.h"

void KorDSMSelectionHistory::record(const KorDSMPlace& place) {
    const int count = static_cast<int>(m_places.size());
    if (m_position >= 0 && m_position + 1 < count)
        m_places.push_back(KorDSMPlace(m_places[static_cast<std::size_t>(m_position)]));
    m_places.push_back(place);
    m_position = static_cast<int>(m_places.size()) - 1;
}

int KorDSMSelectionHistory::next(int direction, const Exists& exists) const {
    const int count = static_cast<int>(m_places.size());
    for (int i = m_position + direction; i >= 0 && i < count; i += direction) {
        const KorDSMPlace& place = m_places[static_cast<std::size_t>(i)];
        if (!(place == m_places[static_cast<std::size_t>(m_position)]) && exists(place))
            return i;
    }
    return -1;
}

std::optional<KorDSMPlace> KorDSMSelectionHistory::step(int direction, const Exists& exists) {
    const int reached = next(direction, exists);
    if (reached < 0)
        return std::nullopt;
    m_position = reached;
    return m_places[static_cast<std::size_t>(reached)];
}
