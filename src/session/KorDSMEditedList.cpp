#include "session/KorDSMEditedList.h"

#include "operations/KorDSNManager.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMCopiedRows.h"
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
constexpr int kChanging = 1362;        // "change of %s of "%s" in "%s""
constexpr int kChangingUnnamed = 1363; // "change of %s of an entry of "%s""
constexpr int kChangingMany = 1364;    // "change of %s of %s entries of "%s""
constexpr int kPasting = 569;
constexpr int kPastingMany = 570;
constexpr int kMismatch = 750; // "%s rows were copied and %s are selected; ..."

// A text that ends neither its field nor its line.
KorString oneField(const KorString& text) {
    return text.replaced("\t", " ").replaced("\n", " ");
}

bool contains(const KorDSMEditedList::Keys& keys, std::int32_t key) {
    return std::ranges::find(keys, key) != keys.end();
}

KorString counted(std::size_t count) {
    return KorString::number(static_cast<std::int64_t>(count));
}

const StructRecord* find(SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    return source ? source->table(row.table).find(KorOdbcKey(row.key)) : nullptr;
}

KorDSMEditedList::Outcome refused(const KorString& why) {
    return {{WriteResult::kFailed, why.toStdString()}};
}

} // namespace

CellValue KorDSMEditedList::value(std::int32_t key, const Column& column) const {
    const Cell at = cell(key, column);
    const StructRecord* present = find(m_source, at.row);
    return present ? at.column->read(present) : CellValue();
}

KorString KorDSMEditedList::text(std::int32_t key, const Column& column) const {
    const Cell at = cell(key, column);
    const StructRecord* present = find(m_source, at.row);
    return present ? KorDSMValueText::toText(*findTable(at.row.table), *at.column, *present) : KorString();
}

KorString KorDSMEditedList::name(std::int32_t key) const {
    const StructRecord* present = find(m_source, record(key));
    return present ? present->name : KorString();
}

template <typename Write>
KorDSMEditedList::Outcome KorDSMEditedList::change(const KorString& caption, Write write) {
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
        const bool wasAnnounced = KorDSMUndo::stepCount() > group.begin();
        group.takeBack();
        if (wasAnnounced) {
            DsmSetModified message;
            message.modified = KorDSMUndo::isPending();
            KorDSMMainWindow::sendMessage(message);
        }
        return {std::move(result), {}, {}, true};
    }
    outcome.changes = KorDSMUndo::changesSince(group.begin());
    return outcome;
}

KorString KorDSMEditedList::caption(int one, int many, std::size_t count) const {
    const StructRecord* whole = find(m_source, m_whole);
    const KorString name = KorDSMValueText::shortName(whole ? whole->name : KorString());
    return count == 1 ? KorString::format(Prompts::dsm(one), {name})
                      : KorString::format(Prompts::dsm(many), {counted(count), name});
}

// What was changed: steps that are told alike cannot be told apart.
KorString KorDSMEditedList::changeCaption(const Keys& rows, const Column& column) const {
    const StructRecord* whole = find(m_source, m_whole);
    const KorString list = KorDSMValueText::shortName(whole ? whole->name : KorString());
    const KorString changed = KorDSMValueText::columnCaption(m_table, column);
    if (rows.size() != 1)
        return KorString::format(Prompts::dsm(kChangingMany), {changed, counted(rows.size()), list});
    const KorString row = hasNames() ? name(rows.front()) : KorString();
    return row.isEmpty()
               ? KorString::format(Prompts::dsm(kChangingUnnamed), {changed, list})
               : KorString::format(Prompts::dsm(kChanging), {changed, KorDSMValueText::shortName(row), list});
}

KorString KorDSMEditedList::addingCaption() const {
    const StructRecord* whole = find(m_source, m_whole);
    return KorString::format(Prompts::dsm(kAdding),
                             {KorDSMValueText::shortName(whole ? whole->name : KorString()),
                              KorDSMValueText::tableCaption(*findTable(recordTable()))});
}

// At the end where there is no such row.
std::size_t KorDSMEditedList::placeBehind(std::int32_t key) const {
    const Keys now = keys();
    const auto place = std::ranges::find(now, key);
    return static_cast<std::size_t>(place - now.begin()) + (place == now.end() ? 0 : 1);
}

KorDSMEditedList::Outcome KorDSMEditedList::add(std::int32_t after, const std::optional<CellValue>& first) {
    if (const KorString full = whyFull(1); !full.isEmpty())
        return refused(full);
    return change(addingCaption(), [&](Outcome& outcome) {
        NewRow row{KorDSMValueText::tableCaption(m_table), {}};
        if (first)
            row.values = {*first};
        return insertRows(placeBehind(after), {row}, outcome.selected);
    });
}

KorDSMEditedList::Outcome KorDSMEditedList::remove(const Keys& rows) {
    const Keys before = keys();
    const auto first = std::ranges::find_if(before, [&](std::int32_t key) { return contains(rows, key); });
    return change(caption(kRemoving, kRemovingMany, rows.size()), [&](Outcome& outcome) {
        WriteResult result = removeRows(rows);
        const Keys rest = keys();
        const auto place = static_cast<std::size_t>(first - before.begin());
        if (!rest.empty())
            outcome.selected = {rest[std::min(place, rest.size() - 1)]};
        return result;
    });
}

