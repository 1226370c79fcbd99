#include "session/KorDSMNameSearch.h"

#include "model/KorDSMDependencies.h"
#include "session/KorDSMItemContent.h"

// A scan over folded names takes a fraction of what filtering entries would.
std::vector<KorDSMDatabaseItem*> KorDSMNameSearch::find(KorDSMDatabaseItem& root, const KorString& text) {
    m_text = text.trimmed().lowered();
    m_found.clear();
    m_aboveFound.clear();
    if (m_names.empty())
        gather(root);
    std::vector<KorDSMDatabaseItem*> found;
    for (const auto& [name, item] : m_names) {
        if (name.view().find(m_text.view()) == std::string_view::npos)
            continue;
        found.push_back(item);
        m_found.insert(item);
        for (const KorDSMDatabaseItem* above = item->parent(); above && m_aboveFound.insert(above).second;)
            above = above->parent();
    }
    return found;
}

void KorDSMNameSearch::clear() {
    m_text = {};
    m_names.clear();
    m_found.clear();
    m_aboveFound.clear();
}

bool KorDSMNameSearch::passes(const KorDSMDatabaseItem& item) const {
    if (m_text.isEmpty() || m_aboveFound.contains(&item))
        return true;
    const KorDSMDatabaseItem* step = &item;
    while (step && !m_found.contains(step))
        step = step->parent();
    return step != nullptr;
}

KorDSMDatabaseItem* KorDSMNameSearch::first() const {
    for (const auto& [name, item] : m_names)
        if (m_found.contains(item))
            return item;
    return nullptr;
}

void KorDSMNameSearch::gather(KorDSMDatabaseItem& item) {
    if (KorDSMDependencies::canHaveDependents(item.type()))
        return;
    KorDSMItemContent::load(item);
    for (KorDSMDatabaseItem* child : item.children()) {
        m_names.emplace_back(child->getDisplayName().lowered(), child);
        gather(*child);
    }
}
