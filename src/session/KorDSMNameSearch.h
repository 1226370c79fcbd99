#pragma once

#include "model/items/KorDSMDatabaseItem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Which items have a text in their names, in upper or lower case. What records depend on is not searched: it
/// is made and dropped as the user works. Items that go must be told of by `namesChanged`.
class KorDSMNameSearch {
public:
    /// Looks for the text among all that is below `root`, reading what was not read yet. Returns how many
    /// items have it.
    int find(KorDSMDatabaseItem& root, const KorString& text);
    /// Reads and gathers the names that the next search looks at, if they are not at hand.
    void prepare(KorDSMDatabaseItem& root);
    /// Looks for nothing: everything passes.
    void clear();
    /// Items came, went or changed their names: the next search looks at all of them anew.
    void namesChanged();
    /// The item had the name `before`: where it was found by that, it stays found until something else is
    /// looked for.
    void renamed(const KorDSMDatabaseItem& item, const KorString& before);
    /// The item goes, or stands elsewhere.
    void forget(const KorDSMDatabaseItem& item) { m_kept.erase(&item); }

    /// The first items that were found, in the order of the tree; at most so many.
    std::vector<KorDSMDatabaseItem*> first(int atMost) const;
    /// Whether the item was found, or lies above or below one that was.
    bool passes(const KorDSMDatabaseItem& item) const;

private:
    struct Name {
        KorDSMDatabaseItem* item; // null where it had been left: see `itemAt`
        std::uint32_t parent;     // its number; the own one where the parent is the root
        std::uint32_t begin;      // in `m_folded`
        std::uint32_t length;
    };

    void gather(KorDSMDatabaseItem& item, std::optional<std::uint32_t> number);
    std::uint32_t addName(KorDSMDatabaseItem* item, const KorString& text,
                          std::optional<std::uint32_t> parent);
    KorDSMDatabaseItem* itemAt(std::uint32_t number) const;
    void look(bool onlyAmongFound);
    bool hasText(std::uint32_t number) const;
    bool isFound(const KorDSMDatabaseItem& item) const;
    bool isAboveFound(const KorDSMDatabaseItem& item) const;

    KorString m_text;                           // in lower case
    const KorDSMDatabaseItem* m_root = nullptr; // whose own name does not count
    std::vector<Name> m_names;                  // in the order of the tree
    std::string m_folded;                       // in lower case, one behind the other
    std::unordered_map<const KorDSMDatabaseItem*, std::uint32_t> m_numbers; // of those that have children
    std::vector<std::uint32_t> m_found;                                     // numbers of names with `m_text`
    std::vector<char> m_aboveFound;                       // by number; empty: nothing was looked for
    std::unordered_set<const KorDSMDatabaseItem*> m_kept; // found by the names that they had
};
