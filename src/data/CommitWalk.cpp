#include "data/StyleDatabases.h"

#include "base/Translation.h"

#include <algorithm>

// The part of StyleDatabases that writes pending changes.

namespace {

// What is pending was judged by what was read: which names are taken, what is used, what has no owner.
Result<> refuseOutdated(StyleSource& source) {
    if (!source.isOutdated() && !source.store().changedOutside())
        return {};
    return Result<>::failure(KorString::format(
        translated("Another program changed the style database \"%s\" meanwhile, so nothing "
                   "was stored; look at what it stored and try again."),
        {source.store().name()}));
}

} // namespace

StyleDatabases::CommitWalk::CommitWalk(StyleDatabases& databases) : m_databases(databases) {
    m_databases.m_report.clear();
    m_databases.m_inWalk = true;
}

StyleDatabases::CommitWalk::~CommitWalk() {
    m_databases.m_inWalk = false;
    m_databases.abandonWalk();
}

bool StyleDatabases::keepTable(eTableType type) {
    if (!m_inWalk)
        m_report.clear();
    for (const auto& [id, source] : m_sources) {
        if (!m_pending.hasPending(id))
            continue;
        for (const TableSchema& table : allTables())
            if (table.commitsWith == type && m_pending.hasPending(id, table.type))
                keepSourceTable(*source, table.type);
        finishSource(*source, type);
    }
    return std::ranges::all_of(m_report, [](const SourceCommit& commit) { return commit.ok(); });
}

// A walk that ends before the last table leaves transactions open: what they hold is still pending, so the
// next one writes it again.
void StyleDatabases::abandonWalk() {
    for (const auto& [id, written] : m_written)
        if (!written.empty())
            m_sources.at(id)->store().rollback();
    m_written.clear();
}

SourceCommit& StyleDatabases::report(StyleSource& source) {
    const auto it = std::ranges::find(m_report, source.id(), &SourceCommit::source);
    if (it != m_report.end())
        return *it;
    return m_report.emplace_back(SourceCommit{{}, source.id(), source.store().name()});
}

void StyleDatabases::keepSourceTable(StyleSource& source, eTableType type) {
    if (!report(source).ok())
        return;
    const TableChange change = m_pending.netChange(source.id(), type);
    if (change.isEmpty()) {
        m_pending.forget(source.id(), type);
        return;
    }
    std::vector<eTableType>& written = m_written[source.id()];
    Result<> result = written.empty() ? source.store().begin() : Result<>();
    if (result)
        result = source.store().apply(change, report(source).conflicts);
    if (result && written.empty() && report(source).conflicts.empty())
        result = refuseOutdated(source);
    if (!result || !report(source).conflicts.empty())
        fail(source, result.error);
    else
        written.push_back(type);
}

void StyleDatabases::finishSource(StyleSource& source, eTableType type) {
    std::vector<eTableType>& written = m_written[source.id()];
    const bool more = m_inWalk && std::ranges::any_of(allTables(), [&](const TableSchema& table) {
                          return table.commitsWith > type && m_pending.hasPending(source.id(), table.type);
                      });
    if (more || !report(source).ok())
        return;
    if (!written.empty()) {
        m_pending.announceStoring(source.id(), written, source.store().markOfChange());
        if (const Result<> result = source.store().commit(); !result) {
            if (source.store().outcome() == StyleStore::eOutcome::kUnknown)
                m_unknown[source.id()] = written;
            else
                m_pending.announceNotStored();
            fail(source, result.error);
            return;
        }
    }
    for (const eTableType table : written)
        source.forgetMended(m_pending.netChange(source.id(), table).cells);
    m_pending.forget(source.id(), written);
    written.clear();
    report(source).kept = true;
}

void StyleDatabases::fail(StyleSource& source, std::string error) {
    source.store().rollback();
    m_written[source.id()].clear();
    if (error.empty())
        error =
            KorString::format(translated("%s: another program changed the same data; nothing was written. "
                                         "Compare the values and decide anew."),
                              {source.store().name()})
                .toStdString();
    report(source).error = std::move(error);
}

void StyleDatabases::dropTable(eTableType type) {
    const std::vector<const PendingStep*> steps = m_pending.steps();
    for (auto it = steps.rbegin(); it != steps.rend(); ++it)
        if (findTable((*it)->table)->commitsWith == type)
            apply(**it, false);
    for (const TableSchema& table : allTables())
        if (table.commitsWith == type)
            for (const auto& [id, source] : m_sources)
                m_pending.forget(id, table.type);
}
