#include "session/KorDSMPartList.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMFamilies.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMViewList.h"

#include <algorithm>

namespace {

const Column* ownerColumn(const TableSchema& parts, eTableType whole) {
    const auto owner = std::ranges::find_if(parts.columns, [whole](const Column& column) {
        return column.isReference() && column.role == eReferenceRole::kPartOf && column.target == whole;
    });
    return owner == parts.columns.end() ? nullptr : &*owner;
}

} // namespace

std::unique_ptr<KorDSMEditedList> KorDSMEditedList::of(SourceId source, RowRef whole, eTableType parts) {
    if (parts == whole.table)
        return std::make_unique<KorDSMViewList>(source, whole.key);
    return std::make_unique<KorDSMPartList>(source, whole, parts);
}

KorDSMPartList::KorDSMPartList(SourceId source, RowRef whole, eTableType parts)
    : KorDSMEditedList(source, whole, *findTable(parts)), m_owner(ownerColumn(table(), whole.table)),
      m_order(table().column(std::string_view("order"))) {}

// Where a view is listed is chosen on a page of its own.
std::vector<eTableType> KorDSMPartList::listedParts(eTableType whole) {
    std::vector<eTableType> parts;
    for (const TableSchema& table : allTables())
        if (table.type != kTableViewRequestCategory && ownerColumn(table, whole))
            parts.push_back(table.type);
    return parts;
}

std::vector<const Column*> KorDSMPartList::cells() const {
    std::vector<const Column*> cells;
    for (const Column& column : table().columns)
        if (column.number != 1 && &column != m_owner && &column != m_order)
            cells.push_back(&column);
    return cells;
}

const StructRecord* KorDSMPartList::row(std::int32_t key) const {
    StyleSource* open = StyleDatabases::current().source(source());
    return open ? open->table(table().type).find(KorOdbcKey(key)) : nullptr;
}

KorDSMEditedList::Cell KorDSMPartList::cell(std::int32_t key, const Column& column) const {
    return {record(key), &column};
}

KorDSMEditedList::Keys KorDSMPartList::keys() const {
    StyleSource* open = StyleDatabases::current().source(source());
    std::vector<std::pair<std::int32_t, std::int32_t>> rows; // order and key
    if (open)
        for (const Referrer& part : open->referrersOf(whole().table, KorOdbcKey(whole().key)))
            if (part.column == m_owner)
                rows.emplace_back(m_order ? m_order->integerIn(row(part.key)) : 0, part.key);
    std::ranges::sort(rows);
    Keys keys;
    std::ranges::transform(rows, std::back_inserter(keys), [](const auto& row) { return row.second; });
    return keys;
}

// Only rows whose number changes are written.
WriteResult KorDSMPartList::arrange(const Keys& order) {
    std::int32_t number = 0;
    for (const std::int32_t key : m_order ? order : Keys()) {
        WriteResult result = StyleDatabases::current().setCell(table().type, KorOdbcKey(key), m_order->number,
                                                               std::int64_t{++number});
        if (result.isFailed())
            return result;
    }
    return {};
}

WriteResult KorDSMPartList::insert(std::size_t place,
                                   const std::vector<std::shared_ptr<StructRecord>>& records, Keys& made) {
    Keys order = keys();
    for (const std::shared_ptr<StructRecord>& record : records) {
        if (WriteResult result = StyleDatabases::current().append(table().type, *record); result.isFailed())
            return result;
        made.push_back(record->key);
    }
    order.insert(order.begin() + static_cast<std::ptrdiff_t>(place), made.begin(), made.end());
    return arrange(order);
}

WriteResult KorDSMPartList::insertRows(std::size_t place, const std::vector<NewRow>& rows, Keys& made) {
    const RowArray& present = StyleDatabases::current().source(source())->table(table().type).rows();
    std::vector<std::shared_ptr<StructRecord>> records;
    for (const NewRow& row : rows) {
        const std::shared_ptr<StructRecord>& record = records.emplace_back(present.copyOf(nullptr));
        record->name = row.name.isEmpty() && KorDSMFamilies::of(table().type)
                           ? numberedName(keys().size() + records.size())
                           : row.name;
        m_owner->integerIn(record.get()) = whole().key;
        for (std::size_t i = 0; i < row.values.size(); ++i)
            cells()[i]->write(record.get(), row.values[i]);
    }
    return insert(place, records, made);
}

// What users know by its name has one of its own in its list.
KorString KorDSMPartList::numberedName(std::size_t number) const {
    const Keys present = keys();
    KorString name;
    do
        name = KorString::format("%s %d", {KorDSMValueText::tableCaption(table()),
                                           KorString::number(static_cast<std::int64_t>(number++))});
    while (std::ranges::any_of(present, [&](std::int32_t key) { return row(key)->name == name; }));
    return name;
}

WriteResult KorDSMPartList::copyRows(const Keys& rows, std::size_t place, Keys& made) {
    const RowArray& present = StyleDatabases::current().source(source())->table(table().type).rows();
    std::vector<std::shared_ptr<StructRecord>> records;
    for (const std::int32_t key : rows)
        records.push_back(present.copyOf(row(key)));
    return insert(place, records, made);
}

WriteResult KorDSMPartList::removeRows(const Keys& rows) {
    for (const std::int32_t key : rows)
        if (WriteResult result = StyleDatabases::current().remove(table().type, KorOdbcKey(key));
            result.isFailed())
            return result;
    return arrange(keys());
}
