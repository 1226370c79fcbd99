#include "session/KorDSMEditedList.h"

#include "operations/KorDSNManager.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMCopiedRows.h"
#include "session/KorDSMCopyWish.h"
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

// All rows of a list, with these moved before the one at a place.
struct Order {
    KorDSMEditedList::Keys all;
    KorDSMEditedList::Keys moved;
    std::ptrdiff_t above = 0; // where the moved ones begin
};

Order orderWith(const KorDSMEditedList::Keys& before, const KorDSMEditedList::Keys& rows, int place) {
    const auto isMoved = [&](std::int32_t key) { return contains(rows, key); };
    Order order{before, {}};
    std::ranges::copy_if(before, std::back_inserter(order.moved), isMoved);
    // Those above the place that move along leave it.
    const auto end = before.begin() + std::clamp(place, 0, static_cast<int>(before.size()));
    order.above = std::count_if(before.begin(), end, [&](std::int32_t key) { return !isMoved(key); });
    std::erase_if(order.all, isMoved);
    order.all.insert(order.all.begin() + order.above, order.moved.begin(), order.moved.end());
    return order;
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

KorDSMEditedList::Outcome KorDSMEditedList::change(const KorString& caption, const Keys& rows,
                                                   const Write& write) {
    Outcome outcome;
    const KorDSNRequest request(m_source.dsn, m_source.index);
    outcome.error = KorDSMItemCommands::whyNotWritable(m_source).toStdString();
    if (!outcome.error.empty()) {
        outcome.kind = WriteResult::kReadOnlySource;
        return outcome;
    }
    PendingGroup group(caption);
    WriteResult result =
        KorDSMGuardedWrite::changeParts(m_whole, [&] { return write(*this, rows, outcome); });
    if (result.kind == WriteResult::kMakeCopy)
        wishForCopy(rows, write);
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

// The rows of a copy stand in the same order under keys of their own.
void KorDSMEditedList::wishForCopy(const Keys& rows, const Write& write) const {
    const Keys now = keys();
    std::vector<std::size_t> places;
    for (const std::int32_t key : rows)
        places.push_back(static_cast<std::size_t>(std::ranges::find(now, key) - now.begin()));
    KorDSMCopyWish::keep(
        {.changeList = [source = m_source, parts = m_table.type, places, write](RowRef copy) {
            const std::unique_ptr<KorDSMEditedList> list = of(source, copy, parts);
            const Keys copies = list->keys();
            Keys meant;
            for (const std::size_t place : places)
                meant.push_back(place < copies.size() ? copies[place] : 0);
            Outcome outcome;
            return write(*list, meant, outcome);
        }});
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
    return !KorDSMValueText::isNameGiven(m_table, row)
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
    NewRow row{KorDSMValueText::tableCaption(m_table), {}};
    if (first)
        row.values = {*first};
    return change(addingCaption(), {after},
                  [row](KorDSMEditedList& list, const Keys& rows, Outcome& outcome) {
                      return list.insertRows(list.placeBehind(rows.front()), {row}, outcome.selected);
                  });
}

KorDSMEditedList::Outcome KorDSMEditedList::remove(const Keys& removed) {
    return change(caption(kRemoving, kRemovingMany, removed.size()), removed,
                  [](KorDSMEditedList& list, const Keys& rows, Outcome& outcome) {
                      const Keys before = list.keys();
                      const auto first =
                          std::ranges::find_if(before, [&](std::int32_t key) { return contains(rows, key); });
                      const auto place = static_cast<std::size_t>(first - before.begin());
                      WriteResult result = list.removeRows(rows);
                      const Keys rest = list.keys();
                      if (!rest.empty())
                          outcome.selected = {rest[std::min(place, rest.size() - 1)]};
                      return result;
                  });
}

KorDSMEditedList::Outcome KorDSMEditedList::duplicate(const Keys& originals) {
    if (const KorString full = whyFull(originals.size()); !full.isEmpty())
        return refused(full);
    return change(caption(kDuplicating, kDuplicatingMany, originals.size()), originals,
                  [](KorDSMEditedList& list, const Keys& rows, Outcome& outcome) {
                      Keys present = list.keys();
                      std::erase_if(present, [&](std::int32_t key) { return !contains(rows, key); });
                      const std::size_t place = list.placeBehind(present.empty() ? 0 : present.back());
                      return list.copyRows(present, place, outcome.selected);
                  });
}

KorDSMEditedList::Outcome KorDSMEditedList::moveTo(const Keys& moving, int place) {
    const Order wanted = orderWith(keys(), moving, place);
    if (!isOrdered() || wanted.all == keys())
        return {{WriteResult::kUnchanged}, wanted.moved};
    return change(caption(kMoving, kMovingMany, wanted.moved.size()), moving,
                  [place](KorDSMEditedList& list, const Keys& rows, Outcome& outcome) {
                      const Order order = orderWith(list.keys(), rows, place);
                      WriteResult result = list.arrange(order.all);
                      const Keys now = list.keys();
                      outcome.selected.assign(now.begin() + order.above,
                                              now.begin() + order.above + std::ssize(order.moved));
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
    return change(changeCaption(rows, column), rows,
                  [&column, value](KorDSMEditedList& list, const Keys& written, Outcome& outcome) {
                      outcome.selected = written;
                      return list.writeCells(written, column, std::vector(written.size(), value));
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

KorDSMEditedList::Outcome
KorDSMEditedList::paste(std::int32_t after, std::shared_ptr<KorDSMCopiedRows> copied, eNamesakes namesakes) {
    const std::size_t count = copied->count();
    if (const KorString full = whyFull(count); !full.isEmpty())
        return refused(full);
    return change(caption(kPasting, kPastingMany, count), {after},
                  [copied = std::move(copied), namesakes](KorDSMEditedList& list, const Keys& behind,
                                                          Outcome& outcome) {
                      std::vector<std::vector<CellValue>> values;
                      ImportReport report;
                      if (WriteResult result = copied->bring(list.cells(), namesakes, values, report);
                          !result.isStored())
                          return result;
                      std::vector<NewRow> rows;
                      for (std::size_t row = 0; row < copied->count(); ++row)
                          rows.push_back({copied->name(row), std::move(values[row])});
                      return list.insertRows(list.placeBehind(behind.front()), rows, outcome.selected);
                  });
}

KorDSMEditedList::Outcome KorDSMEditedList::pasteCells(const Keys& targets, const Column& column,
                                                       std::shared_ptr<KorDSMCopiedRows> copied,
                                                       eNamesakes namesakes) {
    if (copied->count() != 1 && copied->count() != targets.size())
        return refused(
            KorString::format(Prompts::dsm(kMismatch), {counted(copied->count()), counted(targets.size())}));
    return change(changeCaption(targets, column), targets,
                  [&column, copied = std::move(copied), namesakes](KorDSMEditedList& list, const Keys& rows,
                                                                   Outcome& outcome) {
                      std::vector<std::vector<CellValue>> brought;
                      ImportReport report;
                      if (WriteResult result = copied->bring({&column}, namesakes, brought, report);
                          !result.isStored())
                          return result;
                      std::vector<CellValue> values;
                      for (std::size_t row = 0; row < rows.size(); ++row)
                          values.push_back(brought[brought.size() == 1 ? 0 : row].front());
                      outcome.selected = rows;
                      return list.writeCells(rows, column, values);
                  });
}
