#include "data/pending/PendingLog.h"

#include <algorithm>
#include <functional>
#include <utility>

void PendingLog::beginGroup(const KorString& label) {
    if (m_depth++ == 0)
        m_labels[++m_group] = label;
}

void PendingLog::endGroup() {
    --m_depth;
    tell();
}

void PendingLog::record(PendingStep step) {
    m_steps.resize(m_position);
    if (m_depth == 0)
        ++m_group;
    step.group = m_group;
    count(step, 1);
    m_steps.push_back(std::move(step));
    m_position = m_steps.size();
    tell();
}

void PendingLog::setObserver(std::unique_ptr<PendingObserver> observer) {
    m_observer = std::move(observer);
    m_told = 0;
    m_forgotten.clear();
    tell();
}

void PendingLog::dismissObserver() {
    if (m_observer)
        m_observer->emptied();
    setObserver({});
}

void PendingLog::announceStoring(SourceId source, std::span<const eTableType> tables, std::uint32_t mark) {
    std::vector<PendingPlace> places;
    for (const eTableType table : tables)
        places.emplace_back(source, table);
    if (m_observer && !places.empty())
        m_observer->storing(places, mark);
}

void PendingLog::announceNotStored() {
    if (m_observer)
        m_observer->notStored();
}

void PendingLog::takeOver(std::shared_ptr<RecoveryFile> file) {
    if (!m_observer)
        return;
    m_observer->takeOver(std::move(file));
    m_tookOver = true;
    tell();
}

PendingLog::Commands PendingLog::commands() const {
    Commands all;
    for (std::size_t i = 0; i < m_position; ++i) {
        const PendingStep& step = m_steps[i];
        if (i == 0 || m_steps[i - 1].group != step.group)
            all.emplace_back(command(i, i + 1).label, std::vector<PendingStep>());
        all.back().second.push_back(step);
    }
    return all;
}

void PendingLog::standAs(const Commands& commands) {
    const Hold together(*this);
    for (std::size_t i = 0; i < m_told; ++i)
        if (const PendingPlace place{m_steps[i].source, m_steps[i].table};
            std::ranges::find(m_forgotten, place) == m_forgotten.end())
            m_forgotten.push_back(place);
    m_told = m_position = 0;
    m_steps.clear();
    m_counts.clear();
    for (const auto& [label, steps] : commands) {
        const int group = steps.front().group > 0 ? steps.front().group : ++m_group;
        m_labels[group] = label;
        for (const PendingStep& step : steps) {
            count(step, 1);
            m_steps.push_back(step);
            m_steps.back().group = group;
        }
    }
    m_position = m_steps.size();
}

std::vector<PendingStep> PendingLog::takenBack() const {
    return {m_steps.begin() + static_cast<std::ptrdiff_t>(m_position), m_steps.end()};
}

void PendingLog::setTakenBack(const std::vector<PendingStep>& steps) {
    forgetTakenBack();
    m_steps.insert(m_steps.end(), steps.begin(), steps.end());
}

void PendingLog::tell() {
    if (m_depth > 0 || m_holds > 0)
        return;
    const std::vector<PendingPlace> forgotten = std::exchange(m_forgotten, {});
    const std::size_t known = std::exchange(m_told, m_position);
    const bool tookOver = std::exchange(m_tookOver, false);
    if (!m_observer || (known == m_position && forgotten.empty() && !tookOver))
        return;
    if (m_position == 0)
        return m_observer->emptied();
    std::vector<PendingCommand> made;
    for (std::size_t first = known; first < m_position;) {
        std::size_t last = first + 1;
        while (last < m_position && m_steps[last].group == m_steps[first].group)
            ++last;
        made.push_back(command(first, last));
        first = last;
    }
    m_observer->changed(forgotten, made);
}

void PendingLog::count(const PendingStep& step, int by) {
    const auto counted = m_counts.try_emplace({step.source, step.table}).first;
    counted->second += by;
    if (counted->second == 0)
        m_counts.erase(counted);
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

// The first changes of the cells of one row, in the order in which they were made.
void forFirstChanges(RowSteps steps, const std::function<void(const PendingStep&)>& visit) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const PendingStep& step = *steps[i];
        const auto sameColumn = [&step](const PendingStep* earlier) {
            return earlier->column == step.column;
        };
        if (step.action == PendingStep::eAction::kCell && std::ranges::none_of(steps.first(i), sameColumn))
            visit(step);
    }
}

} // namespace

