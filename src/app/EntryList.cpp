#include "app/EntryList.h"

#include "app/DidYouMean.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMPartList.h"
#include "session/KorDSMStyleViews.h"
#include "session/KorDSMValueText.h"
#include "session/ShownColumns.h"

#include <algorithm>
#include <charconv>

namespace {

const StructRecord* recordOf(RowRef row) {
    return StyleDatabases::current().here()->table(row.table).find(KorOdbcKey(row.key));
}

KorString notWritten() {
    return translated("The list could not be changed.");
}

class PartEntries final : public EntryList {
public:
    PartEntries(const RowChoice& owner, eTableType parts) : m_list(owner.source, owner.ref(), parts) {}

    std::vector<Entry> entries() const override {
        std::vector<Entry> entries;
        for (const std::int32_t key : m_list.keys()) {
            const RowRef row{table().type, key};
            const StructRecord& record = *recordOf(row);
            const KorString text = KorDSMValueText::toText(table(), *m_list.cells().front(), record);
            entries.push_back({row, record.name, text});
        }
        return entries;
    }
    const TableSchema& table() const override { return m_list.table(); }
    std::vector<const Column*> columns() const override {
        std::vector<const Column*> columns = m_list.cells();
        columns.push_back(table().column(1));
        return columns;
    }
    bool canBeEmpty() const override { return true; }
    bool isOrdered() const override { return m_list.isOrdered(); }

    KorString add(std::size_t place, const std::optional<KorString>& first) override {
        const KorDSMPartList::Outcome added = m_list.add(0);
        if (!added.isStored())
            return whyNot(added);
        if (isOrdered())
            m_list.moveTo(added.selected, static_cast<int>(place));
        return first ? set(place, *columns().front(), *first) : KorString();
    }
    KorString remove(std::size_t place) override { return whyNot(m_list.remove({keyAt(place)})); }
    KorString move(std::size_t from, std::size_t to) override {
        if (from == to)
            return {};
        return whyNot(m_list.moveTo({keyAt(from)}, static_cast<int>(to + (from < to))));
    }
    KorString set(std::size_t place, const Column& column, const KorString& value) override {
        const std::int32_t key = keyAt(place);
        const TypedValue::Typed typed = TypedValue::read({table().type, key}, column, value);
        return typed.value ? whyNot(m_list.set({key}, column, *typed.value)) : typed.error;
    }

private:
    std::int32_t keyAt(std::size_t place) const { return m_list.keys()[place]; }
    static KorString whyNot(const KorDSMPartList::Outcome& outcome) {
        return !outcome.isFailed() && outcome != WriteResult::kDeclined ? KorString()
               : outcome.error.empty()                                  ? notWritten()
                                                                        : KorString(outcome.error);
    }

    KorDSMPartList m_list;
};

class ViewEntries final : public EntryList {
public:
    using Views = KorDSMStyleViews::Views;

    explicit ViewEntries(const RowChoice& style) : m_style(style) {}

    std::vector<Entry> entries() const override {
        std::vector<Entry> entries;
        for (const std::int32_t key : views()) {
            const RowRef row{kTableViewRequest, key};
            const StructRecord* view = recordOf(row);
            const KorString name = view ? view->name : KorString();
            entries.push_back({row, name, name});
        }
        return entries;
    }
    const TableSchema& table() const override { return *m_style.table; }
    std::vector<const Column*> columns() const override { return {&slot()}; }
    bool canBeEmpty() const override { return false; }
    bool isOrdered() const override { return true; }

    KorString add(std::size_t place, const std::optional<KorString>& first) override {
        Views now = views();
        if (now.size() == KorDSMStyleViews::mostViews())
            return KorString::format(translated("A detail style has %s views at most."),
                                     {KorString::number(static_cast<std::int64_t>(now.size()))});
        now.insert(now.begin() + static_cast<std::ptrdiff_t>(place), 0);
        return put(std::move(now), place, first.value_or(KorString()));
    }
    KorString remove(std::size_t place) override {
        Views now = views();
        now.erase(now.begin() + static_cast<std::ptrdiff_t>(place));
        return write(now);
    }
    KorString move(std::size_t from, std::size_t to) override {
        Views now = views();
        const std::int32_t view = now[from];
        now.erase(now.begin() + static_cast<std::ptrdiff_t>(from));
        now.insert(now.begin() + static_cast<std::ptrdiff_t>(to), view);
        return write(now);
    }
    KorString set(std::size_t place, const Column&, const KorString& value) override {
        return put(views(), place, value);
    }

private:
    Views views() const { return KorDSMStyleViews::viewsOf(m_style.source, m_style.key); }
    const Column& slot() const { return *table().column(table().firstSlot()); }
    KorString put(Views now, std::size_t place, const KorString& value) {
        const TypedValue::Typed typed = TypedValue::read(m_style.ref(), slot(), value);
        if (!typed.value)
            return typed.error;
        now[place] = static_cast<std::int32_t>(std::get<std::int64_t>(*typed.value));
        return now[place] > 0 ? write(now)
                              : translated("A view must be named; \"entry remove\" takes one out.");
    }
    KorString write(const Views& now) {
        if (now == views())
            return {};
        return KorDSMStyleViews::setViews(m_style.source, m_style.key, now).empty() ? notWritten()
                                                                                    : KorString();
    }

    RowChoice m_style;
};

} // namespace

std::unique_ptr<EntryList> EntryList::of(const RowChoice& owner) {
    if (owner.table->type == kTableDetailStyle)
        return std::make_unique<ViewEntries>(owner);
    const std::vector<eTableType> parts = partTablesOf(owner.table->type);
    return parts.empty() ? nullptr : std::make_unique<PartEntries>(owner, parts.front());
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
