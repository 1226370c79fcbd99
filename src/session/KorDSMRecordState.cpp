#include "session/KorDSMRecordState.h"

#include "data/RowClosure.h"
#include "data/RowUsers.h"
#include "data/check/StillMissing.h"
#include "services/Prompts.h"
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
            ++count.styles;
        } else if (++asked > kMostRows) {
            count.areMoreStyles = true;
        } else {
            for (const RowRef user : usersOf(source, row))
                if (seen.insert(user).second)
                    waiting.push_back(user);
        }
    }
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

KorString missingText(SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || !findTable(row.table))
        return {};
    std::vector<StillMissing> missing = stillMissing(*source, row);
    for (const Referrer& part : partsOf(*source, row))
        for (const StillMissing& lack : stillMissing(*source, {part.table->type, part.key}))
            if (std::ranges::find(missing, lack) == missing.end())
                missing.push_back(lack);
    KorString text;
    for (const StillMissing& lack : missing)
        text = text + (text.isEmpty() ? "" : ", ") + captionOf(lack);
    return text.isEmpty() ? text : KorString::format(Prompts::dsm(kMissing), {text});
}

KorString leftUnusedText(SourceId id, const std::vector<RowRef>& deleted) {
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || !source->complete())
        return {}; // who uses what is not known
    std::set<RowRef> going(deleted.begin(), deleted.end());
    for (const RowRef& row : deleted)
        for (const Referrer& part : partsOf(*source, row))
            going.insert({part.table->type, part.key});
    std::set<RowRef> left;
    for (const RowRef& row : going)
        for (const RowRef& used : targetsOf(*source, row))
            if (findTable(used.table)->isMadeToBeUsed() && !going.contains(used) &&
                std::ranges::all_of(source->referrersOf(used.table, KorOdbcKey(used.key)),
                                    [&](const Referrer& user) {
                                        return user.column->role != eReferenceRole::kUses ||
                                               going.contains({user.table->type, user.key});
                                    }))
                left.insert(used);
    constexpr std::size_t kMostNamed = 12;
    KorString names;
    for (const RowRef& row : left | std::views::take(kMostNamed))
        names = names + (names.isEmpty() ? "" : ", ") +
                KorDSMValueText::shortName(source->table(row.table).find(KorOdbcKey(row.key))->name);
    return left.empty() ? KorString()
                        : KorString::format(Prompts::dsm(left.size() == 1 ? kLeftUnusedOne : kLeftUnused),
                                            {left.size() > kMostNamed ? names + ", …" : names});
}

} // namespace KorDSMRecordState
