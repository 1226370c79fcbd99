#pragma once

#include "data/StyleDatabases.h"
#include "session/FieldPlace.h"

/// While one lives the tables in memory show what is stored, without what is pending. Nothing is written, and
/// nothing may be changed meanwhile.
class StoredState {
public:
    explicit StoredState(StyleDatabases& databases);
    ~StoredState();
    StoredState(const StoredState&) = delete;
    StoredState& operator=(const StoredState&) = delete;

private:
    void apply(const PendingStep& step, bool forward);

    StyleDatabases& m_databases;
    std::vector<const PendingStep*> m_steps;
};

/// While one lives the current source shows what is being typed as if it were written. Nothing else may be
/// changed meanwhile.
class TypedState {
public:
    explicit TypedState(const std::optional<FieldPlace>& field);
    ~TypedState();
    TypedState(const TypedState&) = delete;
    TypedState& operator=(const TypedState&) = delete;

private:
    StyleSource* m_source;
    const Column* m_column = nullptr; // null: nothing is being typed
    RowRef m_row;
    CellValue m_before;
};
