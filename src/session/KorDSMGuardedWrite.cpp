#include "session/KorDSMGuardedWrite.h"

#include "base/EditorSession.h"
#include "base/KorAssert.h"
#include "data/RowUsers.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMMessages.h"
#include "operations/KorOdbcGUI.h"
#include "services/KorHostReport.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

struct Askers {
    std::vector<std::pair<const void*, KorDSMGuardedWrite::AskFunction>> functions;
};

auto& askers() {
    return EditorSession::currentPart<Askers>().functions;
}

} // namespace

void KorDSMGuardedWrite::addAskFunction(const void* owner, AskFunction ask) {
    removeAskFunction(owner);
    askers().emplace_back(owner, std::move(ask));
}

void KorDSMGuardedWrite::removeAskFunction(const void* owner) {
    std::erase_if(askers(), [owner](const auto& asker) { return asker.first == owner; });
}

namespace {

// Whether it can be said how many records use a row, or the user is to say it, because the write mends what
// is in the way of that; if not, the host is told why.
bool canJudge(eTableType table, const KorOdbcKey& key, int field) {
    StyleSource* source = StyleDatabases::current().here();
    if (!source || !KorDSMDialogFactory::getDSMDataStructure().getShowWarning())
        return true;
    const Column* column = findTable(table)->column(field);
    if (column && source->isUnreadable(key, *column))
        return true;
    const StoreResult whole = source->complete();
    if (!whole) {
        KorHostReport::add(whole.error);
        KorDSMMainWindow::postMessage(DsmReportWaits());
    }
    return whole.ok();
}

// Rows that others use, or that are part of one.
bool canChangeOthers(eTableType table) {
    const TableSchema& schema = *findTable(table);
    return schema.isMadeToBeUsed() || std::ranges::any_of(schema.columns, [](const Column& column) {
               return column.isReference() && column.role == eReferenceRole::kPartOf;
           });
}

} // namespace

bool KorDSMGuardedWrite::needsConfirmation(eTableType table, const KorOdbcKey& key) {
    return KorDSMDialogFactory::getDSMDataStructure().getShowWarning() && KorOdbcGUI::canBeShared(table) &&
           KorOdbcGUI::isShared(table, key);
}

int KorDSMGuardedWrite::ask(RowRef shared) {
    return askers().empty() ? kDecline
                            : AskFunction(askers().back().second)(shared.table, KorOdbcKey(shared.key));
}

int KorDSMGuardedWrite::write(bool canJudge, const FindShared& findShared,
                              const std::function<int()>& writeNow) {
    if (!canJudge)
        return 0;
    const std::optional<RowRef> shared = findShared();
    if (const int answer = shared ? ask(*shared) : kWrite; answer != kWrite)
        return answer;
    const int odbcResult = writeNow();
    if (!KorAssert::check(odbcResult > 0, "odbcResult > 0") || odbcResult != WriteResult::kWritten)
        return 0;
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    return kWrite;
}

int KorDSMGuardedWrite::writeRow(eTableType table, const KorOdbcKey& key, int field,
                                 const std::function<int()>& writeNow) {
    const auto shared = [&] {
        return needsConfirmation(table, key) ? std::optional(RowRef{table, key}) : std::nullopt;
    };
    return write(!KorOdbcGUI::canBeShared(table) || canJudge(table, key, field), shared, writeNow);
}

int KorDSMGuardedWrite::setAttributeString(eTableType table, const KorOdbcKey& key, int field,
                                           const KorString& text, int flags) {
    return writeRow(table, key, field,
                    [&] { return KorOdbcMan::setAttribute(table, key, field, text, flags); });
}

int KorDSMGuardedWrite::setAttributeInt(eTableType table, const KorOdbcKey& key, int field, long value) {
    return writeRow(table, key, field,
                    [&] { return KorOdbcMan::setAttribute(table, key, field, value, KorOdbcMan::kThisRow); });
}

int KorDSMGuardedWrite::setAttributeDouble(eTableType table, const KorOdbcKey& key, int field, double value) {
    return writeRow(table, key, field,
                    [&] { return KorOdbcMan::setAttribute(table, key, field, value, KorOdbcMan::kThisRow); });
}

int KorDSMGuardedWrite::setAttributeValue(eTableType table, const KorOdbcKey& key, int field,
                                          const CellValue& value) {
    StyleDatabases& databases = StyleDatabases::current();
    const auto shared = [&] {
        return KorDSMDialogFactory::getDSMDataStructure().getShowWarning()
                   ? sharedWhole(databases, {table, key})
                   : std::nullopt;
    };
    return write(!canChangeOthers(table) || canJudge(table, key, field), shared,
                 [&] { return databases.setCell(table, key, field, value); });
}

int KorDSMGuardedWrite::changeParts(RowRef whole, const std::function<int()>& writeNow) {
    const auto shared = [&] {
        return KorDSMDialogFactory::getDSMDataStructure().getShowWarning()
                   ? sharedWhole(StyleDatabases::current(), whole)
                   : std::nullopt;
    };
    return write(canJudge(whole.table, KorOdbcKey(whole.key), 0), shared, writeNow);
}

int KorDSMGuardedWrite::storeCurrentRecord(eTableType table) {
    return writeRow(table, KorOdbcMan::getRecordKey(table), 0,
                    [table] { return KorOdbcMan::storeCurrentRecord(table, KorOdbcMan::kThisRow); });
}
