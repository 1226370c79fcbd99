#pragma once

#include "base/KorAssert.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

class KorDSMDatabaseItem;

/// The children of an item in their order, to look at: the item owns them. Valid until they change.
class KorDSMItemList {
public:
    using Owned = std::vector<std::unique_ptr<KorDSMDatabaseItem>>;

    class Iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = KorDSMDatabaseItem*;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = KorDSMDatabaseItem*;

        Iterator() = default;
        explicit Iterator(const std::unique_ptr<KorDSMDatabaseItem>* at) : m_at(at) {}
        reference operator*() const { return m_at->get(); }
        reference operator[](difference_type step) const { return m_at[step].get(); }
        Iterator& operator++() { return *this += 1; }
        Iterator& operator--() { return *this -= 1; }
        Iterator operator++(int) { return Iterator(m_at++); }
        Iterator operator--(int) { return Iterator(m_at--); }
        Iterator& operator+=(difference_type step) {
            m_at += step;
            return *this;
        }
        Iterator& operator-=(difference_type step) { return *this += -step; }
        friend Iterator operator+(Iterator at, difference_type step) { return at += step; }
        friend Iterator operator+(difference_type step, Iterator at) { return at += step; }
        friend Iterator operator-(Iterator at, difference_type step) { return at -= step; }
        friend difference_type operator-(Iterator a, Iterator b) { return a.m_at - b.m_at; }
        auto operator<=>(const Iterator&) const = default;

    private:
        const std::unique_ptr<KorDSMDatabaseItem>* m_at = nullptr;
    };

    explicit KorDSMItemList(const Owned& items) : m_items(&items) {}

    int length() const { return static_cast<int>(m_items->size()); }
    bool isEmpty() const { return m_items->empty(); }
    /// The child at this place; null, and reported, for a place that is none.
    KorDSMDatabaseItem* operator[](int index) const {
        return KorAssert::check(index >= 0 && index < length(), "isValid( index )") ? begin()[index]
                                                                                    : nullptr;
    }
    /// The place of the child, or -1.
    int find(const KorDSMDatabaseItem* item) const {
        const auto it = std::find(begin(), end(), item);
        return it == end() ? -1 : static_cast<int>(it - begin());
    }
    Iterator begin() const { return Iterator(m_items->data()); }
    Iterator end() const { return Iterator(m_items->data() + m_items->size()); }

private:
    const Owned* m_items;
};

template <>
inline constexpr bool std::ranges::enable_borrowed_range<KorDSMItemList> = true;
