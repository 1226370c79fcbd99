#include "data/StyleSource.h"

#include "base/KorAssert.h"
#include "base/Translation.h"
#include "data/ReferenceIndex.h"
#include "data/store/LockWait.h"
#include "data/store/ReadTransaction.h"

#include <algorithm>
#include <limits>
#include <utility>

struct StyleSource::Reading : ReadTransaction {
    using ReadTransaction::ReadTransaction;
};

StyleSource::StyleSource(SourceId id, std::unique_ptr<StyleStore> store)
    : m_id(id), m_store(std::move(store)) {}

StyleSource::~StyleSource() = default;

StyleTable& StyleSource::table(eTableType type) {
    const TableSchema* schema = findTable(type);
    if (!KorAssert::check(schema != nullptr, "each table type has a declaration"))
        schema = &allTables().front();
    auto& slot = m_tables[static_cast<std::size_t>(schema->type)];
    if (!slot)
        read(*schema, Reading(*m_store));
    return *slot;
}

Result<> StyleSource::readingOf(eTableType type) {
    table(type);
    const auto it = m_failures.find(type);
    return it == m_failures.end() ? Result<>{} : Result<>{it->second};
}

// A table that is read at a second try is filled in its place: its address is known to others.
bool StyleSource::read(const TableSchema& schema, const Reading& reading) {
    auto& slot = m_tables[static_cast<std::size_t>(schema.type)];
    if (!slot)
        slot = std::make_unique<StyleTable>(schema);
    std::vector<ReadProblem> problems;
    Result<> result = reading.result();
    if (result)
        result = reading.store().readTable(schema, slot->rowsToFill(), problems);
    if (!result) {
        m_failures[schema.type] = result.error;
        note(result.error);
        return false;
    }
    if (const auto failure = m_failures.extract(schema.type); !failure.empty()) {
        for (auto& index : m_references)
            index.reset();
        if (std::ranges::none_of(m_failures,
                                 [&](const auto& other) { return other.second == failure.mapped(); }))
            std::erase_if(m_problems,
                          [&](const ReadProblem& each) { return each.sentence == failure.mapped(); });
    }
    if (const std::string tooNew = reading.store().whyTooNew(); !tooNew.empty())
        note(tooNew);
    m_problems.insert(m_problems.end(), problems.begin(), problems.end());
    m_isOutdated = m_isOutdated || m_state.value_or(reading.state()) != reading.state();
    m_state = reading.state();
    return true;
}

void StyleSource::note(const std::string& sentence) {
    if (std::ranges::find(m_problems, sentence, &ReadProblem::sentence) == m_problems.end())
        m_problems.push_back({sentence});
}

bool StyleSource::isRead(const TableSchema& schema) const {
    return m_tables[static_cast<std::size_t>(schema.type)] && !m_failures.contains(schema.type);
}

Result<> StyleSource::readAll() {
    if (!m_isAllRead && !m_isOutdated) {
        const Reading reading(*m_store);
        for (const TableSchema& schema : allTables())
            if (!isRead(schema) && !read(schema, reading))
                return {m_failures.at(schema.type)};
        m_isAllRead = !m_isOutdated;
    }
    if (m_isAllRead)
        return {};
    if (const Reading reading(*m_store); !reading.result())
        return reading.result();
    return Result<>::failure(
        KorString::format(translated("The style database \"%s\" was changed by another program while it "
                                     "was being read, so nothing was done; try again."),
                          {m_store->name()}));
}

Result<> StyleSource::complete() {
    Result<> read = readAll();
    const auto lost = std::ranges::find(m_problems, false, &ReadProblem::kept);
    return !read || lost == m_problems.end()
               ? read
               : Result<>::failure(KorString::format(
                     translated(
                         "\"%s\" could not be read whole, so what depends on all of it is not done: %s"),
                     {m_store->name(), lost->sentence}));
}

bool StyleSource::readAhead() {
    if (m_isOutdated || hasFailed() || m_store->isOnServer())
        return false;
    for (const TableSchema& schema : allTables())
        if (!isRead(schema))
            return readAhead(schema);
    for (const TableSchema& schema : allTables())
        if (!m_references[static_cast<std::size_t>(schema.type)]) {
            references(schema.type);
            return true;
        }
    return false;
}

