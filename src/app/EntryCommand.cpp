#include "app/ChangeReport.h"
#include "app/Commands.h"
#include "app/Console.h"
#include "app/EntryList.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "data/ScopedSource.h"
#include "session/KorDSMItemCommands.h"

#include <algorithm>
#include <charconv>

namespace {

KorString number(std::size_t place) {
    return KorString::number(static_cast<std::int64_t>(place + 1));
}

// One command on an open list. What it cannot do it says in `error`, with `code`.
class Command {
public:
    Command(const RowChoice& owner, EntryList& list, const EntryOptions& options, ChangeReport& report)
        : m_owner(owner), m_list(list), m_options(options), m_report(report) {}

    int run() {
        switch (m_options.action) {
        case eEntryAction::kAdd:
            add();
            break;
        case eEntryAction::kRemove:
            remove();
            break;
        case eEntryAction::kMove:
            move();
            break;
        case eEntryAction::kSet:
            set();
            break;
        }
        return m_error.isEmpty() ? m_report.finish() : ChangeReport::refuse(m_error, m_code);
    }

private:
    using Place = std::optional<std::size_t>;

    void add() {
        const std::size_t count = m_list.entries().size();
        const Place place = m_options.place.empty() ? Place(count) : placeUpTo(count);
        if (!place)
            return;
        std::vector<std::pair<const Column*, KorString>> values;
        for (const std::string& text : m_options.values)
            if (!readValue(text, values))
                return;
        const bool hasFirst = !values.empty() && values.front().first == m_list.columns().front();
        if (!hasFirst && !m_list.canBeEmpty())
            return refuse(translated("Say with --value which one is to be added."), kExitUsage);
        m_error = m_list.add(*place, hasFirst ? std::optional(values.front().second) : std::nullopt);
        for (std::size_t i = hasFirst; m_error.isEmpty() && i < values.size(); ++i)
            m_error = m_list.set(*place, *values[i].first, values[i].second);
        if (m_error.isEmpty())
            tell(translatable("Added entry %s, \"%s\", to the %s \"%s\"."), *place, {});
    }
    void remove() {
        if (const Place place = entry()) {
            tell(translatable("Removed entry %s, \"%s\", of the %s \"%s\"."), *place, {});
            m_error = m_list.remove(*place);
        }
    }
    void move() {
        const Place from = entry();
        const Place to = from ? placeUpTo(m_list.entries().size() - 1) : std::nullopt;
        if (!to)
            return;
        m_error = m_list.move(*from, *to);
        if (m_error.isEmpty())
            tell(translatable("Moved entry %s, \"%s\", of the %s \"%s\" to place %s."), *to, number(*to),
                 *from);
    }
    void set() {
        const Place place = entry();
        const Column* column = place ? findColumn(m_options.column) : nullptr;
        if (!column)
            return;
        m_error = m_list.set(*place, *column, m_options.value);
        if (m_error.isEmpty())
            tell(translatable("Changed entry %s, \"%s\", of the %s \"%s\"."), *place, {});
    }

    void refuse(const KorString& error, eExitCode code = kExitFailed) {
        m_error = error;
        m_code = code;
    }
    Place entry() { return m_list.find(m_options.entry, m_error); }

