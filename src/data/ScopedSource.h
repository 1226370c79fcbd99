#pragma once

#include "data/StyleDatabases.h"

/// Makes a source of the current databases current for its lifetime and restores the previous one.
class ScopedSource {
public:
    explicit ScopedSource(SourceId id) : m_previous(StyleDatabases::current().currentSource()) {
        StyleDatabases::current().setCurrentSource(id);
    }
    ~ScopedSource() { StyleDatabases::current().setCurrentSource(m_previous); }
    ScopedSource(const ScopedSource&) = delete;
    ScopedSource& operator=(const ScopedSource&) = delete;

private:
    SourceId m_previous;
};
