#include "data/exchange/ExchangeImport.h"

#include "base/Translation.h"
#include "data/FreeName.h"
#include "data/RowClosure.h"

#include <algorithm>

namespace {

using eFate = ImportReport::Row::eFate;

// The row of the target that has the row's name, whatever its content.
const StructRecord* namesakeOf(StyleSource& from, StyleSource& to, RowRef row) {
    const KorString& name = from.table(row.table).find(KorOdbcKey(row.key))->name;
    return name.isEmpty() ? nullptr : to.table(row.table).find(name);
}

bool isListingPlace(eTableType table) {
    return std::ranges::any_of(allTables(), [table](const TableSchema& other) {
        return isListing(other) && std::ranges::any_of(other.columns, [table](const Column& column) {
                   return column.role == eReferenceRole::kFiledUnder && column.target == table;
               });
    });
}

} // namespace

ExchangeImport::ExchangeImport(StyleDatabases& databases, StyleSource& from, StyleSource& to,
                               ExchangeProgress& progress, ImportReport& report)
    : m_databases(databases), m_from(from), m_to(to), m_progress(progress), m_report(report),
      m_matcher(from, to) {}

void ExchangeImport::bringPlaces(const std::vector<RowRef>& rows) {
    for (const RowRef& row : rows)
        for (const Referrer& referrer : m_from.referrersOf(row.table, KorOdbcKey(row.key)))
            if (referrer.column->role == eReferenceRole::kIdentifies && !m_refused)
                bringTargets({referrer.table->type, referrer.key});
}

// What the target has already stays where it is filed: it is looked up before the groups are the same.
void ExchangeImport::fileUnder(RowRef group, const std::vector<RowRef>& rows) {
    m_group = group;
    std::set<RowRef> groups;
    for (const RowRef& row : rows)
        if (m_matcher.find(row) == 0) {
            m_filed.insert(row);
            for (const RowRef& own : groupsOf(row, group.table))
                groups.insert(own);
        }
    for (const RowRef& own : groups) {
        m_matcher.set(own, group.key);
        m_noted.insert(own);
    }
    for (const RowRef& row : m_filed)
        m_matcher.forget(row); // it can be in the other group
}

// What was filed nowhere gets a group, too.
void ExchangeImport::file(RowRef row, eTableType table, StructRecord& record) const {
    if (!m_filed.contains(row))
        return;
    for (const Column& column : findTable(table)->columns)
        if (column.role == eReferenceRole::kFiledUnder && column.target == m_group.table)
            column.integerIn(&record) = m_group.key;
}

// The groups in which a row is filed by itself or by what identifies it.
std::vector<RowRef> ExchangeImport::groupsOf(RowRef row, eTableType kind) {
    std::vector<RowRef> groups;
    const auto add = [&](RowRef filed) {
        for (const Column& column : findTable(filed.table)->columns)
            if (column.role == eReferenceRole::kFiledUnder && column.target == kind)
                groups.push_back(
                    {kind, column.integerIn(m_from.table(filed.table).find(KorOdbcKey(filed.key)))});
    };
    add(row);
    for (const Referrer& referrer : m_from.referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kIdentifies)
            add({referrer.table->type, referrer.key});
    return groups;
}

