#pragma once

#include "base/Utf8.h"
#include "records/Column.h"

#include <array>

/// Texts that many rows repeat, such as titles, so that they share their buffers.
class RecentTexts {
public:
    /// Makes `value` the text `stored` of a cell of `column`. Returns false, and changes nothing, where that
    /// is no clean UTF-8.
    bool take(const Column& column, std::string_view stored, KorString& value) {
        // Run names hardly repeat.
        KorString* recent =
            column.number == 1 ? nullptr : &m_recent[std::hash<std::string_view>{}(stored) % m_recent.size()];
        if (recent && recent->view() == stored) {
            value = *recent;
            return true;
        }
        if (!isCleanUtf8(stored))
            return false;
        value = KorString(stored);
        if (recent)
            *recent = value;
        return true;
    }

private:
    std::array<KorString, 256> m_recent; // at the places of their hashes
};
