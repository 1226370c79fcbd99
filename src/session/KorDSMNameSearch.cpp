#include "session/KorDSMNameSearch.h"

#include "model/KorDSMDependencies.h"
#include "session/KorDSMItemContent.h"

#include <algorithm>

namespace {

bool contains(const KorString& name, const KorString& lowered) {
    return name.lowered().view().find(lowered.view()) != std::string_view::npos;
}

} // namespace

int KorDSMNameSearch::find(KorDSMDatabaseItem& root, const KorString& text) {
    const KorString before = m_text;
    m_text = text.trimmed().lowered();
    m_root = &root;
    if (m_text != before)
        m_kept.clear();
    prepare(root);
    // A text that became longer can only be in the names that had the shorter one.
    look(!m_aboveFound.empty() && m_text.view().find(before.view()) != std::string_view::npos);
    return static_cast<int>(m_found.size());
}

void KorDSMNameSearch::prepare(KorDSMDatabaseItem& root) {
    if (m_names.empty())
        gather(root, {});
}

void KorDSMNameSearch::clear() {
    m_text = {};
    m_kept.clear();
    namesChanged();
}

void KorDSMNameSearch::renamed(const KorDSMDatabaseItem& item, const KorString& before) {
    if (!m_text.isEmpty() && contains(before, m_text))
        m_kept.insert(&item);
}

bool KorDSMNameSearch::isFound(const KorDSMDatabaseItem& item) const {
    return m_kept.contains(&item) || contains(item.getDisplayName(), m_text);
}

void KorDSMNameSearch::namesChanged() {
    m_names = {};
    m_folded = {};
    m_numbers = {};
    m_found = {};
    m_aboveFound = {};
}

bool KorDSMNameSearch::passes(const KorDSMDatabaseItem& item) const {
    if (m_text.isEmpty() || isAboveFound(item))
        return true;
    const KorDSMDatabaseItem* step = &item;
    while (step && step != m_root && !isFound(*step))
        step = step->parent();
    return step && step != m_root;
}

bool KorDSMNameSearch::isAboveFound(const KorDSMDatabaseItem& item) const {
    const auto it = m_numbers.find(&item);
    return it != m_numbers.end() && !m_aboveFound.empty() && m_aboveFound[it->second];
}

std::vector<KorDSMDatabaseItem*> KorDSMNameSearch::first(int atMost) const {
    std::vector<KorDSMDatabaseItem*> items;
    for (std::size_t i = 0; i < std::min(m_found.size(), static_cast<std::size_t>(atMost)); ++i)
        items.push_back(itemAt(m_found[i]));
    return items;
}

// One that had been left is a child of the item above, behind which all of its children are numbered.
KorDSMDatabaseItem* KorDSMNameSearch::itemAt(std::uint32_t number) const {
    const Name& name = m_names[number];
    if (name.item)
        return name.item;
    return m_names[name.parent].item->children()[static_cast<int>(number - name.parent) - 1];
}

// Hundreds of thousands of names are looked through at a key, and most of them may have the text: nothing is
// allocated for one of them.
void KorDSMNameSearch::look(bool onlyAmongFound) {
    if (onlyAmongFound) {
        std::erase_if(m_found, [this](std::uint32_t number) { return !hasText(number); });
    } else {
        m_found.clear();
        for (std::uint32_t number = 0; number < m_names.size(); ++number)
            if (hasText(number))
                m_found.push_back(number);
    }
    m_aboveFound.assign(m_names.size(), false);
    for (const std::uint32_t number : m_found)
        for (std::uint32_t at = number, above = m_names[at].parent; above != at && !m_aboveFound[above];
             at = above, above = m_names[at].parent)
            m_aboveFound[above] = true;
}

bool KorDSMNameSearch::hasText(std::uint32_t number) const {
    const Name& name = m_names[number];
    return std::string_view(m_folded).substr(name.begin, name.length).find(m_text.view()) !=
               std::string_view::npos ||
           (!m_kept.empty() && m_kept.contains(name.item));
}

std::uint32_t KorDSMNameSearch::addName(KorDSMDatabaseItem* item, const KorString& text,
                                        std::optional<std::uint32_t> parent) {
    const KorString name = text.lowered();
    const auto own = static_cast<std::uint32_t>(m_names.size());
    m_names.push_back({item, parent.value_or(own), static_cast<std::uint32_t>(m_folded.size()),
                       static_cast<std::uint32_t>(name.size())});
    m_folded += name.view();
    return own;
}

void KorDSMNameSearch::gather(KorDSMDatabaseItem& item, std::optional<std::uint32_t> number) {
    if (KorDSMDependencies::canHaveDependents(item.type()))
        return;
    KorDSMItemContent::load(item);
    if (number && item.hasChildrenLeft()) {
        for (const StructRecord* row : item.rowsOfChildrenLeft())
            addName(nullptr, row->getRunBezeichnung(), number);
        return;
    }
    for (KorDSMDatabaseItem* child : item.children()) {
        const std::uint32_t own = addName(child, child->getDisplayName(), number);
        gather(*child, own);
        if (m_names.size() > own + 1) // what is below it was looked at
            m_numbers.emplace(child, own);
    }
}
