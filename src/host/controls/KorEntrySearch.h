#pragma once

#include "base/KorTreeHandle.h"

#include <QStringList>

#include <unordered_set>
#include <vector>

class KorTreeModel;
struct KorTreeEntry;

/// Which entries of a tree have what was typed: all its words, in any order, in upper or lower case, in their
/// paths. Only entries that can be chosen count.
class KorEntrySearch {
public:
    /// Looks through all entries; a text without words finds nothing.
    void look(const KorTreeModel& entries, const QString& typed);

    /// Whether there is anything to look for.
    bool isSet() const { return !m_words.isEmpty(); }
    /// In the order of the tree.
    const std::vector<KorTreeHandle>& found() const { return m_found; }
    /// What is called or begins as was typed, else the first that has all words in its own name, else the
    /// first that was found; null when none was.
    KorTreeHandle best() const { return m_best ? m_best : m_found.empty() ? nullptr : m_found.front(); }
    /// The one that was found next to `from`, above or below; null when there is none.
    KorTreeHandle nextTo(KorTreeHandle from, bool isBelow) const;
    /// Whether the entry was found, or lies above one that was.
    bool isShown(const KorTreeEntry& entry) const { return m_shown.contains(&entry); }

private:
    /// `above` tells which words the names above have. Returns whether there is something to be shown.
    bool lookAt(KorTreeEntry& entry, quint64 above);

    QString m_typed;
    QStringList m_words;
    quint64 m_all = 0; // a bit for each word
    std::vector<KorTreeHandle> m_found;
    std::unordered_set<const KorTreeEntry*> m_shown;
    KorTreeHandle m_best = nullptr;
};
