#include "data/RowClosure.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

// Rows in the order in which they are reached, each with all that it brings along.
class Collector {
public:
    explicit Collector(StyleSource& source) : m_source(source) {}

    void add(RowRef row) {
        if (m_source.table(row.table).find(KorOdbcKey(row.key)) && m_seen.insert(row).second)
            m_rows.push_back(row);
    }

    std::vector<RowRef> take() {
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            addNeighbours(m_rows[i]);
        return std::move(m_rows);
    }

private:
    void addNeighbours(RowRef row) {
        for (const RowRef& target : targetsOf(m_source, row))
            add(target);
        for (const Referrer& referrer : m_source.referrersOf(row.table, KorOdbcKey(row.key)))
            if (referrer.column->role == eReferenceRole::kPartOf ||
                referrer.column->role == eReferenceRole::kIdentifies)
                add({referrer.table->type, referrer.key});
    }

    StyleSource& m_source;
    std::set<RowRef> m_seen;
    std::vector<RowRef> m_rows;
};

bool isReferredTo(const TableSchema& table) {
    return std::ranges::any_of(allTables(), [&](const TableSchema& other) {
        return std::ranges::find(other.columns, table.type, &Column::target) != other.columns.end();
    });
}

} // namespace

bool isLookedUp(const TableSchema& table) {
    return !isReferredTo(table) && !belongsToOthers(table);
}

bool belongsToOthers(const TableSchema& table) {
    return std::ranges::any_of(table.columns, [](const Column& column) {
        return column.isReference() && column.role != eReferenceRole::kUses &&
               column.role != eReferenceRole::kFiledUnder;
    });
}

bool isListing(const TableSchema& table) {
    const auto has = [&table](eReferenceRole role) {
        return std::ranges::any_of(table.columns, [role](const Column& column) {
            return column.isReference() && column.role == role;
        });
    };
    return has(eReferenceRole::kPartOf) && has(eReferenceRole::kFiledUnder) && !has(eReferenceRole::kUses);
}

std::vector<Referrer> partsOf(StyleSource& source, RowRef row) {
    std::vector<Referrer> parts = source.referrersOf(row.table, KorOdbcKey(row.key));
    std::erase_if(parts, [](const Referrer& part) { return part.column->role != eReferenceRole::kPartOf; });
    return parts;
}

std::string whyNotCopied(StyleSource& source, RowRef row) {
    std::map<eTableType, int> counts{{row.table, 1}};
    for (const Referrer& part : partsOf(source, row))
        ++counts[part.table->type];
    for (const auto& [table, count] : counts)
        if (std::string reason = source.whyFull(table, count); !reason.empty())
            return reason;
    return {};
}

std::vector<RowRef> targetsOf(StyleSource& source, RowRef row) {
    std::vector<RowRef> targets;
    const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
    if (!record)
        return targets;
    for (const Column& column : findTable(row.table)->columns)
        if (column.isReference())
            if (const KorOdbcKey key(column.integerIn(record)); source.table(column.target).find(key))
                targets.push_back({column.target, key});
    return targets;
}

std::vector<RowRef> closureOf(StyleSource& source, RowRef row) {
    return closureOf(source, std::vector{row});
}

std::vector<RowRef> closureOf(StyleSource& source, const std::vector<RowRef>& rows) {
    Collector collector(source);
    for (const RowRef& row : rows)
        collector.add(row);
    return collector.take();
}

std::vector<RowRef> lookUpRows(StyleSource& source) {
    Collector collector(source);
    for (const TableSchema& table : allTables()) {
        if (!isLookedUp(table))
            continue;
        const RowArray& rows = source.table(table.type).rows();
        for (int i = 0; i < rows.size(); ++i)
            collector.add({table.type, rows.at(i).key});
    }
    return collector.take();
}
