#pragma once

#include "base/KorArray.h"
#include "operations/CurrentRows.h"
#include "records/TableDeclarations.h"

/// How the named read operations work, whatever the table. Reads of one record return 1 when it was found
/// and filled, else 0 and leave the record untouched. Lists return how many rows there are.
namespace StyleReads {

template <typename R>
int fill(const StructRecord* row, R& record) {
    if (row)
        record = static_cast<const R&>(*row);
    return row ? 1 : 0;
}

template <typename R>
const RowArray* rows() {
    return CurrentRows::all(tableOf<R>);
}

/// The row itself, for readers that need no copy of their own; null when there is none. Valid until the table
/// changes.
template <typename R, typename Handle>
const R* find(const Handle& keyOrName) {
    return static_cast<const R*>(CurrentRows::find(tableOf<R>, keyOrName));
}

template <typename R>
int read(const KorOdbcKey& key, R& record) {
    return fill(CurrentRows::find(tableOf<R>, key), record);
}

template <typename R>
int read(const KorString& runName, R& record) {
    return fill(CurrentRows::find(tableOf<R>, runName), record);
}

inline int names(eTableType table, KorArray<KorString>& list) {
    list.clear();
    const RowArray* rows = CurrentRows::all(table);
    const int count = rows ? rows->size() : 0;
    list.reserve(count);
    for (int i = 0; i < count; ++i)
        list.append(rows->at(i).name);
    return count;
}

template <typename R>
int names(KorArray<KorString>& list) {
    return names(tableOf<R>, list);
}

template <typename R, typename Wanted>
int select(KorArray<R>& list, Wanted wanted) {
    list.clear();
    const RowArray* table = rows<R>();
    for (int i = 0; table && i < table->size(); ++i)
        if (const R& row = static_cast<const R&>(table->at(i)); wanted(row))
            list.append(row);
    return list.length();
}

template <typename R>
int all(KorArray<R>& list) {
    return select(list, [](const R&) { return true; });
}

/// The parts of a row: those records of type R whose column `whole` holds `key`.
template <typename R>
int parts(KorArray<R>& list, std::int32_t R::*whole, const KorOdbcKey& key) {
    return select(list, [&](const R& row) { return row.*whole == key.getKey(); });
}

} // namespace StyleReads
