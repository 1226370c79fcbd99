#pragma once

#include "records/StructRecord.h"

#include <algorithm>
#include <memory>
#include <vector>

/// The rows of one table in memory, in ascending order of their keys, as records of the table's own type.
class RowArray {
public:
    virtual ~RowArray() = default;

    virtual int size() const = 0;
    virtual StructRecord& at(int index) = 0;
    virtual const StructRecord& at(int index) const = 0;
    /// Room for `count` rows.
    virtual void reserve(int count) = 0;
    /// Appends a record with default values and returns it; the caller gives it a key above all others.
    virtual StructRecord& append() = 0;
    /// Inserts a copy of `record` (of this table's type) at the place of its key.
    virtual void insert(const StructRecord& record) = 0;
    virtual void removeAt(int index) = 0;
    virtual void clear() = 0;
    /// Sorts by key, for stores that deliver rows in another order.
    virtual void sort() = 0;
    /// A heap copy of `record`, or of a default record when it is null; freed by the deleter it carries.
    virtual std::shared_ptr<StructRecord> copyOf(const StructRecord* record) const = 0;
    /// Assigns one record of this table's type to another.
    virtual void assign(StructRecord& to, const StructRecord& from) const = 0;
    virtual bool equal(const StructRecord& a, const StructRecord& b) const = 0;

    /// Index of the row with this key, or -1. Keys mostly follow each other, so the first guess is the key
    /// itself; otherwise a binary search.
    int indexOfKey(std::int32_t key) const;
    /// The row with this key, or null.
    StructRecord* find(std::int32_t key) {
        const int index = indexOfKey(key);
        return index < 0 ? nullptr : &at(index);
    }
    const StructRecord* find(std::int32_t key) const { return const_cast<RowArray*>(this)->find(key); }
};

template <typename R>
class TypedRowArray final : public RowArray {
public:
    int size() const override { return static_cast<int>(m_rows.size()); }
    R& at(int index) override { return m_rows[static_cast<std::size_t>(index)]; }
    const R& at(int index) const override { return m_rows[static_cast<std::size_t>(index)]; }
    void reserve(int count) override { m_rows.reserve(static_cast<std::size_t>(count)); }
    R& append() override { return m_rows.emplace_back(); }
    void insert(const StructRecord& record) override {
        m_rows.insert(std::ranges::lower_bound(m_rows, record.key, {}, &R::key),
                      static_cast<const R&>(record));
    }
    void removeAt(int index) override { m_rows.erase(m_rows.begin() + index); }
    void clear() override { m_rows.clear(); }
    void sort() override {
        if (!std::ranges::is_sorted(m_rows, {}, &R::key))
            std::ranges::stable_sort(m_rows, {}, &R::key);
    }
    std::shared_ptr<StructRecord> copyOf(const StructRecord* record) const override {
        return record ? std::make_shared<R>(static_cast<const R&>(*record)) : std::make_shared<R>();
    }
    void assign(StructRecord& to, const StructRecord& from) const override {
        static_cast<R&>(to) = static_cast<const R&>(from);
    }
    bool equal(const StructRecord& a, const StructRecord& b) const override {
        return static_cast<const R&>(a) == static_cast<const R&>(b);
    }

private:
    std::vector<R> m_rows;
};
