#include "session/KorDSMPartList.h"

#include "operations/KorDSNManager.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"
#include "session/PendingGroup.h"

#include <algorithm>

namespace {

// Captions of the steps, for one row and for several.
constexpr int kAdding = 560;
constexpr int kRemoving = 561;
constexpr int kRemovingMany = 562;
constexpr int kDuplicating = 563;
constexpr int kDuplicatingMany = 564;
constexpr int kMoving = 565;
constexpr int kMovingMany = 566;
constexpr int kChanging = 567;
constexpr int kChangingMany = 568;
constexpr int kPasting = 569;
constexpr int kPastingMany = 570;

// A text that ends neither its field nor its line.
KorString oneField(const KorString& text) {
    return text.replaced("\t", " ").replaced("\n", " ");
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator, begin)) {
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

bool contains(const KorDSMPartList::Keys& keys, std::int32_t key) {
    return std::ranges::find(keys, key) != keys.end();
}

const Column* ownerColumn(const TableSchema& parts, eTableType whole) {
    const auto owner = std::ranges::find_if(parts.columns, [whole](const Column& column) {
        return column.isReference() && column.role == eReferenceRole::kPartOf && column.target == whole;
    });
    return owner == parts.columns.end() ? nullptr : &*owner;
}

} // namespace

KorDSMPartList::KorDSMPartList(SourceId source, RowRef whole, eTableType parts)
    : m_source(source), m_whole(whole), m_table(*findTable(parts)),
      m_owner(ownerColumn(m_table, whole.table)), m_order(m_table.column(std::string_view("order"))) {}

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
    for (const Column& column : m_table.columns)
        if (column.number != 1 && &column != m_owner && &column != m_order)
            cells.push_back(&column);
    return cells;
}

const StructRecord* KorDSMPartList::row(std::int32_t key) const {
    StyleSource* source = StyleDatabases::current().source(m_source);
    return source ? source->table(m_table.type).find(KorOdbcKey(key)) : nullptr;
}

KorDSMPartList::Keys KorDSMPartList::keys() const {
    StyleSource* source = StyleDatabases::current().source(m_source);
    Keys keys;
    if (!source)
        return keys;
    for (const Referrer& part : source->referrersOf(m_whole.table, KorOdbcKey(m_whole.key)))
        if (part.column == m_owner)
            keys.push_back(part.key);
    std::ranges::sort(keys, {}, [this](std::int32_t key) {
        return std::pair(m_order ? m_order->integerIn(row(key)) : 0, key);
    });
    return keys;
}

template <typename Write>
KorDSMPartList::Outcome KorDSMPartList::change(const KorString& caption, Write write) {
    Outcome outcome;
    const KorDSNRequest request(m_source.dsn, m_source.index);
    outcome.error = KorDSMItemCommands::whyNotWritable(m_source).toStdString();
    if (!outcome.error.empty()) {
        outcome.kind = WriteResult::kReadOnlySource;
        return outcome;
    }
    PendingGroup group(caption);
    WriteResult result = KorDSMGuardedWrite::changeParts(m_whole, [&] { return write(outcome); });
    if (!result.isStored()) {
        group.takeBack();
        return {std::move(result), {}, {}, true};
    }
    outcome.changes = KorDSMUndo::changesSince(group.begin());
    return outcome;
}

KorString KorDSMPartList::caption(int one, int many, std::size_t count) const {
    StyleSource* source = StyleDatabases::current().source(m_source);
    const StructRecord* whole = source ? source->table(m_whole.table).find(KorOdbcKey(m_whole.key)) : nullptr;
    const KorString name = KorDSMValueText::shortName(whole ? whole->name : KorString());
    return count == 1 ? KorString::format(Prompts::dsm(one), {name})
                      : KorString::format(Prompts::dsm(many),
                                          {KorString::number(static_cast<std::int64_t>(count)), name});
}

// Only rows whose number changes are written.
WriteResult KorDSMPartList::number(const Keys& rows) {
    std::int32_t order = 0;
    for (const std::int32_t key : m_order ? rows : Keys()) {
        WriteResult result = StyleDatabases::current().setCell(m_table.type, KorOdbcKey(key), m_order->number,
                                                               std::int64_t{++order});
        if (result.isFailed())
            return result;
    }
    return {};
}

KorDSMPartList::Keys KorDSMPartList::without(const Keys& rows) const {
    Keys rest = keys();
    std::erase_if(rest, [&rows](std::int32_t key) { return contains(rows, key); });
    return rest;
}

WriteResult KorDSMPartList::append(StructRecord& record) {
    return StyleDatabases::current().append(m_table.type, record);
}

KorDSMPartList::Outcome KorDSMPartList::add(std::int32_t after) {
    return change(caption(kAdding, kAdding, 1), [&](Outcome& outcome) {
        Keys order = keys();
        const auto place = std::ranges::find(order, after);
        StyleTable& table = StyleDatabases::current().source(m_source)->table(m_table.type);
        const std::shared_ptr<StructRecord> record = table.rows().copyOf(nullptr);
        record->name = KorDSMValueText::tableCaption(m_table);
        m_owner->integerIn(record.get()) = m_whole.key;
        if (WriteResult result = append(*record); result.isFailed())
            return result;
        outcome.selected = {record->key};
        order.insert(place == order.end() ? place : place + 1, record->key);
        return number(order);
    });
}

KorString KorDSMPartList::textOf(const Keys& rows) const {
    const KorDSNRequest request(m_source.dsn, m_source.index);
    KorString text;
    for (const std::int32_t key : rows) {
        const StructRecord& record = *row(key);
        text = text + oneField(record.name);
        for (const Column* column : cells())
            text = text + "\t" + oneField(KorDSMValueText::toText(m_table, *column, record));
        text = text + "\n";
    }
    return text;
}

