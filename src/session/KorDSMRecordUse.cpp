#include "session/KorDSMRecordUse.h"

#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMMessages.h"
#include "operations/KorDSNManager.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMItemSource.h"

#include <algorithm>

namespace KorDSMRecordUse {

namespace {

// The cell of the row that uses the target.
const Column* columnTo(StyleSource& source, RowRef row, RowRef target) {
    const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
    if (!record)
        return nullptr;
    for (const Column& column : findTable(row.table)->columns)
        if (column.isReference() && column.role == eReferenceRole::kUses && column.target == target.table &&
            column.integerIn(record) == target.key)
            return &column;
    return nullptr;
}

std::int32_t keyIn(SourceId source, const Use& use) {
    StyleSource* open = StyleDatabases::current().source(source);
    const StructRecord* record = open ? open->table(use.row.table).find(KorOdbcKey(use.row.key)) : nullptr;
    return record ? use.column->integerIn(record) : 0;
}

// Makes the record by `make` and lets the cell refer to it; both or nothing.
template <typename Make>
KorDSMRecordCommands::Outcome makeAndUse(SourceId source, const Use& use, Make make) {
    const KorDSNRequest request(source.dsn, source.index);
    PendingLog& pending = StyleDatabases::current().pending();
    const std::size_t before = pending.steps().size();
    pending.beginGroup({});
    KorDSMRecordCommands::Outcome outcome = make();
    if (outcome.isStored())
        static_cast<WriteResult&>(outcome) = KorDSMGuardedWrite::setAttributeValue(
            use.row.table, KorOdbcKey(use.row.key), use.column->number, std::int64_t{outcome.row.key});
    pending.endGroup();
    if (!outcome.isStored() && pending.steps().size() > before) {
        StyleDatabases::current().undo();
        pending.forgetTakenBack();
        DsmSetModified message; // making the record was announced already
        message.modified = pending.canUndo();
        KorDSMMainWindow::sendMessage(message);
    }
    return outcome;
}

} // namespace

std::optional<Use> userOf(const KorDSMDatabaseItem& item) {
    const KorDSMDatabaseItem* parent = item.parent();
    StyleSource* source = StyleDatabases::current().source(KorDSMItemSource::sourceOf(&item));
    if (!source || !item.record() || !parent || !parent->record() ||
        KorDSMDefines::isGroupType(parent->type()))
        return std::nullopt;
    const RowRef target{item.tableType(), item.recordKey()};
    const RowRef whole{parent->tableType(), parent->recordKey()};
    if (const Column* column = columnTo(*source, whole, target))
        return Use{whole, column, parent->record()->name};
    for (const Referrer& part : partsOf(*source, whole))
        if (const Column* column = columnTo(*source, {part.table->type, part.key}, target))
            return Use{{part.table->type, part.key}, column, parent->record()->name};
    return std::nullopt;
}

KorDSMRecordCommands::Outcome copyForUser(const KorDSMDatabaseItem& item, const KorString& name) {
    const std::optional<Use> use = userOf(item);
    return use ? copyFor(KorDSMItemSource::sourceOf(&item), *use, name) : KorDSMRecordCommands::Outcome();
}

KorDSMRecordCommands::Outcome makeFor(SourceId source, const Use& use, const KorString& name,
                                      std::int32_t group) {
    return makeAndUse(source, use,
                      [&] { return KorDSMRecordCommands::create(source, use.column->target, name, group); });
}

KorDSMRecordCommands::Outcome copyFor(SourceId source, const Use& use, const KorString& name) {
    return makeAndUse(source, use, [&] {
        return KorDSMRecordCommands::copy(source, {use.column->target, keyIn(source, use)}, name,
                                          KorDSMRecordCommands::eDepth::kRecord);
    });
}

} // namespace KorDSMRecordUse
