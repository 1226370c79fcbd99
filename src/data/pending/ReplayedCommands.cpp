#include "data/pending/ReplayedCommands.h"

#include "data/CellRules.h"
#include "data/ScopedSource.h"
#include "data/pending/TakenBackSteps.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace {

using eAction = PendingStep::eAction;

std::shared_ptr<StructRecord> copyOf(const PendingStep& step) {
    return findTable(step.table)->makeRows()->copyOf(step.record.get());
}

// The column holds a key that may be another one now.
void followKey(const Column& column, StructRecord& record, const std::map<RowRef, std::int32_t>& keys) {
    std::int32_t& key = column.integerIn(&record);
    if (const auto it = keys.find({column.target, key}); it != keys.end())
        key = it->second;
}

CellValue followed(const Column& column, const CellValue& value, const std::map<RowRef, std::int32_t>& keys) {
    if (!column.isReference())
        return value;
    const auto key = static_cast<std::int32_t>(std::get<std::int64_t>(value));
    const auto it = keys.find({column.target, key});
    return it == keys.end() ? value : CellValue(std::int64_t{it->second});
}

bool isAction(const PendingStep& step, eAction action) {
    return step.action == action;
}

} // namespace

ReplayedCommands::ReplayedCommands(StyleDatabases& databases, const PendingLog* lost)
    : m_databases(databases), m_bringsBack(lost != nullptr), m_takenBack(databases.pending().takenBack()) {
    add(databases.pending().commands());
    m_firstLost = m_made.size();
    if (!m_made.empty())
        m_lastGroup = m_made.back().step.group;
    if (lost)
        add(lost->commands());
}

void ReplayedCommands::add(const PendingLog::Commands& commands) {
    for (const auto& [label, steps] : commands) {
        for (const PendingStep& step : steps)
            m_made.push_back({m_labels.size(), step});
        m_labels.push_back(label);
    }
}

void ReplayedCommands::dropWhatWasMadeFor(const std::vector<OutsideChange>& changes,
                                          const std::vector<OutsideChange>& mine) {
    const auto isMine = [&](SourceId source, const OutsideConflict& conflict) {
        return std::ranges::any_of(mine, [&](const OutsideChange& change) {
            return change.source == source &&
                   std::ranges::any_of(change.conflicts, [&](const OutsideConflict& other) {
                       return other.table == conflict.table && other.key == conflict.key &&
                              other.column == conflict.column;
                   });
        });
    };
    for (const OutsideChange& change : changes)
        for (const OutsideConflict& conflict : change.conflicts)
            if (conflict.kind == OutsideConflict::eKind::kCell && !conflict.isMade &&
                !isMine(change.source, conflict))
                for (const WantedCell& cell : conflict.cells)
                    dropMadeFor(change, cell);
}

void ReplayedCommands::dropMadeFor(const OutsideChange& change, const WantedCell& cell) {
    if (!cell.column->isReference())
        return;
    StyleSource& source = *m_databases.source(change.source);
    const RowRef row{cell.column->target, static_cast<std::int32_t>(std::get<std::int64_t>(cell.mine))};
    const auto users = source.referrersOf(row.table, KorOdbcKey(row.key));
    const bool isUsed = std::ranges::any_of(
        users, [](const Referrer& user) { return user.column->role == eReferenceRole::kUses; });
    if (isUsed || !source.table(row.table).find(KorOdbcKey(row.key)) || !isMadeFor(change, row, cell))
        return;
    const ScopedSource there(change.source);
    static_cast<void>(m_databases.remove(row.table, KorOdbcKey(row.key)));
}

bool ReplayedCommands::isMadeFor(const OutsideChange& change, RowRef row, const WantedCell& cell) const {
    const auto now = [&](eTableType table, std::int32_t key) {
        const auto it = change.newKeys.find({table, key});
        return RowRef{table, it == change.newKeys.end() ? key : it->second};
    };
    std::set<std::size_t> making;
    for (const auto& [command, step, isReplayed, result] : m_made)
        if (step.source == change.source && isAction(step, eAction::kAppend) &&
            now(step.table, step.key) == row)
            making.insert(command);
    return std::ranges::any_of(m_made, [&](const Made& made) {
        return making.contains(made.command) && isAction(made.step, eAction::kCell) &&
               made.step.column == cell.column && now(made.step.table, made.step.key) == cell.row;
    });
}

