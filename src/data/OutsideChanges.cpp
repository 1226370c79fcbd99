#include "base/KorAssert.h"
#include "data/StyleDatabases.h"
#include "data/pending/PendingReplay.h"
#include "data/store/LockWait.h"

#include <algorithm>
#include <utility>

// The part of StyleDatabases that follows what other programs do to the files.

bool StyleDatabases::isChangedOutside() const {
    return !LockWait::isWaiting() && std::ranges::any_of(m_sources, [](const auto& each) {
        return each.second->isOutdated() || each.second->store().changedOutside();
    });
}

std::vector<OutsideChange> StyleDatabases::refreshChanged() {
    std::vector<OutsideChange> changes;
    if (LockWait::isWaiting())
        return changes;
    for (const auto& [id, source] : m_sources) {
        const bool wasOutdated = source->isOutdated();
        if (wasOutdated || source->store().changedOutside()) {
            OutsideChange change = refresh(id);
            if (change.error.empty() || !wasOutdated) // a reason is told once
                changes.push_back(std::move(change));
        } else if (source->readFailedAgain()) {
            changes.push_back({id, source->store().name(), {}, {}});
        }
    }
    return changes;
}

OutsideChange StyleDatabases::refresh(SourceId id) {
    StyleSource* open = source(id);
    if (!KorAssert::check(open != nullptr, "open != nullptr"))
        return {id, {}, {}, {}};
    OutsideChange change{id, open->store().name(), {}, {}};
    m_written.erase(id);
    PendingReplay replay(*open, m_pending);
    StoreResult result = open->store().reopen();
    if (result)
        result = replay.readAnew();
    if (result) {
        change.conflicts = replay.run();
    } else {
        change.error = result.error;
        open->setOutdated(); // what was not read yet would be of another state
    }
    return change;
}

std::vector<OutsideChange> StyleDatabases::bringBack(PendingLog& lost, const KorString& label) {
    std::vector<OutsideChange> changes;
    std::vector<PendingReplay> replays;
    bool all = true;
    for (const auto& [id, source] : m_sources) {
        if (!lost.hasPending(id))
            continue;
        const StoreResult result = replays.emplace_back(*source, m_pending, lost).read();
        changes.push_back({id, source->store().name(), result.error, {}});
        all = all && result.ok();
    }
    m_pending.beginGroup(label);
    for (std::size_t i = 0; all && i < replays.size(); ++i)
        changes[i].conflicts = replays[i].run();
    m_pending.endGroup();
    return changes;
}

StoreResult StyleDatabases::readWhole(SourceId id) {
    StyleSource* open = source(id);
    if (!KorAssert::check(open != nullptr, "open != nullptr"))
        return {};
    const StoreResult result = open->readAll();
    if (!open->isOutdated() || m_pending.hasPending(id))
        return result;
    open->store().acknowledge();
    open->dropTables();
    return open->readAll();
}

int StyleDatabases::keepMine(SourceId id, const OutsideConflict& conflict) {
    StyleSource* open = source(id);
    const eTableType table = conflict.table->type;
    const KorOdbcKey key(conflict.key);
    if (!open || !conflict.reason.isEmpty() || !open->table(table).find(key))
        return WriteResult::kFailed;
    int result = WriteResult::kFailed;
    const SourceId before = std::exchange(m_currentId, id);
    if (conflict.kind == OutsideConflict::eKind::kCell) {
        result = setCell(table, key, conflict.column->number, *conflict.mine);
    } else if (conflict.kind == OutsideConflict::eKind::kDelete) {
        removeRow(*open, table, key);
        result = WriteResult::kWritten;
    }
    m_currentId = before;
    return result;
}
