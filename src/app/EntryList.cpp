#include "app/EntryList.h"

#include "app/DidYouMean.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "session/ShownColumns.h"

#include <algorithm>
#include <charconv>

namespace {

KorString whyNot(const KorDSMEditedList::Outcome& outcome) {
    return !outcome.isFailed() && outcome != WriteResult::kDeclined ? KorString()
           : outcome.error.empty() ? translated("The list could not be changed.")
                                   : KorString(outcome.error);
}

} // namespace

std::vector<EntryList::Entry> EntryList::entries() const {
    std::vector<Entry> entries;
    for (const std::int32_t key : m_list->keys())
        entries.push_back(
            {m_list->record(key), m_list->name(key), m_list->text(key, *m_list->cells().front())});
    return entries;
}

std::vector<const Column*> EntryList::columns() const {
    std::vector<const Column*> columns = m_list->cells();
    if (m_list->hasNames())
        columns.push_back(table().column(1));
    return columns;
}

// Nothing is listed twice under one heading.
KorString EntryList::whyListed(const Column& column, const KorString& value, std::int32_t exceptKey) const {
    if (column.role == eReferenceRole::kFiledUnder)
        for (const std::int32_t key : m_list->keys())
            if (key != exceptKey && m_list->text(key, column) == value)
                return KorString::format(translated("It is listed in \"%s\" already."), {value});
    return {};
}

KorString EntryList::add(std::size_t place, const std::optional<KorString>& first) {
    const Column& column = *columns().front();
    if (KorString why = first ? whyListed(column, *first, 0) : KorString(); !why.isEmpty())
        return why;
    std::optional<CellValue> value;
    if (!canBeEmpty()) {
        const Result<CellValue> typed =
            TypedValue::read(m_list->whole(), column, first.value_or(KorString()));
        if (!typed)
            return KorString(typed.error);
        value = typed.value;
    }
    const KorDSMEditedList::Keys now = m_list->keys();
    const KorDSMEditedList::Outcome added = m_list->add(place == 0 ? 0 : now[place - 1], value);
    if (!added.isStored())
        return whyNot(added);
    if (place == 0 && isOrdered() && !now.empty())
        if (const auto moved = m_list->moveTo(added.selected, 0); !moved.isStored())
            return whyNot(moved);
    return first && canBeEmpty() ? set(isOrdered() ? place : now.size(), column, *first) : KorString();
}

KorString EntryList::remove(std::size_t place) {
    return whyNot(m_list->remove({keyAt(place)}));
}

KorString EntryList::move(std::size_t from, std::size_t to) {
    return from == to ? KorString()
                      : whyNot(m_list->moveTo({keyAt(from)}, static_cast<int>(to + (from < to))));
}

KorString EntryList::set(std::size_t place, const Column& column, const KorString& value) {
    const std::int32_t key = keyAt(place);
    if (KorString why = whyListed(column, value, key); !why.isEmpty())
        return why;
    const KorDSMEditedList::Cell cell = m_list->cell(key, column);
    const Result<CellValue> typed = TypedValue::read(cell.row, *cell.column, value);
    if (!typed)
        return KorString(typed.error);
    if (!canBeEmpty() && typed.value == CellValue(std::int64_t{0}))
        return translated("A view must be named; \"entry remove\" takes one out.");
    return whyNot(m_list->set({key}, column, typed.value));
}

std::unique_ptr<EntryList> EntryList::of(const RowChoice& owner) {
    if (!isFor(*owner.table))
        return nullptr;
    const std::vector<eTableType> parts = partTablesOf(owner.table->type);
    return std::make_unique<EntryList>(
        KorDSMEditedList::of(owner.source, owner.ref(), parts.empty() ? owner.table->type : parts.front()));
}

bool EntryList::isFor(const TableSchema& kind) {
    return kind.type == kTableDetailStyle || !partTablesOf(kind.type).empty();
}

KorString EntryList::owners() {
    KorString kinds;
    for (const TableSchema& table : allTables())
        if (isFor(table))
            kinds = kinds + (kinds.isEmpty() ? "" : ", ") + table.kindName();
    return kinds;
}

std::optional<std::size_t> EntryList::find(const KorString& named, KorString& error) const {
    const std::vector<Entry> all = entries();
    if (all.empty()) {
        error = translated("The list has no entries.");
        return std::nullopt;
    }
    const std::string_view text = named.view();
    std::size_t place = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), place);
    if (fault == std::errc() && end == text.data() + text.size() && place >= 1 && place <= all.size())
        return place - 1;
    std::vector<std::size_t> places;
    std::vector<KorString> names;
    KorString list;
    for (std::size_t i = 0; i < all.size(); ++i) {
        names.push_back(all[i].name);
        names.push_back(all[i].text);
        if (all[i].name != named && all[i].text != named)
            continue;
        places.push_back(i);
        list = list + (list.isEmpty() ? "" : ", ") + KorString::number(static_cast<std::int64_t>(i + 1));
    }
    if (places.size() == 1)
        return places.front();
    error =
        places.empty()
            ? KorString::format(translated("There is no entry \"%s\"; name one by its place from 1 to %s, or "
                                           "by its name."),
                                {named, KorString::number(static_cast<std::int64_t>(all.size()))}) +
                  didYouMean(named, names)
            : KorString::format(
                  translated("There is more than one entry \"%s\"; give its place, which is one "
                             "of %s."),
                  {named, list});
    return std::nullopt;
}
