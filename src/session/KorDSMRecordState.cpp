#include "session/KorDSMRecordState.h"

#include "data/RowClosure.h"
#include "data/RowUsers.h"
#include "data/check/StillMissing.h"
#include "services/Prompts.h"
#include "session/KorDSMEditedList.h"
#include "session/KorDSMValueText.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <set>

namespace KorDSMRecordState {

namespace {

constexpr int kMissing = 640;  // "Still missing: %s"
constexpr int kIn = 641;       // "In %s"
constexpr int kInOfOne = 642;  // "In %s of %s style"
constexpr int kInOfMany = 643; // "In %s of %s styles"
constexpr int kInOfMore = 830; // "In %s of more than %s styles"
constexpr int kUnused = 644;
constexpr int kAnd = 645; // "%s and %s"
constexpr int kViews = 646;
constexpr int kLeftUnused = 1405;
constexpr int kLeftUnusedOne = 1406;
constexpr int kAndMore = 1411; // "%s and %s more"
constexpr int kStyles = 1419;  // "Styles: %s"
constexpr int kNameColumn = 1;
constexpr std::size_t kMostNamed = 5;    // of what is missing
constexpr std::size_t kMostBelow = 3000; // rows that are looked at

/// What users and parts of a kind are called; the others are records.
struct Kind {
    eTableType table;
    int one, many; // "1 view", "%s views"
};
constexpr Kind kUsers[] = {
    {kTableDetailStyle, 650, 651},     {kTableViewRequest, 652, 653}, {kTableReprMap, 654, 655},
    {kTableViewDimStrategy, 656, 657}, {kTableDimRequest, 658, 659},  {kTableAnnotationStrategy, 660, 661},
    {kTablePointSelection, 662, 663},
};
constexpr Kind kOthers{kNoTable, 664, 665};

struct Parts {
    eTableType table;
    int prompt; // what several of them are called
};
constexpr Parts kParts[] = {
    {kTableReprMapEntry, 647}, {kTableDimStrategyItem, 648}, {kTableQualifierWithRole, 649}};

// The users of further rows than these are not looked for on the way to the styles.
constexpr int kMostRows = 500;
// Nor more of them that use each other in a row: they may do so in a circle.
constexpr std::size_t kMostSteps = 20;

const StructRecord* recordOf(StyleSource& source, RowRef row) {
    return source.table(row.table).find(KorOdbcKey(row.key));
}

std::vector<RowRef> usersOf(StyleSource& source, RowRef row) {
    std::vector<RowRef> users;
    for (const Referrer& referrer : source.referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kUses)
            users.push_back(wholeOf(source, {referrer.table->type, referrer.key}));
    std::ranges::sort(users);
    const auto repeated = std::ranges::unique(users);
    users.erase(repeated.begin(), repeated.end());
    return users;
}

// A round number that is not too large.
int roundedDown(int number) {
    int unit = 1;
    while (number / unit >= 10)
        unit *= 10;
    return number / unit * unit;
}

void countStyles(StyleSource& source, const std::vector<RowRef>& first, UseCount& count) {
    std::set<RowRef> seen(first.begin(), first.end());
    std::vector<RowRef> waiting = first;
    for (int asked = 0; !waiting.empty();) {
        const RowRef row = waiting.back();
        waiting.pop_back();
        if (row.table == kTableDetailStyle) {
            if (++count.styles <= static_cast<int>(kMostNamed))
                count.firstStyles.push_back(recordOf(source, row)->name);
        } else if (++asked > kMostRows) {
            count.areMoreStyles = true;
        } else {
            for (const RowRef user : usersOf(source, row))
                if (seen.insert(user).second)
                    waiting.push_back(user);
        }
    }
    std::ranges::sort(count.firstStyles);
    if (count.areMoreStyles)
        count.styles = roundedDown(count.styles);
}

KorString counted(const Kind& kind, int count) {
    return KorString::format(Prompts::dsm(count == 1 ? kind.one : kind.many), {KorString::number(count)});
}

KorString kindsOf(const UseCount& count) {
    KorString text;
    for (const auto& [table, users] : count.users) {
        const auto* kind = std::ranges::find(kUsers, table, &Kind::table);
        const KorString words = counted(kind == std::end(kUsers) ? kOthers : *kind, users);
        text = text.isEmpty() ? words : KorString::format(Prompts::dsm(kAnd), {text, words});
    }
    return text;
}

/// What the page of views calls what a view refers to.
struct PageWords {
    std::string_view column;
    int prompt; // "UPS"
};
constexpr PageWords kOfViews[] = {{"system_and_box", 33571}, {"repr_map", 33572}, {"dim_strategy", 33573}};

KorString captionOf(const StillMissing& missing) {
    if (missing.column && missing.table->type == kTableViewRequest)
        for (const PageWords& words : kOfViews)
            if (missing.column->name == words.column)
                return Prompts::ups(words.prompt);
    if (!missing.column) {
        const auto* parts = std::ranges::find(kParts, missing.table->type, &Parts::table);
        return parts == std::end(kParts) ? KorDSMValueText::tableCaption(*missing.table)
                                         : Prompts::dsm(parts->prompt);
    }
    return missing.column->isSlot() ? Prompts::dsm(kViews)
                                    : KorDSMValueText::columnCaption(*missing.table, *missing.column);
}

KorString captionsOf(const std::vector<StillMissing>& missing) {
    KorString text;
    for (const StillMissing& lack : missing)
        text = text + (text.isEmpty() ? "" : ", ") + captionOf(lack);
    return text;
}

// As "2. Plates": its place in its list, and what it is called.
KorString partName(SourceId id, StyleSource& source, RowRef whole, RowRef part) {
    const auto list = KorDSMEditedList::of(id, whole, part.table);
    const KorDSMEditedList::Keys keys = list ? list->keys() : KorDSMEditedList::Keys();
    const auto place = std::ranges::find(keys, part.key) - keys.begin() + 1;
    const KorString name = KorDSMValueText::shortName(recordOf(source, part)->name);
    return KorString::format("%s. %s",
                             {KorString::number(static_cast<std::int64_t>(place)),
                              name.isEmpty() ? KorDSMValueText::tableCaption(*findTable(part.table)) : name});
}

// What the row, which is the whole or a part of it, lacks.
void addLacks(SourceId id, StyleSource& source, RowRef whole, RowRef row, LacksBelow& lacks) {
    for (const StillMissing& missing : stillMissing(source, row)) {
        if (++lacks.count > static_cast<std::int64_t>(kMostNamed))
            continue;
        KorString where = KorDSMValueText::shortName(recordOf(source, whole)->name);
        if (row != whole)
            where = KorString::format("%s › %s", {where, partName(id, source, whole, row)});
        lacks.first.push_back({row, missing.column ? missing.column->number : kNameColumn,
                               KorString::format("%s: %s", {where, captionOf(missing)})});
    }
}

bool isUsedOnlyBy(StyleSource& source, RowRef row, const std::set<RowRef>& users) {
    return std::ranges::all_of(source.referrersOf(row.table, KorOdbcKey(row.key)), [&](const Referrer& user) {
        return user.column->role != eReferenceRole::kUses || users.contains({user.table->type, user.key});
    });
}

std::vector<RowRef> usedBy(StyleSource& source, RowRef row) {
    std::vector<RowRef> used;
    const StructRecord* record = recordOf(source, row);
    for (const Column& column : findTable(row.table)->columns)
        if (record && column.isReference() && column.role == eReferenceRole::kUses)
            if (const RowRef target{column.target, column.integerIn(record)}; recordOf(source, target))
                used.push_back(target);
    return used;
}

} // namespace

UseCount useCountOf(SourceId id, RowRef row) {
    UseCount count;
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || !findTable(row.table))
        return count;
    row = wholeOf(*source, row);
    const std::vector<RowRef> users = usersOf(*source, row);
    std::map<eTableType, int> byTable;
    for (const RowRef user : users)
        ++byTable[user.table];
    count.users.assign(byTable.begin(), byTable.end());
    countStyles(*source, users, count);
    std::vector<RowRef> above = users;
    for (std::size_t steps = 0; above.size() == 1 && steps < kMostSteps; ++steps)
        above = usersOf(*source, above.front());
    count.isShared = above.size() > 1;
    return count;
}

