#include "app/RowChoice.h"

#include "base/Translation.h"

#include <algorithm>
#include <charconv>

namespace {

KorOdbcKey keyInBrackets(const std::string& name) {
    std::int32_t key = 0;
    if (name.size() > 2 && name.front() == '[' && name.back() == ']')
        std::from_chars(name.data() + 1, name.data() + name.size() - 1, key);
    return KorOdbcKey(key);
}

const StructRecord* findIn(SourceId id, const TableSchema& table, const std::string& name) {
    const StyleTable& rows = StyleDatabases::current().source(id)->table(table.type);
    const StructRecord* record = rows.find(KorString(name));
    return record ? record : rows.find(keyInBrackets(name));
}

} // namespace

const StructRecord* RowChoice::record() const {
    return StyleDatabases::current().source(source)->table(table->type).find(key);
}

const TableSchema* RowChoice::findKind(const std::string& kind, KorString& error) {
    const TableSchema* table = findTable(std::string_view(kind));
    if (!table)
        error = KorString::format(
            translated("There is no kind \"%s\"; \"detailstyles list --help\" names them all."), {kind});
    return table;
}

eExitCode RowChoice::find(const RowOptions& options, RowChoice& row, KorString& error) {
    row.table = findKind(options.kind, error);
    if (!row.table)
        return kExitUsage;
    SourceChoice::Sources sources = SourceChoice::choose(options.source);
    error = sources.error;
    std::ranges::stable_partition(sources.ids, [](SourceId id) { return id == SourceId::user(); });
    for (const SourceId id : sources.ids) {
        const StructRecord* record = findIn(id, *row.table, options.name);
        if (!record)
            continue;
        row.source = id;
        row.key = KorOdbcKey(record->key);
        return kExitDone;
    }
    if (error.isEmpty())
        error = KorString::format(options.source.empty()
                                      ? translated("There is no %s named \"%s\".")
                                      : translated("There is no %s named \"%s\" in the source \"%s\"."),
                                  {row.table->rowName(), options.name, options.source});
    return kExitFailed;
}
