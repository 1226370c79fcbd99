#include "data/pending/ReplayedCells.h"

#include "base/Translation.h"

#include <algorithm>

namespace {

constexpr int kName = 1;

KorString whyRefused(eCellFault fault) {
    switch (fault) {
    case eCellFault::kNone:
        return {};
    case eCellFault::kNameTaken:
        return translated("Another record has this name now.");
    case eCellFault::kNoTarget:
    case eCellFault::kNoWhole:
        return translated("The record that it refers to was deleted.");
    default:
        return translated("The column does not take this value.");
    }
}

std::int32_t keyIn(const CellValue& reference) {
    return static_cast<std::int32_t>(std::get<std::int64_t>(reference));
}

bool areSlotsOfOneKind(const Column& a, const Column& b) {
    return a.isSlot() && b.isSlot() && a.number - a.slot == b.number - b.slot;
}

} // namespace

void ReplayedCells::write() {
    std::vector<Cells> decided = decisions();
    for (std::size_t i = 0; i < decided.size(); ++i)
        decide(std::move(decided[i]), i);
}

std::vector<ReplayedCells::Cells> ReplayedCells::decisions() const {
    std::set<RowRef> named;
    for (const ReplayState::Change& change : m_state.changes)
        for (const CellChange& cell : change.cells)
            if (cell.column->number == kName)
                named.insert({change.table, cell.key});
    std::vector<Cells> all;
    std::map<std::pair<RowRef, int>, std::size_t> places;
    for (const ReplayState::Change& change : m_state.changes)
        for (const CellChange& cell : change.cells) {
            const RowRef row{change.table, cell.key};
            const auto [it, isNew] = places.try_emplace(decisionOf(row, *cell.column, named), all.size());
            if (isNew)
                all.emplace_back();
            all[it->second].push_back({row, &cell});
        }
    return all;
}

// The row and the number of the column that stand for all that is decided together: the first slot of a kind,
// and the name of the row that another one identifies. `named` are the rows whose names were changed.
std::pair<RowRef, int> ReplayedCells::decisionOf(RowRef row, const Column& column,
                                                 const std::set<RowRef>& named) const {
    if (column.isSlot())
        return {row, column.number - column.slot};
    const StructRecord* record =
        column.number == kName ? m_state.source.table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    if (column.number == kName && !record)
        record = m_state.rowsBefore.stored(row);
    if (record)
        for (const Column& other : findTable(row.table)->columns)
            if (other.isReference() && other.role == eReferenceRole::kIdentifies &&
                named.contains({other.target, other.integerIn(record)}))
                return {{other.target, other.integerIn(record)}, kName};
    return {row, column.number};
}

CellValue ReplayedCells::followed(const CellChange& cell) const {
    if (!cell.column->isReference())
        return cell.wanted;
    const auto it = m_state.newKeys.find({cell.column->target, keyIn(cell.wanted)});
    return it == m_state.newKeys.end() ? cell.wanted : CellValue(std::int64_t{it->second});
}

// Names are judged when all have theirs.
eCellFault ReplayedCells::faultOfMine(RowRef row, const Column& column, const CellValue& mine) const {
    if (column.number == kName)
        return eCellFault::kNone;
    if (column.isReference() && m_state.isLost({column.target, keyIn(mine)}))
        return eCellFault::kNoTarget;
    return faultOf(m_state.source, *findTable(row.table), column, row.key, mine);
}

WantedCell ReplayedCells::wantedCell(RowRef row, const Column& column, const CellValue& mine) const {
    return {row, &column, mine, m_state.targetName(column, mine)};
}

void ReplayedCells::tellGone(const Cells& cells) {
    const Cell& head = cells.front();
    OutsideConflict& conflict = m_state.addConflict(OutsideConflict::eKind::kGone, head.row,
                                                    head.change->column, m_state.rowsBefore.shown(head.row));
    conflict.name = m_state.rowsBefore.nameOf(head.row);
    for (const Cell& cell : cells)
        conflict.cells.push_back(wantedCell(cell.row, *cell.change->column, followed(*cell.change)));
    conflict.mine = conflict.cells.front().mine;
    conflict.targetName = conflict.cells.front().targetName;
    if (m_state.rowsBefore.isOther(head.row))
        conflict.reason = translated("The record was deleted, or it was renamed and changed.");
}

