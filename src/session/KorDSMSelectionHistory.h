#pragma once

#include "model/items/KorDSMTreeItemData.h"

#include <optional>
#include <vector>

/// The selections made in the four trees, in order, with a current position. It lives as long as the editor
/// is open; entries whose items are deleted become stale and are skipped, never removed.
class KorDSMSelectionHistory {
public:
    struct Entry {
        KorTreeHandle entry = nullptr;
        KorDSMDefines::eViewSections section = KorDSMDefines::kViewDetailStyles;
        bool stale = false;
    };

    /// Appends a selection and makes it current. When the position is not at the end, the entry there is
    /// appended again first, so that leaving the middle of the history loses nothing.
    void record(KorTreeHandle entry, KorDSMDefines::eViewSections section);
    /// The entry's item is gone.
    void markStale(KorTreeHandle entry);

    bool canGoBack() const { return !m_entries.empty() && m_position > 0; }
    bool canGoForward() const { return m_position + 1 < static_cast<int>(m_entries.size()); }
    /// Moves back or forward past stale entries and past those of the starting tree entry. Returns the entry
    /// to show, or nothing when only stale ones were left.
    std::optional<Entry> goBack() { return step(-1); }
    std::optional<Entry> goForward() { return step(1); }

    int position() const { return m_position; }
    const std::vector<Entry>& entries() const { return m_entries; }

private:
    std::optional<Entry> step(int direction);

    std::vector<Entry> m_entries;
    int m_position = -1;
};
