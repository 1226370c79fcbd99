#include "data/NameIndex.h"

#include <algorithm>

void NameIndex::add(const KorString& name, std::int32_t key) {
    const auto [entry, isFirst] = m_lowest.emplace(name, key);
    if (isFirst)
        return;
    m_others[name].insert(std::max(entry->second, key));
    entry->second = std::min(entry->second, key);
}

void NameIndex::remove(const KorString& name, std::int32_t key) {
    const auto lowest = m_lowest.find(name);
    const auto others = m_others.find(name);
    if (others == m_others.end()) {
        if (lowest == m_lowest.end() || lowest->second != key)
            return;
        m_lowest.erase(lowest);
        m_untried.clear();
        return;
    }
    if (lowest->second == key)
        lowest->second = *others->second.begin();
    else
        others->second.erase(key);
    others->second.erase(lowest->second);
    if (others->second.empty())
        m_others.erase(others);
}

std::int32_t NameIndex::lowestKey(const KorString& name) const {
    const auto entry = m_lowest.find(name);
    return entry == m_lowest.end() ? 0 : entry->second;
}

bool NameIndex::hasOther(const KorString& name, std::int32_t key) const {
    const std::int32_t lowest = lowestKey(name);
    return lowest != 0 && (lowest != key || m_others.contains(name));
}

KorString NameIndex::numberedFreeName(const KorString& base) {
    int& number = m_untried.try_emplace(base, 1).first->second;
    while (lowestKey(numberedName(base, number)))
        ++number;
    return numberedName(base, number);
}

KorString numberedName(const KorString& base, int number) {
    return base + KorString(" ") + KorString::number(number);
}
