#include "data/pending/PendingLog.h"

#include <algorithm>
#include <functional>

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

using Steps = std::vector<const PendingStep*>;
using RowSteps = std::span<const PendingStep* const>;

// The changed cells of one row with what they held before the first change, in the order of the changes.
void forFirstChanges(RowSteps steps, const std::function<void(const Column&, const CellValue&)>& visit) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const PendingStep& step = *steps[i];
        const auto sameColumn = [&step](const PendingStep* earlier) {
            return earlier->column == step.column;
        };
        if (step.action == PendingStep::eAction::kCell && std::ranges::none_of(steps.first(i), sameColumn))
            visit(*step.column, step.before);
    }
}

bool hasAction(RowSteps steps, PendingStep::eAction action) {
    return std::ranges::find(steps, action, &PendingStep::action) != steps.end();
}

} // namespace

TableChange PendingLog::netChange(StyleSource& source, eTableType type) {
    StyleTable& table = source.table(type);
    TableChange change;
    change.table = &table.schema();
    m_scratch.clear();
    Steps steps;
    for (std::size_t i = 0; i < m_position; ++i)
        if (m_steps[i].source == source.id() && m_steps[i].table == type)
            steps.push_back(&m_steps[i]);
    std::ranges::stable_sort(steps, {}, &PendingStep::key);
    for (auto begin = steps.begin(); begin != steps.end();) {
        const std::int32_t key = (*begin)->key;
        const auto end =
            std::find_if(begin, steps.end(), [key](const PendingStep* step) { return step->key != key; });
        addRowChange(table, RowSteps(begin, end), change);
        begin = end;
    }
    return change;
}

void PendingLog::addRowChange(const StyleTable& table, RowSteps steps, TableChange& change) {
    const std::int32_t key = steps.front()->key;
    const StructRecord* live = table.find(KorOdbcKey(key));
    if (hasAction(steps, PendingStep::eAction::kAppend)) {
        if (live)
            change.appended.push_back(live);
    } else if (hasAction(steps, PendingStep::eAction::kDelete)) {
        // The row as it is stored: as it was when it was deleted, with earlier changes taken back.
        const auto& stored = m_scratch.emplace_back(table.rows().copyOf(steps.back()->record.get()));
        forFirstChanges(steps, [&](const Column& column, const CellValue& before) {
            column.write(stored.get(), before);
        });
        change.deleted.push_back(stored.get());
    } else if (live) {
        forFirstChanges(steps, [&](const Column& column, const CellValue& before) {
            CellValue wanted = column.read(live);
            if (wanted != before)
                change.cells.push_back({key, &column, before, std::move(wanted)});
        });
    }
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

PendingCommand PendingLog::command(std::size_t first, std::size_t last) const {
    const auto label = m_labels.find(m_steps[first].group);
    return {label == m_labels.end() ? KorString() : label->second,
            std::span(m_steps).subspan(first, last - first)};
}

std::vector<PendingCommand> PendingLog::undoable(std::size_t most) const {
    std::vector<PendingCommand> commands;
    std::size_t last = m_position;
    while (last > 0 && commands.size() < most) {
        std::size_t first = last - 1;
        while (first > 0 && m_steps[first - 1].group == m_steps[first].group)
            --first;
        commands.push_back(command(first, last));
        last = first;
    }
    return commands;
}

std::vector<PendingCommand> PendingLog::redoable(std::size_t most) const {
    std::vector<PendingCommand> commands;
    std::size_t first = m_position;
    while (first < m_steps.size() && commands.size() < most) {
        std::size_t last = first + 1;
        while (last < m_steps.size() && m_steps[last].group == m_steps[first].group)
            ++last;
        commands.push_back(command(first, last));
        first = last;
    }
    return commands;
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
