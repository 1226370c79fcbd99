#include "app/RowChoice.h"

#include "base/Translation.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

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
        StyleSource& source = *StyleDatabases::current().source(id);
        if (const StoreResult read = source.readingOf(row.table->type); !read) {
            error = read.error;
            return kExitFailed;
        }
        const StructRecord* record = KorDSMValueText::findRow(source.table(row.table->type), options.name);
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

eExitCode RowChoice::findInWhole(const RowOptions& options, RowChoice& row, KorString& error) {
    const eExitCode found = find(options, row, error);
    if (found != kExitDone)
        return found;
    if (const KorString missing =
            options.source.empty() ? SourceChoice::missingBefore(row.source) : KorString();
        !missing.isEmpty()) {
        error = KorString::format(
            translated(
                "The source \"%s\", which is searched first, cannot be used, so nothing was done; mend "
                "that first, or name another source with --source."),
            {missing});
        return kExitFailed;
    }
    if (const StoreResult whole = StyleDatabases::current().readWhole(row.source); !whole) {
        error = whole.error;
        return kExitFailed;
    }
    return find(options, row, error); // reading the whole may have been reading anew
}