void ReplayedCommands::settle(const std::vector<OutsideChange>& changes) {
    letStand(changes);
    const bool isAsked =
        std::ranges::any_of(changes, [](const OutsideChange& change) { return !change.conflicts.empty(); });
    if (!m_bringsBack && !isAsked)
        m_databases.pending().setTakenBack(stepsThatHold(m_databases, m_takenBack));
}

void ReplayedCommands::letStand(const std::vector<OutsideChange>& changes) {
    const std::map<Row, Steps> steps = replayed();
    if (steps.empty())
        return;
    for (const OutsideChange& change : changes)
        if (change.error.empty())
            follow(change);
    const std::map<Row, Places> places = placesOfRows();
    for (const auto& [row, made] : steps) {
        if (isAction(made.front(), eAction::kAppend) && isAction(made.back(), eAction::kDelete))
            continue; // it was dropped
        const auto it = places.find(row);
        place(made, it == places.end() ? Places() : it->second);
    }
    m_databases.pending().standAs(commands());
}

// Marks the steps that were made anew, and gives them the keys that new rows have by now.
void ReplayedCommands::follow(const OutsideChange& change) {
    const auto& keys = change.newKeys;
    for (std::size_t i = m_bringsBack ? m_firstLost : 0; i < m_made.size(); ++i) {
        PendingStep& step = m_made[i].step;
        if (step.source != change.source)
            continue;
        m_made[i].isReplayed = true;
        if (const auto it = keys.find({step.table, step.key}); it != keys.end())
            step.key = it->second;
        if (isAction(step, eAction::kCell)) {
            step.before = followed(*step.column, step.before, keys);
            step.after = followed(*step.column, step.after, keys);
            continue;
        }
        step.record = copyOf(step);
        step.record->key = step.key;
        for (const Column& column : findTable(step.table)->columns)
            if (column.isReference())
                followKey(column, *step.record, keys);
    }
}

std::map<ReplayedCommands::Row, ReplayedCommands::Steps> ReplayedCommands::replayed() const {
    std::map<Row, Steps> rows;
    for (const PendingStep* step : m_databases.pending().steps())
        if (step->group > m_lastGroup)
            rows[{step->source, {step->table, step->key}}].push_back(*step);
    return rows;
}

std::map<ReplayedCommands::Row, ReplayedCommands::Places> ReplayedCommands::placesOfRows() const {
    std::map<Row, Places> rows;
    for (std::size_t i = 0; i < m_made.size(); ++i)
        if (const PendingStep& step = m_made[i].step; m_made[i].isReplayed)
            rows[{step.source, {step.table, step.key}}].push_back(i);
    return rows;
}

// All of one row. What is not as one of these knows it comes at the end.
void ReplayedCommands::place(const Steps& steps, const Places& made) {
    if (placeAppended(steps, made) || placeDeleted(steps, made) || placeCells(steps, made))
        return;
    Steps& rest = m_rest[made.empty() ? m_labels.size() - 1 : m_made[made.back()].command];
    rest.insert(rest.end(), steps.begin(), steps.end());
}