KorString useText(RowRef row, const UseCount& count) {
    if (!count.isUsed()) {
        const TableSchema* table = findTable(row.table);
        return table && table->isMadeToBeUsed() ? Prompts::dsm(kUnused) : KorString();
    }
    const KorString kinds = kindsOf(count);
    if (count.styles <= 0 || count.users.front().first == kTableDetailStyle)
        return KorString::format(Prompts::dsm(kIn), {kinds});
    const int words = count.areMoreStyles ? kInOfMore : count.styles == 1 ? kInOfOne : kInOfMany;
    return KorString::format(Prompts::dsm(words), {kinds, KorString::number(count.styles)});
}

KorString stylesText(const UseCount& count) {
    KorString names;
    for (const KorString& name : count.firstStyles)
        names = names + (names.isEmpty() ? "" : "; ") + KorDSMValueText::shortName(name);
    const int more = count.styles - static_cast<int>(count.firstStyles.size());
    if (count.areMoreStyles)
        names = names + "; …";
    else if (more > 0)
        names = KorString::format(Prompts::dsm(kAndMore), {names, KorString::number(more)});
    return names.isEmpty() ? names : KorString::format(Prompts::dsm(kStyles), {names});
}

KorString missingText(SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || !findTable(row.table))
        return {};
    KorString text = captionsOf(stillMissing(*source, row));
    std::size_t parts = 0;
    for (const Referrer& part : partsOf(*source, row)) {
        const RowRef own{part.table->type, part.key};
        const KorString lacks = captionsOf(stillMissing(*source, own));
        if (lacks.isEmpty() || ++parts > kMostNamed)
            continue;
        text = text + (text.isEmpty() ? "" : "; ") + partName(id, *source, row, own) + ": " + lacks;
    }
    if (parts > kMostNamed)
        text = KorString::format(Prompts::dsm(kAndMore),
                                 {text, KorString::number(static_cast<std::int64_t>(parts - kMostNamed))});
    return text.isEmpty() ? text : KorString::format(Prompts::dsm(kMissing), {text});
}

