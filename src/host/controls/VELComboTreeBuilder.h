#pragma once

#include "base/KorString.h"

#include <functional>
#include <vector>

class VELComboTree;

/// Collects the entries of a combo tree and puts them into the combo in one go, reporting progress.
class VELComboTreeBuilder {
public:
    void clear() { m_entries.clear(); }

    /// Adds an entry that only holds others and cannot be chosen.
    void addGroup(const KorString& path, int image = -1) { m_entries.push_back({path, image, false}); }
    /// Adds an entry by its path (names joined by `VELComboTree::GetPathDelimiter()`).
    void addEntry(const KorString& path, int image = -1) { m_entries.push_back({path, image, true}); }

    /// What to call when building starts (with the number of entries), after each hundredth of it (with
    /// the percentage done), and when it ends. Each can be empty.
    void installHandlers(std::function<void(int)> start, std::function<void(int)> step,
                         std::function<void()> end);

    /// Replaces the combo's entries; the chosen path stays chosen when it is still there.
    void build(VELComboTree& combo) const;

private:
    struct Entry {
        KorString path;
        int image;
        bool selectable;
    };

    std::vector<Entry> m_entries;
    std::function<void(int)> m_start;
    std::function<void(int)> m_step;
    std::function<void()> m_end;
};
