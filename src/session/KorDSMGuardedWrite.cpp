#include "session/KorDSMGuardedWrite.h"

#include "base/EditorSession.h"
#include "base/KorAssert.h"
#include "data/RowUsers.h"
#include "data/StyleDatabases.h"
#include "data/WriteRefusal.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMMessages.h"
#include "operations/KorOdbcGUI.h"
#include "operations/KorOdbcMan.h"
#include "services/KorHostReport.h"
#include "session/KorDSMCopyWish.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

struct Askers {
    std::vector<std::pair<const void*, KorDSMGuardedWrite::AskFunction>> functions;
};

struct Wished {
    std::optional<KorDSMCopyWish> wish;
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

// The answer for a row that several others use.
int ask(RowRef shared) {
    return askers().empty() ? KorDSMGuardedWrite::kDecline
                            : KorDSMGuardedWrite::AskFunction(askers().back().second)(shared.table,
                                                                                      KorOdbcKey(shared.key));
}

// The reading that says how many records use a row; success also where nobody is asked, and where the user is
// to say it, because the write mends what is in the way of that.
Result<> judgedBy(eTableType table, const KorOdbcKey& key, int field) {
    StyleSource* source = StyleDatabases::current().here();
    if (!source || !KorDSMDialogFactory::getDSMDataStructure().getShowWarning())
        return {};
    const Column* column = findTable(table)->column(field);
    return column && source->isUnreadable(key, *column) ? Result<>() : source->complete();
}

void tell(const WriteResult& result) {
    KorHostReport::add(result.error);
    KorDSMMainWindow::postMessage(DsmReportWaits());
}

WriteResult refusal(int answer) {
    return {answer == KorDSMGuardedWrite::kCopy ? WriteResult::kMakeCopy : WriteResult::kDeclined};
}

void keepWish(int answer, eTableType table, const KorOdbcKey& key, int field, const CellValue& value) {
    if (answer == KorDSMGuardedWrite::kCopy)
        KorDSMCopyWish::keep({.row = {table, key.getKey()}, .field = field, .value = value});
}

// Rows that others use, or that are part of one.
bool canChangeOthers(eTableType table) {
    return canBeUsed(table) || std::ranges::any_of(findTable(table)->columns, [](const Column& column) {
               return column.isReference() && column.role == eReferenceRole::kPartOf;
           });
}

} // namespace

void KorDSMCopyWish::keep(KorDSMCopyWish wish) {
    EditorSession::currentPart<Wished>().wish = std::move(wish);
}

std::optional<KorDSMCopyWish> KorDSMCopyWish::take() {
    return std::exchange(EditorSession::currentPart<Wished>().wish, std::nullopt);
}

bool KorDSMGuardedWrite::announce(const WriteResult& result) {
    if (result.isStored())
        KorDSMMainWindow::sendMessage(DsmDataChanged());
    else
        tell(result);
    return result.isStored();
}

bool KorDSMGuardedWrite::needsConfirmation(eTableType table, const KorOdbcKey& key) {
    return KorDSMDialogFactory::getDSMDataStructure().getShowWarning() && KorOdbcGUI::canBeShared(table) &&
           KorOdbcGUI::isShared(table, key);
}

KorDSMGuardedWrite::Answered KorDSMGuardedWrite::write(const Result<>& judgedBy, const FindShared& findShared,
                                                       const Write& writeNow) {
    if (!judgedBy) {
        const WriteResult unknown = WriteRefusal::incomplete(judgedBy);
        tell(unknown);
        return {unknown};
    }
    const std::optional<RowRef> shared = findShared();
    KorDSMCopyWish::take();
    if (const int answer = shared ? ask(*shared) : kWrite; answer != kWrite)
        return {refusal(answer), answer};
    const WriteResult result = writeNow();
    const int odbcResult = result.code();
    KorAssert::check(odbcResult > 0, "odbcResult > 0");
    announce(result);
    return {result};
}

KorDSMGuardedWrite::Answered KorDSMGuardedWrite::writeRow(eTableType table, const KorOdbcKey& key, int field,
                                                          const Write& writeNow) {
    const auto shared = [&] {
        return needsConfirmation(table, key) ? std::optional(RowRef{table, key}) : std::nullopt;
    };
    return write(KorOdbcGUI::canBeShared(table) ? judgedBy(table, key, field) : Result<>(), shared, writeNow);
}

KorDSMGuardedWrite::Answered KorDSMGuardedWrite::writeRow(eTableType table, const KorOdbcKey& key, int field,
                                                          const CellValue& value) {
    Answered answered = writeRow(table, key, field,
                                 [&] { return StyleDatabases::current().setCell(table, key, field, value); });
    keepWish(answered.answer, table, key, field, value);
    return answered;
}

int KorDSMGuardedWrite::setAttributeString(eTableType table, const KorOdbcKey& key, int field,
                                           const KorString& text, int) {
    return writeRow(table, key, field, text).code();
}

int KorDSMGuardedWrite::setAttributeInt(eTableType table, const KorOdbcKey& key, int field, long value) {
    return writeRow(table, key, field, std::int64_t{value}).code();
}

int KorDSMGuardedWrite::setAttributeDouble(eTableType table, const KorOdbcKey& key, int field, double value) {
    return writeRow(table, key, field, value).code();
}

int KorDSMGuardedWrite::storeCurrentRecord(eTableType table) {
    const StructRecord& record = KorOdbcMan::currentRecord(table);
    return writeRow(table, KorOdbcKey(record.key), 0,
                    [&] { return StyleDatabases::current().store(table, record); })
        .code();
}

WriteResult KorDSMGuardedWrite::setField(eTableType table, const KorOdbcKey& key, int field,
                                         const CellValue& value) {
    return writeRow(table, key, field, value).result;
}

WriteResult KorDSMGuardedWrite::setAttributeValue(eTableType table, const KorOdbcKey& key, int field,
                                                  const CellValue& value) {
    StyleDatabases& databases = StyleDatabases::current();
    const auto shared = [&] {
        return KorDSMDialogFactory::getDSMDataStructure().getShowWarning()
                   ? sharedWhole(databases, {table, key})
                   : std::nullopt;
    };
    Answered answered = write(canChangeOthers(table) ? judgedBy(table, key, field) : Result<>(), shared,
                              [&] { return databases.setCell(table, key, field, value); });
    keepWish(answered.answer, table, key, field, value);
    return std::move(answered.result);
}

WriteResult KorDSMGuardedWrite::appendCurrentRecord(eTableType table) {
    WriteResult result = StyleDatabases::current().append(table, KorOdbcMan::currentRecord(table));
    KorAssert::check(result.code() > 0, "result > 0");
    announce(result);
    return result;
}

WriteResult KorDSMGuardedWrite::changeParts(RowRef whole, const Write& writeNow) {
    const auto shared = [&] {
        return KorDSMDialogFactory::getDSMDataStructure().getShowWarning()
                   ? sharedWhole(StyleDatabases::current(), whole)
                   : std::nullopt;
    };
    return write(judgedBy(whole.table, KorOdbcKey(whole.key), 0), shared, writeNow).result;
}