bool ReplayedCommands::placeAppended(const Steps& steps, const Places& made) {
    const auto isCell = [](const PendingStep& step) { return isAction(step, eAction::kCell); };
    if (made.empty() || !isAction(m_made[made.front()].step, eAction::kAppend) ||
        !isAction(steps.front(), eAction::kAppend) || !std::all_of(steps.begin() + 1, steps.end(), isCell))
        return false;
    PendingStep appended = steps.front();
    appended.record = copyOf(appended);
    for (auto cell = steps.begin() + 1; cell != steps.end(); ++cell)
        cell->column->write(appended.record.get(), cell->after);
    for (const Column& column : findTable(appended.table)->columns) {
        const Places chain = chainOf(made, column);
        const CellValue first = column.read(m_made[made.front()].step.record.get());
        const CellValue last = column.read(appended.record.get());
        if (chain.empty() || !canHold(steps.front(), column, first))
            continue;
        column.write(appended.record.get(), first);
        placeChain(chain, first, last, false);
    }
    m_made[made.front()].now = std::move(appended);
    return true;
}

bool ReplayedCommands::placeDeleted(const Steps& steps, const Places& made) {
    if (made.empty() || steps.size() != 1 || !isAction(steps.front(), eAction::kDelete) ||
        !isAction(m_made[made.back()].step, eAction::kDelete))
        return false;
    PendingStep deleted = steps.front();
    deleted.record = copyOf(deleted);
    for (const Column& column : findTable(deleted.table)->columns)
        if (const Places chain = chainOf(made, column); !chain.empty()) {
            const CellValue last = m_made[chain.back()].step.after;
            if (!canHold(deleted, column, last))
                continue;
            placeChain(chain, column.read(deleted.record.get()), last, false);
            column.write(deleted.record.get(), last);
        }
    m_made[made.back()].now = std::move(deleted);
    return true;
}

bool ReplayedCommands::placeCells(const Steps& steps, const Places& made) {
    const auto fits = [&](const PendingStep& step) {
        return isAction(step, eAction::kCell) && !chainOf(made, *step.column).empty();
    };
    if (!std::ranges::all_of(steps, fits))
        return false;
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        const auto isSame = [&](const PendingStep& other) { return other.column == step->column; };
        if (std::any_of(steps.begin(), step, isSame))
            continue;
        const PendingStep& last = *std::ranges::find_if(steps.rbegin(), steps.rend(), isSame);
        placeChain(chainOf(made, *step->column), step->before, last.after, step->mends);
    }
    return true;
}

// What the column held between is held again where it can be.
void ReplayedCommands::placeChain(const Places& chain, CellValue before, const CellValue& after, bool mends) {
    for (const std::size_t i : chain) {
        const PendingStep& made = m_made[i].step;
        const CellValue value = i == chain.back() ? after : made.after;
        if (i != chain.back() && !canHold(made, *made.column, value))
            continue;
        if (value == before && !mends)
            continue;
        PendingStep& now = m_made[i].now.emplace(made);
        now.before = before;
        now.after = value;
        now.mends = mends;
        before = value;
    }
}

ReplayedCommands::Places ReplayedCommands::chainOf(const Places& made, const Column& column) const {
    Places chain;
    std::ranges::copy_if(made, std::back_inserter(chain),
                         [&](std::size_t i) { return m_made[i].step.column == &column; });
    return chain;
}

bool ReplayedCommands::canHold(const PendingStep& step, const Column& column, const CellValue& value) const {
    return faultOf(*m_databases.source(step.source), *findTable(step.table), column, step.key, value) ==
           eCellFault::kNone;
}

PendingLog::Commands ReplayedCommands::commands() const {
    PendingLog::Commands all;
    std::size_t i = 0;
    for (std::size_t command = 0; command < m_labels.size(); ++command) {
        Steps steps;
        const int group =
            i < m_firstLost ? m_made[i].step.group : 0; // what comes from another log gets a new one
        for (; i < m_made.size() && m_made[i].command == command; ++i)
            if (const Made& made = m_made[i]; made.now)
                steps.push_back(*made.now);
            else if (!made.isReplayed && i < m_firstLost)
                steps.push_back(made.step);
        if (const auto rest = m_rest.find(command); rest != m_rest.end())
            steps.insert(steps.end(), rest->second.begin(), rest->second.end());
        for (PendingStep& step : steps)
            step.group = group;
        if (!steps.empty())
            all.emplace_back(m_labels[command], std::move(steps));
    }
    return all;
}