void ReplayedCells::decide(Cells cells, std::size_t decision) {
    if (m_state.rowsBefore.isGone(cells.front().row))
        return tellGone(cells);
    std::erase_if(cells, [this](const Cell& cell) { return m_state.rowsBefore.isGone(cell.row); });
    const std::vector<WantedCell> wanted = wantedCells(cells);
    if (wanted.empty())
        return;
    eCellFault fault = eCellFault::kNone;
    for (const WantedCell& cell : wanted)
        if (fault == eCellFault::kNone)
            fault = faultOfMine(cell.row, *cell.column, cell.mine);
    if (fault == eCellFault::kNone && isDecidedAlike(cells)) {
        for (const WantedCell& cell : wanted)
            write(cell, decision);
        return;
    }
    const WantedCell& head = wanted.front();
    const StyleTable& table = m_state.source.table(head.row.table);
    OutsideConflict& conflict =
        m_state.addConflict(OutsideConflict::eKind::kCell, head.row, head.column,
                            table.rows().copyOf(table.find(KorOdbcKey(head.row.key))));
    if (!conflict.before && !head.column->isSlot()) // a list is more than the slots that were changed
        conflict.before = asChangeFound(cells, head.row, *conflict.record);
    conflict.cells = wanted;
    conflict.stored = m_state.storedIn(head.row, *head.column);
    conflict.mine = head.mine;
    conflict.targetName = head.targetName;
    conflict.reason = whyRefused(fault);
}

// What another run left knows of a record what was in the cells that it changed, and nothing of the others.
std::shared_ptr<const StructRecord> ReplayedCells::asChangeFound(const Cells& cells, RowRef row,
                                                                 const StructRecord& now) const {
    const auto before = m_state.source.table(row.table).rows().copyOf(&now);
    for (const Cell& cell : cells)
        if (cell.row == row)
            cell.change->column->write(before.get(), cell.change->stored);
    return before;
}

// Whether nobody else changed what is changed here.
bool ReplayedCells::isDecidedAlike(const Cells& cells) const {
    if (cells.front().change->column->isSlot())
        return !isSlotChanged(cells);
    return std::ranges::all_of(cells, [this](const Cell& cell) {
        const CellValue stored = m_state.storedIn(cell.row, *cell.change->column);
        return stored == cell.change->stored || stored == followed(*cell.change);
    });
}

// What has to be written, in the order of the cells; empty where all is as it is wanted.
std::vector<WantedCell> ReplayedCells::wantedCells(const Cells& cells) const {
    if (cells.front().change->column->isSlot())
        return wantedSlots(cells);
    std::vector<WantedCell> wanted;
    for (const Cell& cell : cells) {
        const CellValue mine = followed(*cell.change);
        const StructRecord* row = m_state.source.table(cell.row.table).find(KorOdbcKey(cell.row.key));
        if (cell.change->column->read(row) != mine ||
            m_state.source.isUnreadable(cell.row.key, *cell.change->column))
            wanted.push_back(wantedCell(cell.row, *cell.change->column, mine));
    }
    return wanted;
}

// Slots are one list: where another program changed it mine is the whole list as it was shown, without what
// was in it before and is gone.
std::vector<WantedCell> ReplayedCells::wantedSlots(const Cells& cells) const {
    const RowRef row = cells.front().row;
    const StructRecord* now = m_state.source.table(row.table).find(KorOdbcKey(row.key));
    const auto shown = isSlotChanged(cells) ? m_state.rowsBefore.shown(row) : nullptr;
    std::set<std::int32_t> before;
    for (const Column& column : findTable(row.table)->columns)
        if (shown && column.isSlot())
            before.insert(column.integerIn(m_state.rowsBefore.stored(row)));
    std::vector<WantedCell> wanted;
    for (const Column& column : findTable(row.table)->columns) {
        if (!areSlotsOfOneKind(column, *cells.front().change->column))
            continue;
        const auto cell =
            std::ranges::find_if(cells, [&](const Cell& each) { return each.change->column == &column; });
        CellValue mine =
            cell != cells.end() ? followed(*cell->change) : column.read(shown ? shown.get() : now);
        if (before.contains(keyIn(mine)) && m_state.isLost({column.target, keyIn(mine)}))
            mine = std::int64_t{0};
        if (column.read(now) != mine)
            wanted.push_back(wantedCell(row, column, mine));
    }
    return wanted;
}