LacksBelow lacksBelow(SourceId id, RowRef row) {
    LacksBelow lacks;
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || !findTable(row.table))
        return lacks;
    std::set<RowRef> seen{row};
    std::vector<RowRef> rows{row};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const RowRef at = rows[i];
        std::vector<RowRef> own{at};
        for (const Referrer& part : partsOf(*source, at))
            own.push_back({part.table->type, part.key});
        for (const RowRef& each : own) {
            if (i > 0)
                addLacks(id, *source, at, each, lacks);
            for (const RowRef& used : usedBy(*source, each))
                if (seen.insert(used).second)
                    rows.push_back(used);
        }
        if (i >= kMostBelow) {
            lacks.areAllKnown = false;
            break;
        }
    }
    return lacks;
}

std::vector<RowRef> leftUnused(SourceId id, const std::vector<RowRef>& deleted) {
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || !source->complete())
        return {}; // who uses what is not known
    std::set<RowRef> going;
    std::vector<RowRef> left;
    std::vector<RowRef> level = deleted;
    while (!level.empty()) {
        std::vector<RowRef> gone;
        for (const RowRef& row : level) {
            gone.push_back(row);
            for (const Referrer& part : partsOf(*source, row))
                gone.push_back({part.table->type, part.key});
        }
        going.insert(gone.begin(), gone.end());
        std::set<RowRef> next;
        for (const RowRef& row : gone)
            for (const RowRef& used : usedBy(*source, row))
                if (findTable(used.table)->isMadeToBeUsed() && !going.contains(used) &&
                    isUsedOnlyBy(*source, used, going))
                    next.insert(used);
        level.assign(next.begin(), next.end());
        left.insert(left.end(), level.begin(), level.end());
    }
    return left;
}

KorString leftUnusedText(SourceId id, const std::vector<RowRef>& left) {
    constexpr std::size_t kMostLeft = 12;
    StyleSource* source = StyleDatabases::current().source(id);
    KorString names;
    for (const RowRef& row : left | std::views::take(kMostLeft))
        names =
            names + (names.isEmpty() ? "" : ", ") + KorDSMValueText::shortName(recordOf(*source, row)->name);
    return left.empty() ? KorString()
                        : KorString::format(Prompts::dsm(left.size() == 1 ? kLeftUnusedOne : kLeftUnused),
                                            {left.size() > kMostLeft ? names + ", …" : names});
}

} // namespace KorDSMRecordState