// A new row from one line; null, with the reason, where a cell names nothing here.
std::shared_ptr<StructRecord> KorDSMPartList::read(std::string_view line, std::string& error) const {
    const std::vector<std::string_view> fields = split(line, '\t');
    const std::vector<const Column*> columns = cells();
    const std::shared_ptr<StructRecord> record =
        StyleDatabases::current().source(m_source)->table(m_table.type).rows().copyOf(nullptr);
    record->name = KorString(fields.front());
    m_owner->integerIn(record.get()) = m_whole.key;
    for (std::size_t i = 0; i < columns.size() && i + 1 < fields.size(); ++i) {
        const auto parsed = KorDSMValueText::parse(m_table, *columns[i], KorString(fields[i + 1]));
        if (!parsed) {
            error = KorString::format("%s: %s", {KorDSMValueText::columnCaption(m_table, *columns[i]),
                                                 KorString(parsed.error)})
                        .toStdString();
            return nullptr;
        }
        columns[i]->write(record.get(), parsed.value);
    }
    return record;
}

KorDSMPartList::Outcome KorDSMPartList::paste(std::int32_t after, const KorString& text) {
    const KorDSNRequest request(m_source.dsn, m_source.index);
    std::vector<std::shared_ptr<StructRecord>> records;
    for (const std::string_view line : split(text.view(), '\n')) {
        std::string error;
        if (line.empty())
            continue;
        records.push_back(read(line, error));
        if (!records.back())
            return {{WriteResult::kFailed, std::move(error)}};
    }
    return change(caption(kPasting, kPastingMany, records.size()), [&](Outcome& outcome) -> WriteResult {
        Keys order = keys();
        const auto place = std::ranges::find(order, after);
        for (const std::shared_ptr<StructRecord>& record : records) {
            if (WriteResult result = append(*record); !result.isStored())
                return result;
            outcome.selected.push_back(record->key);
        }
        order.insert(place == order.end() ? place : place + 1, outcome.selected.begin(),
                     outcome.selected.end());
        return number(order);
    });
}

KorDSMPartList::Outcome KorDSMPartList::remove(const Keys& rows) {
    const Keys before = keys();
    const auto first = std::ranges::find_if(before, [&](std::int32_t key) { return contains(rows, key); });
    return change(caption(kRemoving, kRemovingMany, rows.size()), [&](Outcome& outcome) {
        for (const std::int32_t key : rows)
            if (WriteResult result = StyleDatabases::current().remove(m_table.type, KorOdbcKey(key));
                result.isFailed())
                return result;
        const Keys rest = keys();
        const auto place = std::min<std::size_t>(static_cast<std::size_t>(first - before.begin()),
                                                 rest.empty() ? 0 : rest.size() - 1);
        if (!rest.empty())
            outcome.selected = {rest[place]};
        return number(rest);
    });
}

KorDSMPartList::Outcome KorDSMPartList::duplicate(const Keys& rows) {
    return change(caption(kDuplicating, kDuplicatingMany, rows.size()), [&](Outcome& outcome) {
        Keys order = keys();
        StyleTable& table = StyleDatabases::current().source(m_source)->table(m_table.type);
        auto last = order.end();
        for (auto it = order.begin(); it != order.end(); ++it) {
            if (!contains(rows, *it))
                continue;
            last = it + 1;
            const std::shared_ptr<StructRecord> copy = table.rows().copyOf(row(*it));
            if (WriteResult result = append(*copy); result.isFailed())
                return result;
            outcome.selected.push_back(copy->key);
        }
        order.insert(last, outcome.selected.begin(), outcome.selected.end());
        return number(order);
    });
}

KorDSMPartList::Outcome KorDSMPartList::moveTo(const Keys& rows, int place) {
    const Keys before = keys();
    Keys moved;
    std::ranges::copy_if(before, std::back_inserter(moved),
                         [&](std::int32_t key) { return contains(rows, key); });
    // Those above the place that move along leave it.
    const auto end = before.begin() + std::clamp(place, 0, static_cast<int>(before.size()));
    const auto above =
        std::count_if(before.begin(), end, [&](std::int32_t key) { return !contains(rows, key); });
    Keys order = without(rows);
    order.insert(order.begin() + above, moved.begin(), moved.end());
    if (!m_order || order == before)
        return {{WriteResult::kUnchanged}, moved};
    return change(caption(kMoving, kMovingMany, moved.size()), [&](Outcome& outcome) {
        outcome.selected = moved;
        return number(order);
    });
}

KorDSMPartList::Outcome KorDSMPartList::moveBy(const Keys& rows, int step) {
    const Keys before = keys();
    const auto isMoved = [&](std::int32_t key) { return contains(rows, key); };
    const auto first = static_cast<int>(std::ranges::find_if(before, isMoved) - before.begin());
    const auto last = static_cast<int>(std::find_if(before.rbegin(), before.rend(), isMoved).base() -
                                       before.begin()); // one behind
    return moveTo(rows, step < 0 ? std::max(first + step, 0) : last + step);
}

KorDSMPartList::Outcome KorDSMPartList::set(const Keys& rows, const Column& column, const CellValue& value) {
    return change(caption(kChanging, kChangingMany, rows.size()), [&](Outcome& outcome) {
        outcome.selected = rows;
        for (const std::int32_t key : rows)
            if (WriteResult result =
                    StyleDatabases::current().setCell(m_table.type, KorOdbcKey(key), column.number, value);
                result.isFailed())
                return result;
        return WriteResult();
    });
}
