#include "session/KorDSMCopiedRows.h"

#include "data/WriteRefusal.h"
#include "data/exchange/ExchangeImport.h"
#include "operations/KorDSNManager.h"
#include "session/KorDSMItemCommands.h"
#include "session/PendingGroup.h"

#include <algorithm>

namespace {

// In the source that the rows came from a name means the record of that name, whatever it holds by now.
std::int32_t sameHere(StyleSource& here, FrozenRecords& frozen, RowRef row) {
    const StructRecord* record = frozen.used().table(row.table).find(KorOdbcKey(row.key));
    const StyleTable& table = here.table(row.table);
    const StructRecord* same = table.find(KorOdbcKey(row.key));
    if (same && same->name == record->name)
        return same->key;
    same = record->name.isEmpty() ? nullptr : table.find(record->name);
    return same ? same->key : 0;
}

} // namespace

Result<KorString> KorDSMCopiedRows::textOf(SourceId source, const std::vector<RowRef>& rows) {
    Result<std::string> text = FrozenRecords::textOf(*StyleDatabases::current().source(source), rows);
    if (!text)
        return Result<>{text.error};
    return KorString(text.value);
}

std::unique_ptr<KorDSMCopiedRows> KorDSMCopiedRows::read(const KorString& text, eTableType table) {
    std::unique_ptr<FrozenRecords> frozen = FrozenRecords::read(text.view());
    if (!frozen || frozen->table() != table)
        return nullptr;
    return std::unique_ptr<KorDSMCopiedRows>(new KorDSMCopiedRows(std::move(frozen)));
}

// What a copied row uses in a cell: of a record that stands in the list itself, the record.
RowRef KorDSMCopiedRows::target(std::size_t row, const Column& column) const {
    const StructRecord& record = *m_frozen->rows()[row];
    const bool isRecord = column.isReference() && column.target == m_frozen->table();
    const RowRef target{column.target, isRecord ? record.key : column.integerIn(&record)};
    return m_frozen->used().table(target.table).find(KorOdbcKey(target.key)) ? target : RowRef();
}

WriteResult KorDSMCopiedRows::bring(const std::vector<const Column*>& columns, eNamesakes namesakes,
                                    std::vector<std::vector<CellValue>>& values, ImportReport& report) {
    StyleDatabases& databases = StyleDatabases::current();
    StyleSource& here = *databases.here();
    if (Result<> whole = here.complete(); !whole)
        return WriteRefusal::incomplete(std::move(whole));
    const bool isHome = m_frozen->cameFrom(here);
    const ExchangeCallbacks quiet;
    ExchangeProgress progress(quiet, 0, {});
    ExchangeImport import(databases, m_frozen->used(), here, progress, report);
    import.setNamesakes(namesakes);
    for (std::size_t row = 0; row < count(); ++row) {
        std::vector<CellValue>& cells = values.emplace_back();
        for (const Column* column : columns) {
            const StructRecord& record = *m_frozen->rows()[row];
            const bool isOwn = column->isReference() && column->target == m_frozen->table();
            if (!column->isReference() || (!isOwn && column->integerIn(&record) <= 0)) {
                cells.push_back(column->read(&record)); // a value, no row, or a default
                continue;
            }
            const RowRef used = target(row, *column);
            std::int32_t key = used.table != kNoTable && isHome ? sameHere(here, *m_frozen, used) : 0;
            if (used.table != kNoTable && key == 0)
                key = import.bringTarget(used);
            if (import.isRefused())
                return {WriteResult::kFailed, import.refusal()};
            cells.emplace_back(std::int64_t{key});
        }
    }
    return {};
}

KorDSMCopiedRows::Comparison KorDSMCopiedRows::compareWith(SourceId source,
                                                           const std::vector<const Column*>& columns) {
    Comparison comparison;
    const KorDSNRequest request(source.dsn, source.index);
    comparison.error = KorDSMItemCommands::whyNotWritable(source);
    if (!comparison.error.isEmpty())
        return comparison;
    const PendingLog::Trial trial(StyleDatabases::current().pending());
    PendingGroup group({});
    std::vector<std::vector<CellValue>> values;
    ImportReport report;
    const WriteResult brought = bring(columns, eNamesakes::kKeepBoth, values, report);
    group.takeBack();
    comparison.error = KorString(brought.error);
    using eFate = ImportReport::Row::eFate;
    for (const ImportReport::Row& row : report.rows)
        if (row.fate == eFate::kEqual)
            ++comparison.equal;
        else
            (row.fate == eFate::kNew ? comparison.missing : comparison.different).push_back(row.name);
    return comparison;
}
