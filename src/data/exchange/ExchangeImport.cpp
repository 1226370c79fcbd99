#include "data/exchange/ExchangeImport.h"

#include "base/Translation.h"
#include "data/FreeName.h"
#include "data/RowClosure.h"

#include <algorithm>

ExchangeImport::ExchangeImport(StyleDatabases& databases, StyleSource& from, StyleSource& to,
                               ExchangeProgress& progress, ImportReport& report)
    : m_databases(databases), m_from(from), m_to(to), m_progress(progress), m_report(report),
      m_matcher(from, to) {}

bool ExchangeImport::bringClosure(RowRef row) {
    for (const RowRef& each : closureOf(m_from, row)) {
        if (each != row && !belongsToOthers(*findTable(each.table)))
            counterpart(each);
        if (m_refused || !m_progress.step())
            return false;
    }
    return true;
}

bool ExchangeImport::bring(RowRef row, const KorString& asName) {
    const int before = m_report.rowsAppended;
    const std::int32_t key = asName.isEmpty() ? counterpart(row) : bringNew(row, asName);
    if (!m_refused && key > 0)
        identify(row, key);
    if (m_refused)
        return false;
    if (row.table == kTableDetailStyle) {
        auto& list = m_report.rowsAppended > before ? m_report.imported : m_report.alreadyThere;
        list.push_back(m_to.table(row.table).find(KorOdbcKey(key))->name);
    }
    return true;
}

// References form no circle between tables, so this ends.
std::int32_t ExchangeImport::counterpart(RowRef row) {
    if (const std::int32_t key = m_matcher.find(row))
        return key;
    return bringNew(row, {});
}

std::int32_t ExchangeImport::bringNew(RowRef row, const KorString& asName) {
    bringTargets(row);
    for (const Referrer& part : partsOf(m_from, row))
        bringTargets({part.table->type, part.key});
    return m_refused ? 0 : append(row, asName);
}

void ExchangeImport::bringTargets(RowRef row) {
    const StructRecord* record = m_from.table(row.table).find(KorOdbcKey(row.key));
    for (const Column& column : findTable(row.table)->columns)
        if (column.isReference() &&
            (column.role == eReferenceRole::kUses || column.role == eReferenceRole::kFiledUnder) &&
            m_from.table(column.target).find(KorOdbcKey(column.integerIn(record))))
            counterpart({column.target, column.integerIn(record)});
}

std::int32_t ExchangeImport::append(RowRef row, const KorString& asName) {
    const auto record = m_matcher.translated(row);
    if (!record)
        m_refused = true;
    if (m_refused)
        return 0;
    if (asName.isEmpty())
        renameIfTaken(row.table, *record);
    else
        record->name = asName;
    if (!appendRecord(row.table, *record))
        return 0;
    m_matcher.set(row, record->key);
    for (const Referrer& part : partsOf(m_from, row))
        appendPart(part, *record);
    return record->key;
}

void ExchangeImport::appendPart(const Referrer& part, const StructRecord& whole) {
    if (const auto record = m_matcher.translatedPart(part, whole))
        appendRecord(part.table->type, *record);
    else
        m_refused = true;
}

bool ExchangeImport::appendRecord(eTableType table, StructRecord& record) {
    if (!m_refused) {
        const WriteResult result = m_databases.appendStored(table, record);
        m_refused = result.isFailed();
        m_refusal = result.error;
    }
    m_report.rowsAppended += m_refused ? 0 : 1;
    return !m_refused;
}

void ExchangeImport::renameIfTaken(eTableType table, StructRecord& record) {
    if (record.name.isEmpty() || !m_to.table(table).find(record.name))
        return;
    const KorString before = record.name;
    record.name = freeName(m_to, table, before);
    m_report.renamed.push_back({table, before, record.name});
}

void ExchangeImport::identify(RowRef row, std::int32_t key) {
    const auto identifies = [](const Referrer& referrer) {
        return referrer.column->role == eReferenceRole::kIdentifies;
    };
    if (std::ranges::any_of(m_to.referrersOf(row.table, KorOdbcKey(key)), identifies))
        return;
    const std::vector<Referrer> referrers = m_from.referrersOf(row.table, KorOdbcKey(row.key));
    const auto it = std::ranges::find_if(referrers, identifies);
    if (it == referrers.end())
        return;
    bringTargets({it->table->type, it->key});
    const auto record = m_matcher.translatedPart(*it, *m_to.table(row.table).find(KorOdbcKey(key)));
    if (!record) {
        m_refused = true;
        return;
    }
    if (it->table->type == kTableDetailMaster) {
        if (!m_masterNumbers)
            m_masterNumbers.emplace(m_to);
        auto& master = static_cast<StructDetailMaster&>(*record);
        master.number = m_masterNumbers->take(master);
    }
    appendRecord(it->table->type, *record);
}
