#include "data/check/ConsistencyCheck.h"

#include "base/Translation.h"
#include "data/RowClosure.h"
#include "data/check/StillMissing.h"
#include "data/store/ReadReport.h"
#include "records/TableDeclarations.h"

#include <algorithm>
#include <map>

namespace {

bool isTargetOf(const TableSchema& table, eReferenceRole role) {
    return std::ranges::any_of(allTables(), [&](const TableSchema& other) {
        return std::ranges::any_of(other.columns, [&](const Column& column) {
            return column.target == table.type && column.role == role;
        });
    });
}

// The order numbers of the parts of each whole.
std::map<std::int32_t, std::vector<std::int32_t>> numbersOf(const RowArray& parts, const Column& owner,
                                                            const Column& order) {
    std::map<std::int32_t, std::vector<std::int32_t>> numbers;
    for (int i = 0; i < parts.size(); ++i)
        numbers[owner.integerIn(&parts.at(i))].push_back(order.integerIn(&parts.at(i)));
    return numbers;
}

bool areCounted(std::vector<std::int32_t> numbers) {
    std::ranges::sort(numbers);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (numbers[i] != static_cast<std::int32_t>(i + 1))
            return false;
    return true;
}

} // namespace

std::vector<Finding> ConsistencyCheck::run() {
    m_findings.clear();
    const bool isRead = m_source.readAll().ok();
    m_isComplete = m_source.complete().ok();
    checkFile();
    if (!isRead) // what is absent may only be unread
        return std::move(m_findings);
    for (const TableSchema& table : allTables())
        checkTable(table);
    if (m_isComplete) {
        checkEntriesThatNeverAct();
        checkOrders();
    } else {
        m_findings.push_back(
            {.sentence =
                 KorString::format(
                     translated(
                         "\"%s\" could not be read whole, so nothing is said about what is not used in it."),
                     {m_source.store().name()})
                     .toStdString()});
    }
    return std::move(m_findings);
}

void ConsistencyCheck::checkFile() {
    for (std::string& sentence : m_source.store().integrityFindings())
        m_findings.push_back({.severity = eSeverity::kError, .sentence = std::move(sentence)});
    for (const ReadProblem& problem : m_source.problems())
        if (!problem.kept) // a value that is used is checked in its row
            m_findings.push_back({.severity = eSeverity::kError, .sentence = problem.sentence});
}

void ConsistencyCheck::checkTable(const TableSchema& table) {
    const RowArray& rows = m_source.table(table.type).rows();
    const bool isIdentified = isTargetOf(table, eReferenceRole::kIdentifies);
    for (int i = 0; i < rows.size(); ++i) {
        const StructRecord& row = rows.at(i);
        checkCells(table, row);
        checkSlots(table, row);
        if (m_isComplete && table.isMadeToBeUsed())
            checkUse(table, row);
        if (m_isComplete)
            checkMissing(table, row);
        if (m_isComplete && isIdentified && !isReferredTo(table, row, eReferenceRole::kIdentifies))
            add({eSeverity::kWarning, &table, row.key, row.name},
                translated(
                    "The %s \"%s\" (key %s) of \"%s\" has no number by which drawings find it; copy it and "
                    "use the copy."));
    }
}

void ConsistencyCheck::checkCells(const TableSchema& table, const StructRecord& row) {
    for (const Column& column : table.columns) {
        const eCellFault fault = faultOf(m_source, table, column, row.key, column.read(&row));
        if (isSure(column, fault))
            checkCell(table, row, column, fault);
    }
}

// A cell that could not be read holds its default: no name, no whole.
bool ConsistencyCheck::isSure(const Column& column, eCellFault fault) const {
    if (fault == eCellFault::kNoName || fault == eCellFault::kNoWhole)
        return m_isComplete;
    return fault != eCellFault::kNoTarget || m_source.hasAllRows(column.target);
}

std::vector<std::string> ConsistencyCheck::danglingReferences(const std::vector<RowRef>& rows) {
    m_findings.clear();
    for (const RowRef& ref : rows) {
        const StyleTable& table = m_source.table(ref.table);
        const StructRecord* row = table.find(KorOdbcKey(ref.key));
        for (const Column& column : table.schema().columns)
            if (row && column.isReference() &&
                faultOf(m_source, table.schema(), column, row->key, column.read(row)) ==
                    eCellFault::kNoTarget)
                checkCell(table.schema(), *row, column, eCellFault::kNoTarget);
    }
    std::vector<std::string> sentences;
    std::ranges::transform(m_findings, std::back_inserter(sentences), &Finding::sentence);
    return sentences;
}

