#include "operations/KorODBCDetailStyleExports.h"

#include "base/EditorSession.h"
#include "base/Translation.h"
#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
#include "data/check/ConsistencyCheck.h"
#include "data/exchange/ExchangeExport.h"
#include "data/exchange/ExchangeImport.h"
#include "data/store/SqliteStore.h"
#include "operations/KorDSNManager.h"
#include "operations/KorDatabaseAccess.h"
#include "operations/KorDetailTableDependencies.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

using Exports = KorODBCDetailStyleExports;
using Dependencies = KorDetailTableDependencies;

ExchangeCallbacks cancellable(ExchangeCallbacks callbacks) {
    if (!callbacks.isCancelled)
        callbacks.isCancelled = [] { return Dependencies::m_bDeepCopyCanceledByUser; };
    return callbacks;
}

struct Exchange {
    ExchangeCallbacks callbacks = cancellable({});
    bool isAdvanced = false;
    int result = Exports::kDone; // of the last operation
    KorString failure;           // what it has to say
};

Exchange& exchange() {
    return EditorSession::currentPart<Exchange>();
}

KorString sentenceOf(int code) {
    switch (code) {
    case Exports::kNoSuchSource:
        return WriteRefusal::notOpen().error;
    case Exports::kNoSuchRow:
        return WriteRefusal::noRow().error;
    case Exports::kReadOnlyTarget:
        return WriteRefusal::readOnly().error;
    case Exports::kSameSource:
        return translated("The definition is in this database already; choose another database.");
    case Exports::kFileFailed:
        return translated("The file could not be read or written; choose another file.");
    case Exports::kNotStored:
        return translated(
            "The database did not take all rows, so nothing was imported; check it for damage.");
    default:
        return {};
    }
}

// A result, with a sentence of its own where it has one.
struct Ending {
    int code = Exports::kDone;
    std::string reason = {};
};

int finish(const Ending& ending) {
    exchange().failure = ending.reason.empty() ? sentenceOf(ending.code) : KorString(ending.reason);
    return exchange().result = ending.code;
}

// Both ends of an import, made sure of.
struct Route {
    StyleSource* from = nullptr;
    StyleSource* to = nullptr;
    Ending fault = {}; // `kDone` where there is none
};

Route routeBetween(SourceId from, SourceId to) {
    StyleDatabases& databases = StyleDatabases::current();
    Route route{databases.source(from), databases.source(to)};
    if (!route.from || !route.to)
        route.fault = {Exports::kNoSuchSource};
    else if (from == to)
        route.fault = {Exports::kSameSource};
    else if (!databases.isEditable(to))
        route.fault = {Exports::kReadOnlyTarget, databases.whyNotEditable(to)};
    for (StyleSource* end : {route.from, route.to}) {
        if (route.fault.code != Exports::kDone)
            break;
        if (Result<> whole = end->complete(); !whole)
            route.fault = {Exports::kFileFailed, std::move(whole.error)};
    }
    return route;
}

void tellRenamed(const ImportReport& report, const ExchangeProgress& progress) {
    for (const ImportReport::Renamed& row : report.renamed)
        progress.message(KorString::format(
            translated("The %s \"%s\" is imported as \"%s\", because there is another one of its name."),
            {findTable(row.table)->rowName(), row.from, row.to}));
}

// Runs an import with the target as the current source, as one group of pending changes. What a failed one
// did is taken back without a trace.
template <typename Bring>
Ending bringInOneGroup(const Route& route, const KorString& label, const KorString& name, std::size_t steps,
                       ImportReport& report, Bring bring, bool isTrial = false) {
    StyleDatabases& databases = StyleDatabases::current();
    PendingLog& pending = databases.pending();
    const KorDSNRequest request(route.to->id().dsn, route.to->id().index);
    const std::size_t before = pending.steps().size();
    ImportReport done;
    Dependencies::ResetDeepCopyInfo();
    ExchangeProgress progress(exchange().callbacks, steps, name);
    ExchangeImport import(databases, *route.from, *route.to, progress, done);
    pending.beginGroup(label);
    const bool ok = bring(import, progress) && import.bringMissingLists();
    pending.endGroup();
    if (!ok || isTrial) {
        if (pending.steps().size() > before) {
            databases.undo();
            pending.forgetTakenBack();
        }
        if (!ok)
            return {import.isRefused() ? Exports::kNotStored : Exports::kCancelled, import.refusal()};
    }
    if (Exports::isAdvancedDeepCopyModeEnabled())
        tellRenamed(done, progress);
    report.imported.insert(report.imported.end(), done.imported.begin(), done.imported.end());
    report.alreadyThere.insert(report.alreadyThere.end(), done.alreadyThere.begin(), done.alreadyThere.end());
    report.renamed.insert(report.renamed.end(), done.renamed.begin(), done.renamed.end());
    report.rows.insert(report.rows.end(), done.rows.begin(), done.rows.end());
    report.rowsAppended += done.rowsAppended;
    return {};
}

KorString labelOf(const KorString& imported) {
    return KorString::format(translated("importing of \"%s\""), {imported});
}

template <typename Bring>
Ending importInOneGroup(const Route& route, const KorString& name, std::size_t steps, ImportReport& report,
                        Bring bring) {
    return bringInOneGroup(route, labelOf(name), name, steps, report, bring);
}

// What an import of these rows did not bring, because the source does not have it.
void tellLeftOut(const Route& route, const std::vector<RowRef>& rows, ImportReport& report) {
    const auto sentences = ConsistencyCheck(*route.from).danglingReferences(closureOf(*route.from, rows));
    report.leftOut.insert(report.leftOut.end(), sentences.begin(), sentences.end());
}

} // namespace