bool ExchangeImport::bringClosure(RowRef row) {
    for (const RowRef& each : closureOf(m_from, row)) {
        if (each != row && !belongsToOthers(*findTable(each.table)) && !isListingPlace(each.table))
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

std::int32_t ExchangeImport::bringTarget(RowRef row) {
    const std::int32_t key = counterpart(row);
    return m_refused ? 0 : key;
}

bool ExchangeImport::bringMissingLists() {
    for (const TableSchema& table : allTables()) {
        if (!isLookedUp(table) || m_to.table(table.type).rows().size() > 0)
            continue;
        const RowArray& rows = m_from.table(table.type).rows();
        for (int i = 0; i < rows.size() && !m_refused; ++i)
            counterpart({table.type, rows.at(i).key});
    }
    return !m_refused;
}

// References form no circle between tables, so this ends.
std::int32_t ExchangeImport::counterpart(RowRef row) {
    if (const std::int32_t key = m_matcher.find(row)) {
        note(row, eFate::kEqual);
        return key;
    }
    const StructRecord* theirs = namesakeOf(m_from, m_to, row);
    const eNamesakes namesakes = namesakesOf(row);
    if (theirs && namesakes == eNamesakes::kUseTheirs) {
        note(row, eFate::kUsedTheirs);
        m_matcher.set(row, theirs->key);
        return theirs->key;
    }
    if (!theirs || namesakes != eNamesakes::kReplace)
        return bringNew(row, {});
    bringWhatItUses(row);
    return m_refused ? 0 : replace(row, *theirs);
}

void ExchangeImport::bringWhatItUses(RowRef row) {
    bringTargets(row);
    for (const Referrer& part : partsOf(m_from, row))
        if (!isListing(*part.table))
            bringTargets({part.table->type, part.key});
}

std::int32_t ExchangeImport::bringNew(RowRef row, const KorString& asName) {
    bringWhatItUses(row);
    return m_refused ? 0 : append(row, asName);
}

eNamesakes ExchangeImport::namesakesOf(RowRef row) const {
    const auto it = m_single.find(row);
    return it == m_single.end() ? m_namesakes : it->second;
}

// Each row once, by what became of it first.
void ExchangeImport::note(RowRef row, eFate fate) {
    if (m_noted.insert(row).second)
        m_report.rows.push_back(
            {row.table, m_from.table(row.table).find(KorOdbcKey(row.key))->name, fate, row.key});
}

std::int32_t ExchangeImport::replace(RowRef row, const StructRecord& theirs) {
    const std::int32_t key = theirs.key;
    const auto record = m_matcher.translated(row);
    if (!record) {
        m_refused = true;
        return 0;
    }
    record->key = key;
    m_refused = !m_databases.store(row.table, *record).isStored();
    for (const Referrer& part : partsOf(m_to, {row.table, key}))
        m_refused = m_refused || !m_databases.remove(part.table->type, KorOdbcKey(part.key)).isStored();
    note(row, eFate::kReplaced);
    m_matcher.set(row, key);
    for (const Referrer& part : partsOf(m_from, row))
        if (!m_refused)
            appendPart(part, *record);
    return key;
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
    if (asName.isEmpty() && namesakeOf(m_from, m_to, row))
        note(row, eFate::kKeptBoth);
    if (asName.isEmpty())
        renameIfTaken(row.table, *record);
    else
        record->name = asName;
    file(row, row.table, *record);
    if (!appendRecord(row.table, *record))
        return 0;
    note(row, eFate::kNew);
    m_matcher.set(row, record->key);
    for (const Referrer& part : partsOf(m_from, row))
        appendPart(part, *record);
    return record->key;
}

void ExchangeImport::appendPart(const Referrer& part, const StructRecord& whole) {
    if (isListing(*part.table) && !hasPlace(part))
        return;
    if (const auto record = m_matcher.translatedPart(part, whole))
        appendRecord(part.table->type, *record);
    else
        m_refused = true;
}

// Whether the category of a listing is in the target.
bool ExchangeImport::hasPlace(const Referrer& listing) {
    const StructRecord* record = m_from.table(listing.table->type).find(KorOdbcKey(listing.key));
    return std::ranges::all_of(listing.table->columns, [&](const Column& column) {
        return column.role != eReferenceRole::kFiledUnder || !column.isReference() ||
               m_matcher.find({column.target, column.integerIn(record)}) != 0;
    });
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
    file(row, it->table->type, *record);
    if (it->table->type == kTableDetailMaster) {
        if (!m_masterNumbers)
            m_masterNumbers.emplace(m_to);
        auto& master = static_cast<StructDetailMaster&>(*record);
        master.number = m_masterNumbers->take(master);
    }
    appendRecord(it->table->type, *record);
}
