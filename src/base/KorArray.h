#pragma once

#include "base/KorAssert.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

/// Growable array with a logical length and a physical length (its capacity, which never grows by less
/// than the growth step). A bad index reports "isValid( index )" and yields a default element, so that
/// reading goes on; writing to that element has no effect on the array.
template <typename T>
class KorArray {
public:
    static constexpr int kGrowthStep = 8;

    KorArray() = default;
    KorArray(std::initializer_list<T> items) : m_items(items) {}

    int length() const { return static_cast<int>(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }
    bool isValid(int index) const { return index >= 0 && index < length(); }

    /// Changes the logical length; new elements are default values. A negative length reports "len>=0"
    /// and changes nothing.
    void setLength(int len) {
        if (KorAssert::check(len >= 0, "len>=0"))
            m_items.resize(static_cast<std::size_t>(len));
    }

    T& operator[](int index) {
        if (!KorAssert::check(isValid(index), "isValid( index )"))
            return fallback();
        return m_items[static_cast<std::size_t>(index)];
    }
    const T& operator[](int index) const { return const_cast<KorArray&>(*this)[index]; }

    void append(T item) {
        grow();
        m_items.push_back(std::move(item));
    }

    /// Inserts before `index`; `length()` appends. A bad index reports and changes nothing.
    void insertAt(int index, T item) {
        if (!KorAssert::check(index >= 0 && index <= length(), "isValid( index )"))
            return;
        grow();
        m_items.insert(m_items.begin() + index, std::move(item));
    }

    /// Removes one element, later ones move down by one. A bad index reports and changes nothing.
    void removeAt(int index) {
        if (KorAssert::check(isValid(index), "isValid( index )"))
            m_items.erase(m_items.begin() + index);
    }

    /// Index of the first element equal to `item`, or -1.
    int find(const T& item) const {
        const auto it = std::find(m_items.begin(), m_items.end(), item);
        return it == m_items.end() ? -1 : static_cast<int>(it - m_items.begin());
    }

    void clear() { m_items.clear(); }
    void reserve(int len) { m_items.reserve(static_cast<std::size_t>(std::max(len, 0))); }

    auto begin() { return m_items.begin(); }
    auto end() { return m_items.end(); }
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

    bool operator==(const KorArray&) const = default;

private:
    void grow() {
        if (m_items.size() == m_items.capacity())
            m_items.reserve(m_items.size() + std::max<std::size_t>(kGrowthStep, m_items.size() / 2));
    }

    static T& fallback() {
        static T item;
        item = T{};
        return item;
    }

    std::vector<T> m_items;
};
