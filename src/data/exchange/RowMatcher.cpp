#include "data/exchange/RowMatcher.h"

#include "data/FreeName.h"
#include "data/RowClosure.h"

#include <algorithm>

namespace {

bool isFilingPlace(eTableType table) {
    return std::ranges::any_of(allTables(), [table](const TableSchema& other) {
        return std::ranges::any_of(other.columns, [table](const Column& column) {
            return column.target == table && column.role == eReferenceRole::kFiledUnder;
        });
    });
}

// What rows of the same content have in common: their cells, but for names and for the whole of a part.
class ContentHash {
public:
    void add(const TableSchema& table, const StructRecord& record, const Column* whole) {
        add(static_cast<std::size_t>(table.type));
        for (const Column& column : table.columns)
            if (column.number != 1 && &column != whole)
                add(std::hash<CellValue>{}(column.read(&record)));
    }
    std::size_t value() const { return m_value; }

private:
    void add(std::size_t part) { m_value = m_value * 1099511628211u + part; }

    std::size_t m_value = 0;
};

// Where a row is listed is not what it is.
std::vector<Referrer> contentOf(StyleSource& source, RowRef row) {
    std::vector<Referrer> parts = partsOf(source, row);
    std::erase_if(parts, [](const Referrer& part) { return isListing(*part.table); });
    return parts;
}

} // namespace

std::int32_t RowMatcher::find(RowRef row) {
    if (const auto known = m_found.find(row); known != m_found.end())
        return known->second;
    const std::int32_t key = search(row);
    m_found[row] = key;
    return key;
}

std::int32_t RowMatcher::search(RowRef row) {
    const StructRecord* record = m_from.table(row.table).find(KorOdbcKey(row.key));
    if (!record)
        return 0;
    if (isFilingPlace(row.table)) {
        const StructRecord* place = m_to.table(row.table).find(record->name);
        return place ? place->key : 0;
    }
    const Namesakes& candidates = namesakes(row.table, record->name);
    const auto hash = candidates.known > 0 ? contentHash(row) : std::nullopt;
    const auto alike = hash ? candidates.byContent.find(*hash) : candidates.byContent.end();
    if (alike == candidates.byContent.end())
        return 0;
    const auto same = std::ranges::find_if(
        alike->second, [&](const Candidate& candidate) { return equalContent(row, candidate); });
    return same == alike->second.end() ? 0 : same->key;
}

// Rows are only appended while the matcher lives, so what was looked at once is looked at for good.
const RowMatcher::Namesakes& RowMatcher::namesakes(eTableType type, const KorString& name) {
    Namesakes& found = m_namesakes[{type, name}];
    const StyleTable& table = m_to.table(type);
    const auto next = [&] { return table.find(found.known == 0 ? name : numberedName(name, found.known)); };
    for (const StructRecord* row = next(); row; row = next()) {
        Candidate candidate{row->key, contentOf(m_to, {type, row->key})};
        ContentHash hash;
        hash.add(table.schema(), *row, nullptr);
        for (const Referrer& part : candidate.parts)
            hash.add(*part.table, *m_to.table(part.table->type).find(KorOdbcKey(part.key)), part.column);
        found.byContent[hash.value()].push_back(std::move(candidate));
        ++found.known;
    }
    return found;
}

// Nothing when the target holds no row that could be the same.
std::optional<std::size_t> RowMatcher::contentHash(RowRef row) {
    const auto wanted = translated(row);
    if (!wanted)
        return std::nullopt;
    wanted->key = row.key; // a whole that its parts can refer to
    ContentHash hash;
    hash.add(*findTable(row.table), *wanted, nullptr);
    for (const Referrer& part : contentOf(m_from, row)) {
        const auto record = translatedPart(part, *wanted);
        if (!record)
            return std::nullopt;
        hash.add(*part.table, *record, part.column);
    }
    return hash.value();
}

bool RowMatcher::equalContent(RowRef row, const Candidate& candidate) {
    const StyleTable& table = m_to.table(row.table);
    const StructRecord* other = table.find(KorOdbcKey(candidate.key));
    const auto wanted = translated(row);
    if (!wanted || !other)
        return false;
    wanted->key = other->key;
    wanted->name = other->name;
    return table.rows().equal(*wanted, *other) && equalParts(row, candidate);
}

bool RowMatcher::equalParts(RowRef row, const Candidate& candidate) {
    const StructRecord& whole = *m_to.table(row.table).find(KorOdbcKey(candidate.key));
    const auto equal = [&](const Referrer& part, const Referrer& other) {
        if (part.column != other.column)
            return false;
        const StyleTable& table = m_to.table(other.table->type);
        const auto wanted = translatedPart(part, whole);
        if (wanted)
            wanted->key = other.key;
        return wanted && table.rows().equal(*wanted, *table.find(KorOdbcKey(other.key)));
    };
    return std::ranges::equal(contentOf(m_from, row), candidate.parts, equal);
}

std::shared_ptr<StructRecord> RowMatcher::translated(RowRef row, const Column* known, std::int32_t key) {
    const StyleTable& table = m_from.table(row.table);
    const StructRecord* record = table.find(KorOdbcKey(row.key));
    if (!record)
        return nullptr;
    auto copy = table.rows().copyOf(record);
    copy->key = 0;
    for (const Column& column : table.schema().columns) {
        if (!column.isReference())
            continue;
        std::int32_t& cell = column.integerIn(copy.get());
        if (&column != known && cell <= 0)
            continue; // no row, or a default
        const RowRef target{column.target, cell};
        const bool exists = m_from.table(target.table).find(KorOdbcKey(target.key)) != nullptr;
        cell = &column == known ? key : exists ? find(target) : 0;
        if (exists && cell == 0)
            return nullptr;
    }
    return copy;
}

std::shared_ptr<StructRecord> RowMatcher::translatedPart(const Referrer& part, const StructRecord& whole) {
    const StyleTable& table = m_from.table(part.table->type);
    auto copy = translated({part.table->type, part.key}, part.column, whole.key);
    if (!copy)
        return copy;
    const std::int32_t ownWhole = part.column->integerIn(table.find(KorOdbcKey(part.key)));
    if (copy->name == m_from.table(part.column->target).find(KorOdbcKey(ownWhole))->name)
        copy->name = whole.name;
    return copy;
}
