#include "session/KorDSMViewList.h"

#include "data/FreeName.h"
#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
#include "records/TableDeclarations.h"
#include "services/Prompts.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMUndo.h"
#include "session/PendingGroup.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr int kNoRoom = 272; // "A detail style can have no more than %d views."
constexpr int kNoView = 751; // "Choose a view; ..."

WriteResult noView() {
    return {WriteResult::kFailed, Prompts::dsm(kNoView).toStdString()};
}

} // namespace

KorDSMViewList::KorDSMViewList(SourceId source, std::int32_t style)
    : KorDSMEditedList(source, {kTableDetailStyle, style}, *findTable(kTableDetailStyle)) {}

const StructDetailStyle* KorDSMViewList::listedStyle() const {
    return static_cast<const StructDetailStyle*>(
        StyleDatabases::current().source(source())->table(kTableDetailStyle).find(KorOdbcKey(whole().key)));
}

KorDSMViewList::Views KorDSMViewList::views() const {
    Views views;
    if (const StructDetailStyle* present = listedStyle())
        std::ranges::copy_if(present->viewRequests, std::back_inserter(views),
                             [](std::int32_t key) { return key > 0; });
    return views;
}

std::int32_t KorDSMViewList::keyOfSlot(int slot) const {
    if (!listedStyle())
        return 0;
    const auto& slots = listedStyle()->viewRequests;
    return static_cast<std::int32_t>(
        std::count_if(slots.begin(), slots.begin() + slot + 1, [](std::int32_t key) { return key > 0; }));
}

KorString KorDSMViewList::whyFull(std::size_t more) const {
    return views().size() + more <= StructDetailStyle::kViewSlots
               ? KorString()
               : KorString::format(Prompts::dsm(kNoRoom), {KorString::number(StructDetailStyle::kViewSlots)});
}

std::vector<const Column*> KorDSMViewList::cells() const {
    return {table().column(table().firstSlot())};
}

std::vector<const Column*> KorDSMViewList::details() const {
    const TableSchema& views = *findTable(kTableViewRequest);
    std::vector<const Column*> details;
    for (const char* column : {"repr_map", "dim_strategy", "scale"})
        details.push_back(views.column(std::string_view(column)));
    return details;
}

KorDSMEditedList::Keys KorDSMViewList::keys() const {
    Keys keys(views().size());
    std::iota(keys.begin(), keys.end(), 1);
    return keys;
}

KorDSMEditedList::Cell KorDSMViewList::cell(std::int32_t key, const Column& column) const {
    if (!column.isSlot())
        return {record(key), &column};
    int slot = 0;
    const StructDetailStyle* present = listedStyle();
    while (present && slot < StructDetailStyle::kViewSlots - 1 &&
           (present->getViewRequestAt(slot) <= 0 || keyOfSlot(slot) < key))
        ++slot;
    return {whole(), table().column(table().firstSlot() + slot)};
}

RowRef KorDSMViewList::record(std::int32_t key) const {
    const Views now = views();
    const bool isThere = key > 0 && static_cast<std::size_t>(key) <= now.size();
    return {kTableViewRequest, isThere ? now[static_cast<std::size_t>(key - 1)] : 0};
}

WriteResult KorDSMViewList::write(const Views& views) const {
    if (!listedStyle())
        return WriteRefusal::noRow();
    const auto before = listedStyle()->viewRequests;
    for (std::size_t slot = 0; slot < before.size(); ++slot) {
        const std::int32_t view = slot < views.size() ? views[slot] : 0;
        if (slot < views.size() && view <= 0)
            return noView();
        if (view == before[slot])
            continue;
        WriteResult result = StyleDatabases::current().setCell(kTableDetailStyle, KorOdbcKey(whole().key),
                                                               table().firstSlot() + static_cast<int>(slot),
                                                               std::int64_t{view});
        if (result.isFailed())
            return result;
    }
    return {};
}

WriteResult KorDSMViewList::insertRows(std::size_t place, const std::vector<NewRow>& rows, Keys& made) {
    Views now = views();
    for (const NewRow& row : rows) {
        const auto* view = row.values.empty() ? nullptr : std::get_if<std::int64_t>(&row.values.front());
        now.insert(now.begin() + static_cast<std::ptrdiff_t>(place),
                   view ? static_cast<std::int32_t>(*view) : 0);
        made.push_back(static_cast<std::int32_t>(++place));
    }
    return write(now);
}

WriteResult KorDSMViewList::copyRows(const Keys& rows, std::size_t place, Keys& made) {
    std::vector<NewRow> copies;
    for (const std::int32_t key : rows) {
        const KorString free =
            freeName(*StyleDatabases::current().source(source()), kTableViewRequest, name(key));
        const auto copied = KorDSMRecordCommands::copy(source(), record(key), free);
        if (!copied.isStored())
            return static_cast<const WriteResult&>(copied);
        copies.push_back({{}, {std::int64_t{copied.row.key}}});
    }
    return insertRows(place, copies, made);
}

WriteResult KorDSMViewList::removeRows(const Keys& rows) {
    Views rest;
    const Views now = views();
    for (const std::int32_t key : keys())
        if (std::ranges::find(rows, key) == rows.end())
            rest.push_back(now[static_cast<std::size_t>(key - 1)]);
    return write(rest);
}

WriteResult KorDSMViewList::arrange(const Keys& order) {
    const Views now = views();
    Views arranged;
    for (const std::int32_t key : order)
        arranged.push_back(now[static_cast<std::size_t>(key - 1)]);
    return write(arranged);
}

KorDSMEditedList::Outcome KorDSMViewList::addView(std::int32_t after, const Wish& wish) {
    if (wish.what == Wish::eWhat::kExisting)
        return add(after, std::int64_t{wish.view});
    if (const KorString full = whyFull(1); !full.isEmpty())
        return {{WriteResult::kFailed, full.toStdString()}};
    PendingGroup group(addingCaption());
    KorDSMRecordCommands::Outcome made =
        wish.what == Wish::eWhat::kNew
            ? KorDSMRecordCommands::create(source(), kTableViewRequest, wish.name, 0)
            : KorDSMRecordCommands::copy(source(), {kTableViewRequest, wish.view}, wish.name);
    if (!made.isStored())
        return {std::move(static_cast<WriteResult&>(made))};
    Outcome added = add(after, std::int64_t{made.row.key});
    if (added.isStored())
        added.changes = KorDSMUndo::changesSince(group.begin());
    else
        group.takeBack();
    return added;
}