TableChange PendingLog::netChange(SourceId source, eTableType type) {
    TableChange change;
    change.table = findTable(type);
    m_scratch.clear();
    Steps steps;
    for (std::size_t i = 0; i < m_position; ++i)
        if (m_steps[i].source == source && m_steps[i].table == type)
            steps.push_back(&m_steps[i]);
    std::ranges::stable_sort(steps, {}, &PendingStep::key);
    const auto rows = change.table->makeRows();
    for (auto begin = steps.begin(); begin != steps.end();) {
        const std::int32_t key = (*begin)->key;
        const auto end =
            std::find_if(begin, steps.end(), [key](const PendingStep* step) { return step->key != key; });
        addRowChange(*rows, RowSteps(begin, end), change);
        begin = end;
    }
    return change;
}

void PendingLog::addRowChange(const RowArray& rows, RowSteps steps, TableChange& change) {
    using enum PendingStep::eAction;
    if (const auto appended = std::ranges::find(steps, kAppend, &PendingStep::action);
        appended != steps.end()) {
        if (std::find_if(appended, steps.end(),
                         [](const PendingStep* step) { return step->action == kDelete; }) != steps.end())
            return;
        const auto& record = m_scratch.emplace_back(rows.copyOf((*appended)->record.get()));
        for (const PendingStep* step : RowSteps(appended + 1, steps.end()))
            if (step->action == kCell)
                step->column->write(record.get(), step->after);
        change.appended.push_back(record.get());
    } else if (const auto deleted = std::ranges::find(steps, kDelete, &PendingStep::action);
               deleted != steps.end()) {
        // The row as it is stored: as it was when it was deleted, with earlier changes taken back.
        const auto& stored = m_scratch.emplace_back(rows.copyOf((*deleted)->record.get()));
        forFirstChanges(steps,
                        [&](const PendingStep& step) { step.column->write(stored.get(), step.before); });
        change.deleted.push_back(stored.get());
    } else {
        forFirstChanges(steps, [&](const PendingStep& step) {
            const CellValue& wanted =
                (*std::ranges::find(steps.rbegin(), steps.rend(), step.column, &PendingStep::column))->after;
            if (step.mends || wanted != step.before)
                change.cells.push_back({step.key, step.column, step.before, wanted});
        });
    }
}

void PendingLog::forget(SourceId source) {
    std::vector<eTableType> tables;
    for (const TableSchema& table : allTables())
        if (std::ranges::any_of(m_steps, [&](const PendingStep& step) {
                return step.source == source && step.table == table.type;
            }))
            tables.push_back(table.type);
    if (!tables.empty())
        forget(source, tables);
}

void PendingLog::forget(SourceId source, std::span<const eTableType> tables) {
    m_steps.resize(m_position);
    const auto isMeant = [&](const PendingStep& step) {
        return step.source == source && std::ranges::find(tables, step.table) != tables.end();
    };
    const auto known = std::span(m_steps).first(m_told);
    for (const eTableType table : tables) {
        if (std::ranges::any_of(
                known, [&](const PendingStep& step) { return step.source == source && step.table == table; }))
            m_forgotten.emplace_back(source, table);
        m_counts.erase({source, table});
    }
    m_told -= static_cast<std::size_t>(std::ranges::count_if(known, isMeant));
    std::erase_if(m_steps, isMeant);
    m_position = m_steps.size();
    tell();
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

PendingLog::Trial::Trial(PendingLog& log) : m_log(log), m_takenBack(log.takenBack()) {
    ++m_log.m_holds;
    m_log.forgetTakenBack();
}

PendingLog::Trial::~Trial() {
    m_log.setTakenBack(m_takenBack);
    --m_log.m_holds;
    m_log.tell();
}

std::vector<PendingStep> PendingLog::takeUndo() {
    std::vector<PendingStep> taken;
    while (canUndo() && (taken.empty() || m_steps[m_position - 1].group == taken.front().group)) {
        taken.push_back(m_steps[--m_position]);
        count(taken.back(), -1);
    }
    if (m_position < m_told) {
        m_told = m_position;
        if (m_observer && m_position == 0)
            m_observer->emptied();
        else if (m_observer)
            m_observer->takenBack();
    }
    return taken;
}

std::vector<PendingStep> PendingLog::takeRedo() {
    std::vector<PendingStep> taken;
    while (canRedo() && (taken.empty() || m_steps[m_position].group == taken.front().group)) {
        taken.push_back(m_steps[m_position++]);
        count(taken.back(), 1);
    }
    tell();
    return taken;
}

std::set<RowRef> PendingLog::rowsOf(SourceId source, std::size_t most) const {
    std::set<RowRef> made; // under keys that other programs give to rows of their own, too
    for (const PendingStep& step : std::span(m_steps).first(m_position))
        if (step.source == source && step.action == PendingStep::eAction::kAppend)
            made.insert({step.table, step.key});
    std::set<RowRef> rows;
    for (std::size_t i = m_position; i > 0 && rows.size() < most; --i)
        if (const PendingStep& step = m_steps[i - 1];
            step.source == source && !made.contains({step.table, step.key}))
            rows.insert({step.table, step.key});
    return rows;
}
