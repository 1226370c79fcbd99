#include "operations/KorOdbcMan.h"

#include "base/KorAssert.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"

#include "data/check/OrphanedParts.h"
#include "records/TableDeclarations.h"

#include <algorithm>

namespace {

std::array<std::shared_ptr<StructRecord>, kEndOfTables> makeCurrentRecords() {
    std::array<std::shared_ptr<StructRecord>, kEndOfTables> records;
    for (const TableSchema& table : allTables())
        records[static_cast<std::size_t>(table.type)] = table.makeRows()->copyOf(nullptr);
    return records;
}

std::array<int, kNumberOfTableTypes> firstSlots() {
    std::array<int, kNumberOfTableTypes> counts{};
    for (const TableSchema& table : allTables())
        if (table.type < kNumberOfTableTypes)
            counts[static_cast<std::size_t>(table.type)] = table.firstSlot();
    return counts;
}

StyleDatabases& databases() {
    return StyleDatabases::current();
}

} // namespace

StructDetailStyle& KorOdbcMan::m_structDetailStyle = currentRecord<StructDetailStyle>();
StructDetailMaster& KorOdbcMan::m_structDetailMaster = currentRecord<StructDetailMaster>();
StructDetViewRequest& KorOdbcMan::m_structDetViewRequest = currentRecord<StructDetViewRequest>();
StructDetViewLengthClip& KorOdbcMan::m_structDetViewLengthClip = currentRecord<StructDetViewLengthClip>();
StructDetViewDimStrategyItem& KorOdbcMan::m_structDetViewDimStrategyItem =
    currentRecord<StructDetViewDimStrategyItem>();
StructDetRequestType& KorOdbcMan::m_structDetRequestType = currentRecord<StructDetRequestType>();
StructLinetypes& KorOdbcMan::m_structLinetypes = currentRecord<StructLinetypes>();

const std::array<int, kNumberOfTableTypes> KorOdbcMan::m_numberOfColumns = firstSlots();

StructRecord& KorOdbcMan::currentRecord(eTableType table) {
    static const auto records = makeCurrentRecords();
    const TableSchema* schema = findTable(table);
    KorAssert::check(schema != nullptr, "each table type has a declaration");
    return *records[schema ? static_cast<std::size_t>(table) : 0];
}

int KorOdbcMan::m_DSMNewReloadInfo = 0;
int KorOdbcMan::m_DSMReloadInfo = 0;
int KorOdbcMan::m_DSMResetDetViewRequestCache = 0;
bool KorOdbcCompactDetailsTables::m_bCompactPerformed = false;

eDSN KorOdbcMan::getCurrentDSN() {
    return StyleDatabases::current().currentSource().dsn;
}

eIndex KorOdbcMan::getCurrentAddIn() {
    return StyleDatabases::current().currentSource().index;
}

bool KorOdbcMan::isCurrentOwnerVEL() {
    return databases().isOwnerMode();
}

bool KorOdbcMan::getEditableStatus() {
    return StyleDatabases::current().isEditable();
}

void KorOdbcMan::setCurrentDSN(eDSN dsn) {
    if (dsn != KorDSNDefinitions::kLast)
        databases().setCurrentSource({dsn, getCurrentAddIn()});
}

void KorOdbcMan::setCurrentAddIn(eIndex index) {
    if (index != KorDSNDefinitions::kNone)
        databases().setCurrentSource({getCurrentDSN(), index});
}

int KorOdbcMan::setAttribute(eTableType table, const KorOdbcKey& key, int column, long value, eCopyDepth) {
    return databases().setCell(table, key, column, std::int64_t{value}).code();
}

int KorOdbcMan::setAttribute(eTableType table, const KorOdbcKey& key, int column, double value, eCopyDepth) {
    return databases().setCell(table, key, column, value).code();
}

int KorOdbcMan::setAttribute(eTableType table, const KorOdbcKey& key, int column, const KorString& value,
                             int) {
    return databases().setCell(table, key, column, value).code();
}

int KorOdbcMan::appendNewRecord(eTableType table, int, eCopyDepth) {
    return databases().append(table, currentRecord(table)).code();
}

int KorOdbcMan::deleteRecord(eTableType table, const KorOdbcKey& key, eCopyDepth) {
    return databases().remove(table, key).code();
}

int KorOdbcMan::storeCurrentRecord(eTableType table, eCopyDepth) {
    return findTable(table) ? databases().store(table, currentRecord(table)).code() : WriteResult::kFailed;
}

KorOdbcKey KorOdbcMan::getRecordKey(eTableType table) {
    return KorOdbcKey(currentRecord(table).key);
}

int KorOdbcMan::setStatusOnOK(eTableType table, eCopyDepth) {
    return databases().keepTable(table) ? 1 : 0;
}

int KorOdbcMan::setStatusOnUpdate(eTableType table, eCopyDepth) {
    return databases().keepTable(table) ? 1 : 0;
}

int KorOdbcMan::setStatusOnCancel(eTableType table, eCopyDepth) {
    databases().dropTable(table);
    return 1;
}

namespace {

SourceId sourceOf(eDSN dsn) {
    switch (dsn) {
    case KorDSNDefinitions::kUser:
        return SourceId::user();
    case KorDSNDefinitions::kStandard:
        return SourceId::standard();
    default:
        return {dsn, KorOdbcMan::getCurrentAddIn()};
    }
}

} // namespace

int KorOdbcCompactDetailsTables::startCompactProcess(eDSN dsn, int, eCompactType) {
    const SourceId id = sourceOf(dsn);
    const KorDSNRequest request(id.dsn, id.index);
    StyleSource* source = databases().here();
    if (!source || !databases().isEditable() || !source->complete())
        return -1;
    const std::vector<RowRef> orphans = orphanedParts(*source);
    databases().pending().beginGroup(translated("Compacting"));
    const auto removed = std::ranges::count_if(orphans, [](const RowRef& part) {
        return databases().remove(part.table, KorOdbcKey(part.key)).isStored();
    });
    databases().pending().endGroup();
    m_bCompactPerformed = m_bCompactPerformed || removed > 0;
    return static_cast<int>(removed);
}
