#include "session/StoredState.h"

#include <ranges>

StoredState::StoredState(StyleDatabases& databases)
    : m_databases(databases), m_steps(databases.pending().steps()) {
    for (const PendingStep* step : std::views::reverse(m_steps))
        apply(*step, false);
}

StoredState::~StoredState() {
    for (const PendingStep* step : m_steps)
        apply(*step, true);
}

void StoredState::apply(const PendingStep& step, bool forward) {
    StyleSource& source = *m_databases.source(step.source);
    const KorOdbcKey key(step.key);
    if (step.action == PendingStep::eAction::kCell)
        source.setCell(step.table, key, *step.column, forward ? step.after : step.before);
    else if ((step.action == PendingStep::eAction::kAppend) == forward)
        source.insert(step.table, *step.record);
    else
        source.remove(step.table, key);
}

TypedState::TypedState(const std::optional<FieldPlace>& field) : m_source(StyleDatabases::current().here()) {
    if (!m_source || !field || !field->typed)
        return;
    m_row = field->row;
    const Column* column = findTable(m_row.table)->column(field->column);
    const StructRecord* record = m_source->table(m_row.table).find(KorOdbcKey(m_row.key));
    if (!column || !record || !column->canHold(*field->typed))
        return;
    m_column = column;
    m_before = column->read(record);
    m_source->setCell(m_row.table, KorOdbcKey(m_row.key), *column, *field->typed);
}

TypedState::~TypedState() {
    if (m_column)
        m_source->setCell(m_row.table, KorOdbcKey(m_row.key), *m_column, m_before);
}