    // The place that the user gives, of an entry that is put in or moved.
    Place placeUpTo(std::size_t last) {
        const std::string& text = m_options.place;
        std::size_t place = 0;
        const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), place);
        const bool isPlace = fault == std::errc() && end == text.data() + text.size() && place >= 1;
        if (!m_list.isOrdered())
            refuse(KorString::format(translated("The entries of a %s have no order."),
                                     {m_owner.table->rowName()}));
        else if (!isPlace || place > last + 1)
            refuse(KorString::format(translated("\"%s\" is no place; give a number from 1 to %s."),
                                     {text, number(last)}));
        return m_error.isEmpty() ? Place(place - 1) : std::nullopt;
    }
    // The views of a style stand in columns with numbers, of which people need not know.
    const Column* findColumn(const std::string& name) {
        const std::vector<const Column*> columns = m_list.columns();
        const bool isView = m_owner.table->type == kTableDetailStyle;
        if (isView && (name == "view" || name == columns.front()->name))
            return columns.front();
        if (isView) {
            refuse(KorString::format(
                       translated("The views of a detail style have no column \"%s\"; theirs is \"view\"."),
                       {name}),
                   kExitUsage);
            return nullptr;
        }
        const Result<const Column*> column = TypedValue::findColumn(m_list.table(), columns, name);
        if (!column)
            refuse(KorString(column.error), kExitUsage);
        return column.value;
    }
    bool isColumn(const std::string& name) {
        return name == "view" ||
               std::ranges::any_of(m_list.columns(), [&](auto* column) { return column->name == name; });
    }
    // Names of records may have such a mark, too.
    bool mustBeColumn(const std::string& name, const std::string& text) {
        constexpr const char* kSigns = "abcdefghijklmnopqrstuvwxyz0123456789_";
        const Column& first = *m_list.columns().front();
        return !name.empty() && name.find_first_not_of(kSigns) == std::string::npos && first.isReference() &&
               !StyleDatabases::current().here()->table(first.target).find(KorString(text));
    }
    // COLUMN=VALUE, or a value of the first column.
    bool readValue(const std::string& text, std::vector<std::pair<const Column*, KorString>>& values) {
        const auto mark = text.find('=');
        const std::string name = text.substr(0, mark);
        const bool isNamed = mark != std::string::npos && (isColumn(name) || mustBeColumn(name, text));
        const Column* column = isNamed ? findColumn(name) : m_list.columns().front();
        if (!column)
            return false;
        if (std::ranges::any_of(values, [column](const auto& value) { return value.first == column; })) {
            refuse(TypedValue::givenTwice(*column), kExitUsage);
            return false;
        }
        const auto behind =
            column == m_list.columns().front() ? values.begin() : values.end(); // it stands first
        values.insert(behind, {column, isNamed ? text.substr(mark + 1) : text});
        return true;
    }

    void tell(const char* pattern, std::size_t place, const KorString& more, Place before = std::nullopt) {
        const EntryList::Entry entry = m_list.entries()[place];
        const KorString name = entry.name.isEmpty() ? entry.text : entry.name;
        m_report.say(
            KorString::format(translated(pattern), {number(before.value_or(place)), name,
                                                    m_owner.table->rowName(), m_owner.record()->name, more}));
        m_report.add("entry", QJsonObject{{"place", static_cast<qint64>(place + 1)},
                                          {"key", entry.row.key},
                                          {"name", Console::text(entry.name)},
                                          {"text", Console::text(entry.text)}});
    }

    const RowChoice& m_owner;
    EntryList& m_list;
    const EntryOptions& m_options;
    ChangeReport& m_report;
    KorString m_error;
    eExitCode m_code = kExitFailed;
};

constexpr const char* kNames[] = {"entry add", "entry remove", "entry move", "entry set"};

} // namespace

int entryCommand(DataFolder&, const EntryOptions& options) {
    const FoundRow found = RowChoice::findToChange(options.owner);
    if (found.tell() != kExitDone)
        return found.code;
    const RowChoice& owner = found.value;
    const ScopedSource request(owner.source);
    const std::unique_ptr<EntryList> list = EntryList::of(owner);
    if (!list)
        return ChangeReport::refuse(
            KorString::format(translated("Records of the kind \"%s\" have no list; these have one: %s."),
                              {owner.table->kindName(), EntryList::owners()}),
            kExitUsage);
    if (const KorString why = KorDSMItemCommands::whyOnlyReadable(owner.source); !why.isEmpty())
        return ChangeReport::refuse(why);
    if (const KorString shared = options.how.shared ? KorString() : owner.whyShared(); !shared.isEmpty())
        return ChangeReport::refuse(shared);
    ChangeReport report(kNames[static_cast<std::size_t>(options.action)], options.how);
    report.isAbout(owner.source, owner.ref());
    return Command(owner, *list, options, report).run();
}
