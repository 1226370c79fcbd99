#include "controls/KorEntrySearch.h"

#include "controls/KorQt.h"
#include "controls/KorTreeModel.h"

#include <algorithm>

namespace {

// How well a name that has all words fits what was typed, 0 best: "5" means the fifth colour, not the
// fiftieth.
int distance(const QString& name, const QString& typed) {
    if (!name.startsWith(typed, Qt::CaseInsensitive))
        return 3;
    if (name.size() == typed.size())
        return 0;
    return name[typed.size()].isLetterOrNumber() ? 2 : 1;
}

} // namespace

void KorEntrySearch::look(const KorTreeModel& entries, const QString& typed) {
    constexpr int kMost = 32;
    m_typed = typed.trimmed();
    m_words = typed.split(u' ', Qt::SkipEmptyParts).mid(0, kMost);
    m_all = (quint64{1} << m_words.size()) - 1;
    m_found.clear();
    m_shown.clear();
    m_best = nullptr;
    for (int i = 0; isSet() && i < entries.childCount(nullptr); ++i)
        lookAt(*entries.childAt(nullptr, i), 0);
}

bool KorEntrySearch::lookAt(KorTreeEntry& entry, quint64 above) {
    const QString name = toQt(entry.text);
    quint64 own = 0;
    for (qsizetype i = 0; i < m_words.size(); ++i)
        if (name.contains(m_words[i], Qt::CaseInsensitive))
            own |= quint64{1} << i;
    bool isShown = entry.selectable && (own | above) == m_all;
    if (isShown) {
        m_found.push_back(&entry);
        if (own == m_all && (!m_best || distance(name, m_typed) < distance(toQt(m_best->text), m_typed)))
            m_best = &entry;
    }
    for (const auto& child : entry.children)
        isShown = lookAt(*child, own | above) || isShown;
    if (isShown)
        m_shown.insert(&entry);
    return isShown;
}

KorTreeHandle KorEntrySearch::nextTo(KorTreeHandle from, bool isBelow) const {
    const auto at = std::ranges::find(m_found, from);
    if (at == m_found.end())
        return best();
    if (isBelow)
        return at + 1 == m_found.end() ? nullptr : *(at + 1);
    return at == m_found.begin() ? nullptr : *(at - 1);
}
