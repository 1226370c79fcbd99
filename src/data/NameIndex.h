#pragma once

#include "base/KorString.h"

#include <cstdint>
#include <set>
#include <unordered_map>

/// The keys of the rows of one table by their run names.
class NameIndex {
public:
    /// Room for `count` names.
    void reserve(int count) { m_lowest.reserve(static_cast<std::size_t>(count)); }
    void add(const KorString& name, std::int32_t key);
    void remove(const KorString& name, std::int32_t key);

    /// The lowest key of the rows of this name, or 0.
    std::int32_t lowestKey(const KorString& name) const;
    /// Whether a row with another key has the name.
    bool hasOther(const KorString& name, std::int32_t key) const;
    /// `base` with the first number behind it that makes a name no row has.
    KorString numberedFreeName(const KorString& base);

private:
    std::unordered_map<KorString, std::int32_t> m_lowest;
    std::unordered_map<KorString, std::set<std::int32_t>> m_others; // rows whose name a lower key has too
    std::unordered_map<KorString, int> m_untried; // by base: the numbers before it are taken
};

/// `base` with a number behind it.
KorString numberedName(const KorString& base, int number);
