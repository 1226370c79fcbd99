#include "base/KorAssert.h"
#include "base/Translation.h"
#include "data/RowUsers.h"
#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
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
    return refreshWhere(
        [](StyleSource& source) { return source.isOutdated() || source.store().changedOutside(); });
}

std::vector<OutsideChange> StyleDatabases::refreshNoticed() {
    return refreshWhere([this](StyleSource& source) { return isNoticed(source); });
}

bool StyleDatabases::isNoticed() {
    return !LockWait::isWaiting() &&
           std::ranges::any_of(m_sources, [this](const auto& each) { return isNoticed(*each.second); });
}

bool StyleDatabases::isNoticed(StyleSource& source) {
    using enum ServerNews::eState;
    if (!source.store().isOnServer())
        return source.isOutdated() || source.store().changedOutside();
    const auto state = m_news[source.id()].state;
    return state == kChanged || state == kBack;
}

std::map<SourceId, ServerNews> StyleDatabases::glance() {
    if (LockWait::isWaiting())
        return m_news;
    for (const auto& [id, source] : m_sources)
        if (source->store().isOnServer())
            m_news[id] = source->store().glance(m_pending.rowsOf(id, StyleStore::kMostRowsTold));
    return m_news;
}

std::vector<OutsideChange> StyleDatabases::refreshWhere(const std::function<bool(StyleSource&)>& isChanged) {
    std::vector<OutsideChange> changes;
    if (LockWait::isWaiting())
        return changes;
    for (const auto& [id, source] : m_sources) {
        const bool wasOutdated = source->isOutdated();
        if (isChanged(*source)) {
            OutsideChange change = refresh(id);
            if (change.error.empty() || !wasOutdated) // a reason is told once
                changes.push_back(std::move(change));
        } else if (source->readFailedAgain()) {
            changes.push_back({{}, id, source->store().name()});
        }
    }
    return changes;
}

// What turns out to be stored is not pending any more.
Result<> StyleDatabases::findOutcome(StyleSource& source, bool& wasStored) {
    const auto unknown = m_unknown.find(source.id());
    if (unknown == m_unknown.end())
        return {};
    Result<> result = source.store().reopen();
    if (!result)
        return result;
    wasStored = source.store().outcome() == StyleStore::eOutcome::kStored;
    if (wasStored)
        m_pending.forget(source.id(), unknown->second);
    else
        m_pending.announceNotStored();
    m_unknown.erase(unknown);
    return {};
}

OutsideChange StyleDatabases::refresh(SourceId id) {
    StyleSource* open = source(id);
    if (!KorAssert::check(open != nullptr, "only open sources are read again"))
        return {{}, id};
    OutsideChange change{{}, id, open->store().name()};
    m_written.erase(id);
    const bool wasUnknown = m_unknown.contains(id);
    Result<> result = findOutcome(*open, change.wasStored);
    StoredSince since;
    if (result && !wasUnknown && !open->hasFailed())
        result = open->store().readSince(since);
    PendingReplay replay(*open, m_pending);
    if (result && since.isKnown) {
        replay.take(since);
    } else if (result && (result = open->store().reopen())) {
        result = replay.readAnew();
        if (!result)
            open->store().doubt();
    }
    if (result) {
        change.conflicts = replay.run();
        change.newKeys = replay.newKeys();
        if (since.isKnown)
            change.rows.emplace();
        for (OutsideConflict& conflict : change.conflicts)
            conflict.by = since.authorOf({conflict.table->type, conflict.key});
    } else {
        change.error = result.error;
        open->setOutdated(); // what was not read yet would be of another state
    }
    if (result && !since.isKnown && open->store().isOnServer())
        static_cast<void>(open->readAll()); // table by table it would be asked several times for each
    m_news.erase(id);
    return change;
}

std::vector<OutsideChange> StyleDatabases::bringBack(PendingLog& lost) {
    std::vector<OutsideChange> changes;
    std::vector<PendingReplay> replays;
    bool all = true;
    for (const auto& [id, source] : m_sources) {
        if (!lost.hasPending(id))
            continue;
        changes.push_back(
            {replays.emplace_back(*source, m_pending, lost).read(), id, source->store().name()});
        all = all && changes.back().ok();
    }
    m_pending.beginGroup({});
    for (std::size_t i = 0; all && i < replays.size(); ++i) {
        changes[i].conflicts = replays[i].run();
        changes[i].newKeys = replays[i].newKeys();
    }
    m_pending.endGroup();
    return changes;
}

Result<> StyleDatabases::readWhole(SourceId id) {
    StyleSource* open = source(id);
    if (!KorAssert::check(open != nullptr, "only open sources are read again"))
        return {};
    Result<> result = open->readAll();
    if (!open->isOutdated() || m_pending.hasPending(id))
        return result;
    open->store().acknowledge();
    open->dropTables();
    return open->readAll();
}

namespace {

// What holds by now, not when the conflict was found.
bool isUsed(StyleSource& source, RowRef row, const std::vector<RowRef>& going) {
    return std::ranges::any_of(source.referrersOf(row.table, KorOdbcKey(row.key)), [&](const Referrer& user) {
        return user.column->role != eReferenceRole::kPartOf &&
               user.column->role != eReferenceRole::kIdentifies &&
               std::ranges::find(going, wholeOf(source, {user.table->type, user.key})) == going.end();
    });
}

} // namespace

WriteResult StyleDatabases::keepMine(SourceId id, const OutsideConflict& conflict) {
    StyleSource* open = source(id);
    if (!conflict.reason.isEmpty())
        return {WriteResult::kFailed, conflict.reason.toStdString()};
    const bool isThere = open && open->table(conflict.table->type).find(KorOdbcKey(conflict.key));
    if (!isThere || conflict.kind == OutsideConflict::eKind::kGone)
        return WriteRefusal::noRow();
    const SourceId before = std::exchange(m_currentId, id);
    WriteResult result = conflict.kind == OutsideConflict::eKind::kCell ? keepCells(conflict.cells)
                                                                        : keepDeletion(*open, conflict);
    m_currentId = before;
    return result;
}

// All or none.
WriteResult StyleDatabases::keepCells(const std::vector<WantedCell>& cells) {
    std::vector<WantedCell> before;
    WriteResult result;
    for (auto it = cells.begin(); it != cells.end() && !result.isFailed(); ++it) {
        const StructRecord* row = here()->table(it->row.table).find(KorOdbcKey(it->row.key));
        if (row)
            before.push_back({it->row, it->column, it->column->read(row), {}});
        result = setCell(it->row.table, it->row.key, it->column->number, it->mine);
    }
    if (!result.isFailed())
        return {};
    for (auto it = before.rbegin(); it != before.rend(); ++it)
        setCell(it->row.table, it->row.key, it->column->number, it->mine);
    return result;
}

WriteResult StyleDatabases::keepDeletion(StyleSource& source, const OutsideConflict& conflict) {
    const RowRef row{conflict.table->type, conflict.key};
    std::vector<RowRef> going = conflict.identifying;
    going.push_back(row);
    if (isUsed(source, row, going))
        return {WriteResult::kFailed, translated("Another record uses it now.").toStdString()};
    const auto removeThere = [&](RowRef each) {
        const bool isThere = source.table(each.table).find(KorOdbcKey(each.key));
        if (isThere)
            removeRow(source, each.table, KorOdbcKey(each.key));
        return isThere;
    };
    for (const RowRef each : going)
        removeThere(each);
    for (bool again = true; again;) {
        again = false;
        for (const RowRef each : conflict.used)
            again = (!isUsed(source, each, {each}) && removeThere(each)) || again;
    }
    return {};
}