void ConsistencyCheck::checkCell(const TableSchema& table, const StructRecord& row, const Column& column,
                                 eCellFault fault) {
    const auto key = [&] { return KorString::number(column.integerIn(&row)); };
    const auto target = [&] { return findTable(column.target)->rowName(); };
    const auto find = [&](eSeverity severity) {
        return Finding{severity, &table, row.key, row.name, &column};
    };
    switch (fault) {
    case eCellFault::kNoWhole:
        add(find(eSeverity::kError),
            translated("The %s \"%s\" (key %s) of \"%s\" is part of the %s with the key %s, which does not "
                       "exist; compact the "
                       "database (\"detailstyles compact\") to remove it."),
            target(), key());
        break;
    case eCellFault::kNoTarget:
        add(find(eSeverity::kError),
            translated("The %s \"%s\" (key %s) of \"%s\" refers in \"%s\" to the %s with the key %s, which "
                       "does not exist; "
                       "choose another one."),
            table.columnName(column), target(), key());
        break;
    case eCellFault::kOutOfRange:
        add(find(eSeverity::kWarning),
            translated(
                "The %s \"%s\" (key %s) of \"%s\" holds %s in \"%s\", which is outside the range of that "
                "column; enter another value."),
            displayText(column.read(&row)), table.columnName(column));
        break;
    case eCellFault::kNoName:
        add(find(eSeverity::kWarning),
            translated("The %s \"%s\" (key %s) of \"%s\" has no name; give it one."));
        break;
    case eCellFault::kNameTaken:
        if (m_source.table(table.type).find(row.name) == &row)
            break; // told of the others
        add(find(eSeverity::kWarning),
            translated(
                "The %s \"%s\" (key %s) of \"%s\" has the same name as the one with the key %s; rename one "
                "of them."),
            KorString::number(m_source.table(table.type).find(row.name)->key));
        break;
    case eCellFault::kWrongType: // such cells are reported when they are read
    case eCellFault::kNone:
        break;
    }
}

void ConsistencyCheck::checkEntriesThatNeverAct() {
    using Entry = StructDetObjReprMapKey;
    const TableSchema& table = *findTable(tableOf<Entry>);
    const RowArray& rows = m_source.table(table.type).rows();
    std::vector<const Entry*> entries;
    for (int i = 0; i < rows.size(); ++i)
        if (const auto& entry = static_cast<const Entry&>(rows.at(i));
            m_source.table(kTableReprMap).find(KorOdbcKey(entry.reprMapKey)))
            entries.push_back(&entry);
    std::ranges::stable_sort(entries, {}, &Entry::order);
    std::map<std::pair<std::int32_t, std::int32_t>, const Entry*> acting;
    for (const Entry* entry : entries) {
        const auto [first, isFirst] = acting.try_emplace({entry->reprMapKey, entry->qualifierSetKey}, entry);
        if (!isFirst)
            add({eSeverity::kWarning, &table, entry->key, entry->name, table.column("qualifier_set")},
                translated("The %s \"%s\" (key %s) of \"%s\" never acts, because \"%s\" comes before it in "
                           "the same map with the same qualifier set; choose another set or delete it."),
                first->second->name);
    }
}

void ConsistencyCheck::checkOrders() {
    for (const TableSchema& parts : allTables()) {
        const Column* order = parts.column(std::string_view("order"));
        const auto owner = std::ranges::find(parts.columns, eReferenceRole::kPartOf, &Column::role);
        if (!order || owner == parts.columns.end())
            continue;
        const TableSchema& wholes = *findTable(owner->target);
        for (const auto& [key, numbers] : numbersOf(m_source.table(parts.type).rows(), *owner, *order))
            if (const StructRecord* whole = m_source.table(wholes.type).find(KorOdbcKey(key));
                whole && !areCounted(numbers))
                add({eSeverity::kNote, &wholes, key, whole->name},
                    translated("The %s \"%s\" (key %s) of \"%s\" has a list whose numbers are not 1, 2, 3 "
                               "and so on; it is shown in their order, of equal numbers the older one "
                               "first, and is numbered anew when it is changed."));
    }
}

// Slots that are empty in front of one that is not.
void ConsistencyCheck::checkSlots(const TableSchema& table, const StructRecord& row) {
    const Column* empty = nullptr;
    for (const Column& column : table.columns) {
        if (!column.isSlot())
            continue;
        if (column.integerIn(&row) <= 0)
            empty = empty ? empty : &column;
        else if (empty)
            return add({eSeverity::kNote, &table, row.key, row.name, empty},
                       translated("The %s \"%s\" (key %s) of \"%s\" has a gap in its list at \"%s\"; the gap "
                                  "goes when the list is changed."),
                       table.columnName(*empty));
    }
}

void ConsistencyCheck::checkMissing(const TableSchema& table, const StructRecord& row) {
    for (const StillMissing& missing : stillMissing(m_source, {table.type, row.key}))
        add({eSeverity::kNote, &table, row.key, row.name, missing.column},
            translated("The %s \"%s\" (key %s) of \"%s\" is not ready for drawings yet: it has no %s."),
            wordFor(missing));
}

void ConsistencyCheck::checkUse(const TableSchema& table, const StructRecord& row) {
    if (!isReferredTo(table, row, eReferenceRole::kUses))
        add({eSeverity::kNote, &table, row.key, row.name},
            translated(
                "The %s \"%s\" (key %s) of \"%s\" is not used by anything; delete it if nobody needs it."));
}

bool ConsistencyCheck::isReferredTo(const TableSchema& table, const StructRecord& row, eReferenceRole role) {
    const std::vector<Referrer> referrers = m_source.referrersOf(table.type, KorOdbcKey(row.key));
    return std::ranges::any_of(referrers,
                               [role](const Referrer& referrer) { return referrer.column->role == role; });
}

void ConsistencyCheck::add(Finding finding, const KorString& pattern, const KorString& first,
                           const KorString& second, const KorString& third) {
    finding.sentence =
        KorString::format(pattern, {finding.table->rowName(), finding.name, KorString::number(finding.key),
                                    m_source.store().name(), first, second, third})
            .toStdString();
    // Parts have names that tell little, or none.
    if (const KorString whole = wholeSentence(m_source, {finding.table->type, finding.key}); !whole.isEmpty())
        finding.sentence += " " + whole.toStdString();
    m_findings.push_back(std::move(finding));
}