bool ReplayedCells::isSlotChanged(const Cells& cells) const {
    const RowRef row = cells.front().row;
    const Column& head = *cells.front().change->column;
    if (const StructRecord* before = m_state.rowsBefore.stored(row))
        return std::ranges::any_of(findTable(row.table)->columns, [&](const Column& column) {
            return areSlotsOfOneKind(column, head) && m_state.storedIn(row, column) != column.read(before);
        });
    return std::ranges::any_of(cells, [&](const Cell& cell) {
        return m_state.storedIn(row, *cell.change->column) != cell.change->stored;
    });
}

void ReplayedCells::write(const WantedCell& cell, std::size_t decision) {
    const KorOdbcKey key(cell.row.key);
    const CellValue before = cell.column->read(m_state.source.table(cell.row.table).find(key));
    m_state.source.setCell(cell.row.table, key, *cell.column, cell.mine);
    m_written.push_back(
        {cell.row, cell.column, before, decision, m_state.source.isUnreadable(key, *cell.column)});
}

// A name that cannot be given leaves the old one, which another row may have got meanwhile.
void ReplayedCells::settleNames() {
    std::set<std::size_t> refused;
    for (bool again = true; again;) {
        again = false;
        for (const Written& written : m_written) {
            if (written.column->number != kName || refused.contains(written.decision))
                continue;
            const StyleTable& table = m_state.source.table(written.row.table);
            const StructRecord* row = table.find(KorOdbcKey(written.row.key));
            if (faultOf(m_state.source, table.schema(), *written.column, written.row.key, row->name) ==
                eCellFault::kNone)
                continue;
            refused.insert(written.decision);
            refuseName(written);
            again = true;
        }
    }
    std::erase_if(m_written, [&](const Written& written) { return refused.contains(written.decision); });
}

void ReplayedCells::tellTakenNames() {
    for (OutsideConflict& conflict : m_state.conflicts)
        if (conflict.kind == OutsideConflict::eKind::kCell && conflict.column->number == kName &&
            conflict.reason.isEmpty())
            conflict.reason = whyRefused(
                faultOf(m_state.source, *conflict.table, *conflict.column, conflict.key, *conflict.mine));
}

void ReplayedCells::refuseName(const Written& name) {
    const StyleTable& table = m_state.source.table(name.row.table);
    const CellValue mine = table.find(KorOdbcKey(name.row.key))->name;
    const auto together = std::ranges::equal_range(m_written, name.decision, {}, &Written::decision);
    for (const Written& written : together)
        m_state.source.setCell(written.row.table, KorOdbcKey(written.row.key), *written.column,
                               written.before);
    OutsideConflict& conflict =
        m_state.addConflict(OutsideConflict::eKind::kCell, name.row, name.column,
                            table.rows().copyOf(table.find(KorOdbcKey(name.row.key))));
    if (!conflict.before) {
        const auto before = table.rows().copyOf(conflict.record.get());
        name.column->write(before.get(), name.before);
        conflict.before = before;
    }
    conflict.stored = name.before;
    conflict.mine = mine;
    conflict.reason = whyRefused(eCellFault::kNameTaken);
}

void ReplayedCells::log() {
    for (const Written& written : m_written) {
        const RowRef row = written.row;
        PendingStep step{m_state.source.id(),
                         row.table,
                         PendingStep::eAction::kCell,
                         row.key,
                         written.column,
                         written.before,
                         {},
                         {}};
        step.after = written.column->read(m_state.source.table(row.table).find(KorOdbcKey(row.key)));
        step.mends = written.mends;
        m_state.pending.record(std::move(step));
    }
}