KorDSMEditedList::Outcome KorDSMEditedList::duplicate(const Keys& rows) {
    if (const KorString full = whyFull(rows.size()); !full.isEmpty())
        return refused(full);
    Keys present = keys();
    std::erase_if(present, [&](std::int32_t key) { return !contains(rows, key); });
    const std::size_t place = placeBehind(present.empty() ? 0 : present.back());
    return change(caption(kDuplicating, kDuplicatingMany, rows.size()),
                  [&](Outcome& outcome) { return copyRows(present, place, outcome.selected); });
}

KorDSMEditedList::Outcome KorDSMEditedList::moveTo(const Keys& rows, int place) {
    const Keys before = keys();
    const auto isMoved = [&](std::int32_t key) { return contains(rows, key); };
    Keys moved;
    std::ranges::copy_if(before, std::back_inserter(moved), isMoved);
    // Those above the place that move along leave it.
    const auto end = before.begin() + std::clamp(place, 0, static_cast<int>(before.size()));
    const auto above = std::count_if(before.begin(), end, [&](std::int32_t key) { return !isMoved(key); });
    Keys order = before;
    std::erase_if(order, isMoved);
    order.insert(order.begin() + above, moved.begin(), moved.end());
    if (!isOrdered() || order == before)
        return {{WriteResult::kUnchanged}, moved};
    return change(caption(kMoving, kMovingMany, moved.size()), [&](Outcome& outcome) {
        WriteResult result = arrange(order);
        const Keys now = keys();
        outcome.selected.assign(now.begin() + above, now.begin() + above + std::ssize(moved));
        return result;
    });
}

KorDSMEditedList::Outcome KorDSMEditedList::moveBy(const Keys& rows, int step) {
    const Keys before = keys();
    const auto isMoved = [&](std::int32_t key) { return contains(rows, key); };
    const auto first = static_cast<int>(std::ranges::find_if(before, isMoved) - before.begin());
    const auto last = static_cast<int>(std::find_if(before.rbegin(), before.rend(), isMoved).base() -
                                       before.begin()); // one behind
    return moveTo(rows, step < 0 ? std::max(first + step, 0) : last + step);
}

KorDSMEditedList::Outcome KorDSMEditedList::set(const Keys& rows, const Column& column,
                                                const CellValue& value) {
    return change(changeCaption(rows, column), [&](Outcome& outcome) {
        outcome.selected = rows;
        return writeCells(rows, column, std::vector(rows.size(), value));
    });
}

WriteResult KorDSMEditedList::writeCells(const Keys& rows, const Column& column,
                                         const std::vector<CellValue>& values) const {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Cell at = cell(rows[i], column);
        WriteResult result = StyleDatabases::current().setCell(at.row.table, KorOdbcKey(at.row.key),
                                                               at.column->number, values[i]);
        if (result.isFailed())
            return result;
    }
    return {};
}

KorString KorDSMEditedList::textOf(const Keys& rows) const {
    const KorDSNRequest request(m_source.dsn, m_source.index);
    KorString lines;
    for (const std::int32_t key : rows) {
        lines = lines + oneField(name(key));
        for (const Column* column : cells())
            if (hasNames() || column != cells().front())
                lines = lines + "\t" + oneField(text(key, *column));
        lines = lines + "\n";
    }
    return lines;
}

KorDSMEditedList::Outcome KorDSMEditedList::paste(std::int32_t after, KorDSMCopiedRows& copied,
                                                  eNamesakes namesakes) {
    if (const KorString full = whyFull(copied.count()); !full.isEmpty())
        return refused(full);
    return change(caption(kPasting, kPastingMany, copied.count()), [&](Outcome& outcome) {
        std::vector<std::vector<CellValue>> values;
        ImportReport report;
        if (WriteResult result = copied.bring(cells(), namesakes, values, report); !result.isStored())
            return result;
        std::vector<NewRow> rows;
        for (std::size_t row = 0; row < copied.count(); ++row)
            rows.push_back({copied.name(row), std::move(values[row])});
        return insertRows(placeBehind(after), rows, outcome.selected);
    });
}

KorDSMEditedList::Outcome KorDSMEditedList::pasteCells(const Keys& rows, const Column& column,
                                                       KorDSMCopiedRows& copied, eNamesakes namesakes) {
    if (copied.count() != 1 && copied.count() != rows.size())
        return refused(
            KorString::format(Prompts::dsm(kMismatch), {counted(copied.count()), counted(rows.size())}));
    return change(changeCaption(rows, column), [&](Outcome& outcome) {
        std::vector<std::vector<CellValue>> brought;
        ImportReport report;
        if (WriteResult result = copied.bring({&column}, namesakes, brought, report); !result.isStored())
            return result;
        std::vector<CellValue> values;
        for (std::size_t row = 0; row < rows.size(); ++row)
            values.push_back(brought[brought.size() == 1 ? 0 : row].front());
        outcome.selected = rows;
        return writeCells(rows, column, values);
    });
}
