#include "controls/VELComboTreeBuilder.h"

#include "controls/VELComboTree.h"

void VELComboTreeBuilder::installHandlers(std::function<void(int)> start, std::function<void(int)> step,
                                          std::function<void()> end) {
    m_start = std::move(start);
    m_step = std::move(step);
    m_end = std::move(end);
}

void VELComboTreeBuilder::build(VELComboTree& combo) const {
    const KorString chosen = combo.getSelectedPath();
    combo.deleteAll();
    if (m_start)
        m_start(static_cast<int>(m_entries.size()));
    std::size_t done = 0;
    std::size_t percent = 0;
    for (const Entry& entry : m_entries) {
        if (const KorTreeHandle added = combo.addEntry(entry.path, entry.image))
            added->selectable = entry.selectable;
        const std::size_t now = ++done * 100 / m_entries.size();
        if (now != percent && m_step)
            m_step(static_cast<int>(now));
        percent = now;
    }
    if (m_end)
        m_end();
    combo.selectPath(chosen);
}
