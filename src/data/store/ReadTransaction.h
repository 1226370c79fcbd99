#pragma once

#include "data/store/StyleStore.h"

/// From its construction to its destruction all tables of a store are read in one state of the database.
class ReadTransaction {
public:
    /// `store` must outlive it.
    explicit ReadTransaction(StyleStore& store) : m_store(store), m_result(store.beginRead(m_state)) {}
    ~ReadTransaction() { m_store.endRead(); }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

    StyleStore& store() const { return m_store; }
    /// A failure where nothing can be read.
    const Result<>& result() const { return m_result; }
    /// The number of the state, as `StyleStore::beginRead` gives it.
    std::int64_t state() const { return m_state; }

private:
    StyleStore& m_store;
    std::int64_t m_state = 0;
    Result<> m_result;
};