int Exports::exportDetail(int eType, const KorOdbcKey& key, eDSN dsn, eIndex index, const KorString& path,
                          std::vector<std::string>* leftOut, bool mayReplace) {
    StyleSource* source = StyleDatabases::current().source({dsn, index});
    const TableSchema* table = findTable(static_cast<eTableType>(eType));
    if (source && !table)
        return finish({kNoSuchRow});
    const StructRecord* record = source ? source->table(table->type).find(key) : nullptr;
    return exportRows({dsn, index}, {{table ? table->type : kNoTable, key}},
                      record ? record->name : KorString(), path, leftOut, mayReplace);
}

int Exports::exportRows(SourceId from, const std::vector<RowRef>& rows, const KorString& name,
                        const KorString& path, std::vector<std::string>* leftOut, bool mayReplace) {
    StyleSource* source = StyleDatabases::current().source(from);
    if (!source)
        return finish({kNoSuchSource});
    if (Result<> whole = source->complete(); !whole)
        return finish({kFileFailed, std::move(whole.error)});
    const auto isThere = [source](const RowRef& row) {
        return source->table(row.table).find(KorOdbcKey(row.key)) != nullptr;
    };
    if (rows.empty() || !std::ranges::all_of(rows, isThere))
        return finish({kNoSuchRow});
    ExchangeExport exported(*source, rows);
    Dependencies::ResetDeepCopyInfo();
    ExchangeProgress progress(exchange().callbacks, exported.tableCount(), name);
    const Result<> result = SqliteStore::createWith(
        path.toStdString(), [&](StyleStore& store) { return exported.writeInto(store, progress); },
        mayReplace);
    if (exported.isCancelled())
        return finish({kCancelled});
    if (result && leftOut)
        *leftOut = ConsistencyCheck(*source).danglingReferences(exported.rows());
    return result ? finish({}) : finish({kFileFailed, result.error});
}

int Exports::importDetail(int eType, const KorOdbcKey& key, eDSN fromDSN, eIndex fromIndex, eDSN toDSN,
                          eIndex toIndex, ImportReport* report, const KorString& asName) {
    const Route route = routeBetween({fromDSN, fromIndex}, {toDSN, toIndex});
    if (route.fault.code != kDone)
        return finish(route.fault);
    const TableSchema* table = findTable(static_cast<eTableType>(eType));
    const StructRecord* record = table ? route.from->table(table->type).find(key) : nullptr;
    if (!record || belongsToOthers(*table))
        return finish({kNoSuchRow});
    const RowRef row{table->type, key};
    const std::size_t steps = closureOf(*route.from, row).size();
    ImportReport unread;
    ImportReport& told = report ? *report : unread;
    const Ending ending =
        importInOneGroup(route, record->name, steps, told, [&](ExchangeImport& import, ExchangeProgress&) {
            import.bringPlaces({row});
            return import.bringClosure(row) && import.bring(row, asName);
        });
    if (ending.code == kDone)
        tellLeftOut(route, {row}, told);
    return finish(ending);
}

int Exports::copyRows(const CopyWish& wish, ImportReport& report) {
    const Route route = routeBetween(wish.from, wish.to);
    if (route.fault.code != kDone)
        return finish(route.fault);
    PendingLog& pending = StyleDatabases::current().pending();
    const auto trial = wish.isTrial ? std::make_unique<PendingLog::Trial>(pending) : nullptr;
    const Ending ending = bringInOneGroup(
        route, wish.label, wish.label, wish.rows.size(), report,
        [&](ExchangeImport& import, ExchangeProgress& progress) {
            import.setNamesakes(wish.namesakes, wish.single);
            if (wish.group.key != 0)
                import.fileUnder(wish.group, wish.rows);
            import.bringPlaces(wish.rows);
            return std::ranges::all_of(
                wish.rows, [&](const RowRef& row) { return import.bring(row) && progress.step(); });
        },
        wish.isTrial);
    if (ending.code == kDone)
        tellLeftOut(route, wish.rows, report);
    return finish(ending);
}

int Exports::openFile(const KorString& path) {
    const SourceId file = SourceId::exchange();
    Result<> opened = KorDatabaseAccess::setConnection(file.dsn, file.index, path);
    if (opened)
        opened = StyleDatabases::current().source(file)->complete();
    if (!opened)
        deleteCache(0);
    return opened ? finish({}) : finish({kFileFailed, std::move(opened.error)});
}

KorString Exports::labelOfImport(const KorString& path) {
    return labelOf(KorString(std::filesystem::path(path.toStdString()).filename().string()));
}

int Exports::GetDSNAndIndexToUse(eDSN& dsn, eIndex& index) {
    StyleDatabases& databases = StyleDatabases::current();
    for (const SourceId id : {SourceId{dsn, index}, SourceId::user()}) {
        if (!databases.isEditable(id))
            continue;
        dsn = id.dsn;
        index = id.index;
        return 1;
    }
    return 0;
}

int Exports::GetErrorMessage(KorString& text, int code) {
    text = code == exchange().result ? exchange().failure : sentenceOf(code);
    return text.isEmpty() ? 0 : 1;
}

void Exports::deleteCache(int) {
    StyleDatabases::current().closeSource(SourceId::exchange());
}

void Exports::EnableAdvancedDeepCopyMode(int on) {
    exchange().isAdvanced = on != 0;
}

bool Exports::isAdvancedDeepCopyModeEnabled() {
    return exchange().isAdvanced;
}

bool Exports::isDatabaseOlderThan5_1(eDSN) {
    return false;
}

ExchangeCallbacks Exports::setCallbacks(ExchangeCallbacks callbacks) {
    return std::exchange(exchange().callbacks, cancellable(std::move(callbacks)));
}
