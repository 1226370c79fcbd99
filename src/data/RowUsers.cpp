#include "data/RowUsers.h"

#include <algorithm>
#include <map>
#include <utility>

bool canBeUsed(eTableType table) {
    return std::ranges::any_of(allTables(), [table](const TableSchema& user) {
        return std::ranges::any_of(user.columns, [table](const Column& column) {
            return column.isReference() && column.role == eReferenceRole::kUses && column.target == table;
        });
    });
}

RowRef wholeOf(StyleSource& source, RowRef row) {
    const TableSchema* table = findTable(row.table);
    const StructRecord* record = table ? source.table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    if (!record)
        return row;
    for (const Column& column : table->columns) {
        if (!column.isReference() || column.role != eReferenceRole::kPartOf)
            continue;
        const RowRef whole{column.target, column.integerIn(record)};
        if (source.table(whole.table).find(KorOdbcKey(whole.key)))
            return wholeOf(source, whole);
    }
    return row;
}

std::optional<RowRef> sharedWhole(StyleDatabases& databases, RowRef row) {
    StyleSource* source = databases.here();
    if (!source)
        return {};
    const RowRef whole = wholeOf(*source, row);
    const bool isShared =
        canBeUsed(whole.table) && databases.ownerCount(whole.table, KorOdbcKey(whole.key)) > 1;
    return isShared ? std::optional(whole) : std::nullopt;
}

namespace {

void addUsers(StyleSource& source, RowRef row, std::vector<RowUser>& users) {
    std::map<std::pair<RowRef, const Column*>, std::size_t> known; // places among the users
    for (const Referrer& referrer : source.referrersOf(row.table, KorOdbcKey(row.key))) {
        if (referrer.column->role != eReferenceRole::kUses)
            continue;
        const RowRef whole = wholeOf(source, {referrer.table->type, referrer.key});
        const auto [user, isNew] = known.try_emplace({whole, referrer.column}, users.size());
        if (!isNew)
            ++users[user->second].times;
        else
            users.push_back({source.id(), whole, findTable(whole.table),
                             source.table(whole.table).find(KorOdbcKey(whole.key))->name, referrer.column,
                             referrer.table});
    }
}

} // namespace

std::vector<RowUser> usersInItsSource(StyleDatabases& databases, SourceId id, RowRef row) {
    std::vector<RowUser> users;
    if (StyleSource* source = databases.source(id))
        addUsers(*source, wholeOf(*source, row), users);
    return users;
}

std::vector<RowUser> usersInAllSources(StyleDatabases& databases, SourceId id, RowRef row) {
    std::vector<RowUser> users;
    StyleSource* own = databases.source(id);
    if (own)
        row = wholeOf(*own, row);
    const StructRecord* record = own ? own->table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    if (!record)
        return users;
    for (const SourceId other : databases.sources()) {
        StyleSource& source = *databases.source(other);
        const StructRecord* same = other == id ? record : source.table(row.table).find(record->name);
        if (same)
            addUsers(source, {row.table, same->key}, users);
    }
    return users;
}