// What cannot be read now is no failure: nobody wanted it yet.
bool StyleSource::readAhead(const TableSchema& schema) {
    const LockWait::Brief brief;
    const Reading reading(*m_store);
    if (m_state.value_or(reading.state()) != reading.state())
        return false;
    const auto known = static_cast<std::ptrdiff_t>(m_problems.size());
    if (read(schema, reading))
        return true;
    m_tables[static_cast<std::size_t>(schema.type)].reset();
    m_failures.erase(schema.type);
    m_problems.erase(m_problems.begin() + known, m_problems.end());
    return false;
}

bool StyleSource::hasAllRows(eTableType type) const {
    return std::ranges::none_of(m_problems, [&](const ReadProblem& problem) {
        return !problem.kept && !problem.column && problem.table && problem.table->type == type;
    });
}

bool StyleSource::isUnreadable(KorOdbcKey key, const Column& column) const {
    return std::ranges::any_of(m_problems, [&](const ReadProblem& problem) {
        return key.isValid() && !problem.kept && problem.column == &column && problem.key == key.getKey();
    });
}

void StyleSource::forgetMended(const std::vector<CellChange>& cells) {
    if (m_problems.empty())
        return;
    std::erase_if(m_problems, [&](const ReadProblem& problem) {
        return problem.key > 0 && std::ranges::any_of(cells, [&](const CellChange& cell) {
                   return problem.column == cell.column && problem.key == cell.key;
               });
    });
}

void StyleSource::setOutdated() {
    m_isOutdated = true;
    m_isAllRead = false;
}

bool StyleSource::readFailedAgain() {
    if (m_failures.empty())
        return false;
    const std::size_t before = m_failures.size();
    std::optional<LockWait::Brief> brief;
    if (!m_store->isOnServer()) // whose line a wait that is given up would end
        brief.emplace();
    const Reading reading(*m_store);
    for (const TableSchema& schema : allTables())
        if (m_failures.contains(schema.type) && !read(schema, reading))
            break;
    return m_failures.size() < before;
}

// What a server has to tell takes its time, in which events go on: until all is there what was read is shown.
Result<> StyleSource::readAnew(const std::set<eTableType>& needed) {
    std::set<eTableType> types = needed;
    if (m_store->isOnServer())
        for (const TableSchema& schema : allTables())
            if (isRead(schema))
                types.insert(schema.type);
    StyleSource fresh(m_id, nullptr);
    Result<> result;
    {
        const Reading reading(*m_store);
        for (auto it = types.begin(); result && it != types.end(); ++it)
            if (!fresh.read(*findTable(*it), reading))
                result = {fresh.m_failures.at(*it)};
    }
    if (!result)
        return result;
    dropTables();
    m_tables = std::move(fresh.m_tables);
    m_problems = std::move(fresh.m_problems);
    m_state = fresh.m_state;
    return {};
}

std::string StyleSource::whyFull(eTableType type, int count) {
    const StyleTable& rows = table(type);
    const std::int32_t highest = rows.highestKey();
    if (count <= std::numeric_limits<std::int32_t>::max() - highest)
        return {};
    return KorString::format(
               translated("The style database \"%s\" holds a %s with so high a key (%s) that no more can "
                          "be added; give that one a lower key with a database tool."),
               {m_store->name(), rows.schema().rowName(), KorString::number(highest)})
        .toStdString();
}

ReferenceIndex& StyleSource::references(eTableType target) {
    auto& slot = m_references[static_cast<std::size_t>(target)];
    if (slot)
        return *slot;
    slot = std::make_unique<ReferenceIndex>();
    for (const TableSchema& schema : allTables()) {
        if (std::ranges::find(schema.columns, target, &Column::target) == schema.columns.end())
            continue;
        const RowArray& rows = table(schema.type).rows();
        slot->reserve(schema, rows, target);
        for (int i = 0; i < rows.size(); ++i)
            slot->add(schema, rows.at(i), target);
    }
    return *slot;
}

ReferenceIndex* StyleSource::builtReferences(const Column& column) {
    return column.isReference() ? m_references[static_cast<std::size_t>(column.target)].get() : nullptr;
}

