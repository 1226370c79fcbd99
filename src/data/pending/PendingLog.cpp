#include "data/pending/PendingLog.h"

#include <algorithm>

void PendingLog::beginGroup(const KorString& label) {
    if (m_depth++ == 0)
        m_labels[++m_group] = label;
}

void PendingLog::endGroup() {
    --m_depth;
}

void PendingLog::record(PendingStep step) {
    m_steps.resize(m_position);
    if (m_depth == 0)
        ++m_group;
    step.group = m_group;
    count(step, 1);
    m_steps.push_back(std::move(step));
    m_position = m_steps.size();
}

void PendingLog::count(const PendingStep& step, int by) {
    const Place place{step.source, step.table};
    if ((m_counts[place] += by) == 0)
        m_counts.erase(place);
}

bool PendingLog::hasPending(SourceId source) const {
    return std::ranges::any_of(m_counts, [source](const auto& entry) { return entry.first.first == source; });
}

std::vector<const PendingStep*> PendingLog::steps() const {
    std::vector<const PendingStep*> standing;
    for (std::size_t i = 0; i < m_position; ++i)
        standing.push_back(&m_steps[i]);
    return standing;
}

namespace {

// What the log says about one row, seen from the stored state.
struct RowHistory {
    bool appended = false;
    std::shared_ptr<StructRecord> deleted;                   // the row as it was when it was deleted
    std::vector<std::pair<const Column*, CellValue>> stored; // first old value of each changed column
};

void follow(RowHistory& row, const PendingStep& step) {
    switch (step.action) {
    case PendingStep::eAction::kAppend:
        row.appended = true;
        break;
    case PendingStep::eAction::kDelete:
        row.deleted = step.record;
        break;
    case PendingStep::eAction::kCell:
        if (std::ranges::find(row.stored, step.column, [](const auto& cell) { return cell.first; }) ==
            row.stored.end())
            row.stored.emplace_back(step.column, step.before);
        break;
    }
}

} // namespace

TableChange PendingLog::netChange(StyleSource& source, eTableType type) {
    StyleTable& table = source.table(type);
    TableChange change;
    change.table = &table.schema();
    m_scratch.clear();
    std::unordered_map<std::int32_t, RowHistory> rows;
    std::vector<std::int32_t> order;
    for (std::size_t i = 0; i < m_position; ++i) {
        const PendingStep& step = m_steps[i];
        if (step.source != source.id() || step.table != type)
            continue;
        const auto [it, fresh] = rows.try_emplace(step.key);
        if (fresh)
            order.push_back(step.key);
        follow(it->second, step);
    }
    for (const std::int32_t key : order) {
        const RowHistory& row = rows[key];
        const StructRecord* live = table.find(KorOdbcKey(key));
        if (row.appended) {
            if (live)
                change.appended.push_back(live);
        } else if (row.deleted) {
            const auto& stored = m_scratch.emplace_back(table.rows().copyOf(row.deleted.get()));
            for (const auto& [column, value] : row.stored)
                column->write(stored.get(), value);
            change.deleted.push_back(stored.get());
        } else if (live) {
            for (const auto& [column, value] : row.stored)
                if (column->read(live) != value)
                    change.cells.push_back({key, column, value, column->read(live)});
        }
    }
    return change;
}

void PendingLog::forget(SourceId source, eTableType table) {
    m_steps.resize(m_position);
    std::erase_if(m_steps,
                  [&](const PendingStep& step) { return step.source == source && step.table == table; });
    m_position = m_steps.size();
    m_counts.erase({source, table});
}

void PendingLog::forget(SourceId source) {
    if (std::ranges::none_of(m_steps, [source](const PendingStep& step) { return step.source == source; }))
        return;
    m_steps.resize(m_position);
    std::erase_if(m_steps, [source](const PendingStep& step) { return step.source == source; });
    m_position = m_steps.size();
    std::erase_if(m_counts, [source](const auto& entry) { return entry.first.first == source; });
}

KorString PendingLog::labelOf(int group) const {
    const auto it = m_labels.find(group);
    return it == m_labels.end() ? KorString() : it->second;
}

KorString PendingLog::undoLabel() const {
    return canUndo() ? labelOf(m_steps[m_position - 1].group) : KorString();
}

KorString PendingLog::redoLabel() const {
    return canRedo() ? labelOf(m_steps[m_position].group) : KorString();
}

std::vector<const PendingStep*> PendingLog::undoSteps() const {
    std::size_t first = m_position;
    while (first > 0 && m_steps[first - 1].group == m_steps[m_position - 1].group)
        --first;
    std::vector<const PendingStep*> steps;
    for (std::size_t i = first; i < m_position; ++i)
        steps.push_back(&m_steps[i]);
    return steps;
}

std::vector<const PendingStep*> PendingLog::redoSteps() const {
    std::vector<const PendingStep*> steps;
    for (std::size_t i = m_position; i < m_steps.size() && m_steps[i].group == m_steps[m_position].group; ++i)
        steps.push_back(&m_steps[i]);
    return steps;
}

std::vector<PendingStep> PendingLog::takeUndo() {
    std::vector<PendingStep> taken;
    while (canUndo() && (taken.empty() || m_steps[m_position - 1].group == taken.front().group)) {
        taken.push_back(m_steps[--m_position]);
        count(taken.back(), -1);
    }
    return taken;
}

std::vector<PendingStep> PendingLog::takeRedo() {
    std::vector<PendingStep> taken;
    while (canRedo() && (taken.empty() || m_steps[m_position].group == taken.front().group)) {
        taken.push_back(m_steps[m_position++]);
        count(taken.back(), 1);
    }
    return taken;
}
