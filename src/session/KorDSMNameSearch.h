#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <unordered_set>
#include <utility>
#include <vector>

/// Which items have a text in their names, in upper or lower case. What records depend on is not searched: it
/// is made and dropped as the user works. Items that go must be told of by `namesChanged`.
class KorDSMNameSearch {
public:
    /// Looks for the text among all that is below `root`, reading what was not read yet. Returns what was
    /// found, in the order of the tree.
    std::vector<KorDSMDatabaseItem*> find(KorDSMDatabaseItem& root, const KorString& text);
    /// Looks for nothing: everything passes.
    void clear();
    /// Items came, went or changed their names: the next search looks at all of them anew.
    void namesChanged() { m_names.clear(); }

    /// Whether the item was found, or lies above or below one that was.
    bool passes(const KorDSMDatabaseItem& item) const;
    /// The first one that was found; null without one.
    KorDSMDatabaseItem* first() const;

private:
    void gather(KorDSMDatabaseItem& item);

    KorString m_text;                                               // in lower case
    std::vector<std::pair<KorString, KorDSMDatabaseItem*>> m_names; // in lower case
    std::unordered_set<const KorDSMDatabaseItem*> m_found;
    std::unordered_set<const KorDSMDatabaseItem*> m_aboveFound;
};