std::vector<Referrer> StyleSource::referrersOf(eTableType target, KorOdbcKey key) {
    return key.isValid() ? references(target).referrersOf(key) : std::vector<Referrer>();
}

bool StyleSource::setCell(eTableType type, KorOdbcKey key, const Column& column, const CellValue& value) {
    StyleTable& rows = table(type);
    const StructRecord* row = rows.find(key);
    if (!row)
        return false;
    note(type, key.getKey());
    ReferenceIndex* index = builtReferences(column);
    const std::int32_t before = index ? column.integerIn(row) : 0;
    if (!rows.setCell(key, column, value))
        return false;
    if (index) {
        const Referrer referrer{&rows.schema(), &column, key};
        index->remove(before, referrer);
        index->add(column.integerIn(row), referrer);
    }
    return true;
}

void StyleSource::insert(eTableType type, const StructRecord& record) {
    note(type, record.key);
    table(type).insert(record);
    updateReferences(table(type).schema(), record, true);
}

void StyleSource::remove(eTableType type, KorOdbcKey key) {
    note(type, key.getKey());
    if (const StructRecord* row = table(type).find(key))
        updateReferences(table(type).schema(), *row, false);
    table(type).remove(key);
}

void StyleSource::updateReferences(const TableSchema& table, const StructRecord& record, bool added) {
    for (const Column& column : table.columns) {
        ReferenceIndex* index = builtReferences(column);
        if (!index)
            continue;
        const Referrer referrer{&table, &column, record.key};
        if (added)
            index->add(column.integerIn(&record), referrer);
        else
            index->remove(column.integerIn(&record), referrer);
    }
}

void RowJournal::note(const StyleTable& table, std::int32_t key) {
    const auto [place, isNew] = before.try_emplace({table.schema().type, key});
    const StructRecord* row = isNew ? table.find(KorOdbcKey(key)) : nullptr;
    if (row)
        place->second = table.rows().copyOf(row);
}

void StyleSource::note(eTableType type, std::int32_t key) {
    if (m_journal)
        m_journal->note(table(type), key);
}

// Cell by cell, so that names and references are looked up only where they are different.
void StyleSource::takeRow(const TableSchema& schema, const StructRecord& row) {
    const KorOdbcKey key(row.key);
    const StructRecord* known = table(schema.type).find(key);
    if (!known)
        return insert(schema.type, row);
    for (const Column& column : schema.columns)
        if (const CellValue value = column.read(&row); value != column.read(known))
            setCell(schema.type, key, column, value);
}

void StyleSource::take(const StoredSince& since) {
    for (const StoredSince::Table& stored : since.tables) {
        const eTableType type = stored.table->type;
        if (!isRead(*stored.table))
            continue;
        std::set<std::int32_t> gone(stored.gone.begin(), stored.gone.end());
        if (const RowArray& rows = table(type).rows(); stored.isWhole)
            for (int i = 0; i < rows.size(); ++i)
                if (!stored.rows->find(rows.at(i).key))
                    gone.insert(rows.at(i).key);
        std::erase_if(m_problems, [&](const ReadProblem& problem) {
            return problem.table == stored.table &&
                   (stored.isWhole || gone.contains(problem.key) || stored.rows->find(problem.key));
        });
        for (const std::int32_t key : gone)
            if (table(type).find(KorOdbcKey(key)))
                remove(type, KorOdbcKey(key));
        for (int i = 0; i < stored.rows->size(); ++i)
            takeRow(*stored.table, stored.rows->at(i));
        m_problems.insert(m_problems.end(), stored.problems.begin(), stored.problems.end());
    }
    m_state = since.state;
    m_isOutdated = false;
    m_isAllRead =
        std::ranges::all_of(allTables(), [this](const TableSchema& schema) { return isRead(schema); });
}

void StyleSource::dropTables() {
    if (m_journal)
        m_journal->isWhole = false;
    for (auto& table : m_tables)
        table.reset();
    for (auto& index : m_references)
        index.reset();
    m_problems.clear();
    m_failures.clear();
    m_state.reset();
    m_isOutdated = m_isAllRead = false;
}
