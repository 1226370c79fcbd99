#include "session/KorDSMRecordUse.h"

#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMMessages.h"
#include "operations/KorDSNManager.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMProvenanceWords.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

namespace KorDSMRecordUse {

namespace {

constexpr int kDeleting = 244; // "deletion of "%s""

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

// What `row`, the record `from` or one of its parts, is in its copy `to`; nothing where it is neither.
RowRef twinIn(StyleSource& source, RowRef from, RowRef to, RowRef row) {
    if (row == from)
        return to;
    const std::vector<Referrer> parts = partsOf(source, from);
    const std::vector<Referrer> copies = partsOf(source, to);
    for (std::size_t i = 0; i < std::min(parts.size(), copies.size()); ++i)
        if (RowRef{parts[i].table->type, parts[i].key} == row)
            return {copies[i].table->type, copies[i].key};
    return {};
}

WriteResult writeWish(SourceId source, RowRef from, RowRef to, const KorDSMCopyWish& wish) {
    if (wish.changeList)
        return wish.changeList(to);
    StyleDatabases& databases = StyleDatabases::current();
    const RowRef row = twinIn(*databases.source(source), from, to, wish.row);
    return row.key == 0 ? WriteResult()
                        : databases.setCell(row.table, KorOdbcKey(row.key), wish.field, wish.value);
}

// The cell of the record or of one of its parts that uses the target.
std::optional<Use> useIn(const KorDSMDatabaseItem& item, RowRef target) {
    StyleSource* source = StyleDatabases::current().source(KorDSMItemSource::sourceOf(&item));
    if (!source || !item.record() || KorDSMDefines::isGroupType(item.type()))
        return std::nullopt;
    const RowRef whole{item.tableType(), item.recordKey()};
    const KorString name = KorDSMValueText::isNameGiven(*findTable(whole.table), item.record()->name)
                               ? item.record()->name
                               : KorDSMProvenanceWords::nameOf(whole);
    if (const Column* column = columnTo(*source, whole, target))
        return Use{whole, column, name};
    for (const Referrer& part : partsOf(*source, whole))
        if (const Column* column = columnTo(*source, {part.table->type, part.key}, target))
            return Use{{part.table->type, part.key}, column, name};
    return std::nullopt;
}

WriteResult writeUse(const Use& use, std::int32_t key) {
    return KorDSMGuardedWrite::setAttributeValue(use.row.table, KorOdbcKey(use.row.key), use.column->number,
                                                 std::int64_t{key});
}

// Does all of it as one step, or nothing.
template <typename Act>
KorDSMRecordCommands::Outcome allOrNothing(SourceId source, const KorString& label, Act act) {
    const KorDSNRequest request(source.dsn, source.index);
    PendingLog& pending = StyleDatabases::current().pending();
    const std::size_t before = pending.steps().size();
    pending.beginGroup(label);
    KorDSMRecordCommands::Outcome outcome = act();
    pending.endGroup();
    if (!outcome.isStored() && pending.steps().size() > before) {
        StyleDatabases::current().undo();
        pending.forgetTakenBack();
        DsmSetModified message; // what was written was announced already
        message.modified = pending.canUndo();
        KorDSMMainWindow::sendMessage(message);
    }
    return outcome;
}

// Makes the record by `make` and lets the cell refer to it.
template <typename Make>
KorDSMRecordCommands::Outcome makeAndUse(SourceId source, const Use& use, Make make) {
    return allOrNothing(source, {}, [&] {
        KorDSMRecordCommands::Outcome outcome = make();
        if (outcome.isStored())
            static_cast<WriteResult&>(outcome) = writeUse(use, outcome.row.key);
        return outcome;
    });
}

// Whether another cell than this one uses the record.
bool isUsedElsewhere(SourceId source, const Use& use, RowRef target) {
    return std::ranges::any_of(
        StyleDatabases::current().source(source)->referrersOf(target.table, KorOdbcKey(target.key)),
        [&use](const Referrer& referrer) {
            return referrer.column->role == eReferenceRole::kUses &&
                   (referrer.column != use.column || referrer.key != use.row.key);
        });
}

} // namespace

std::optional<Use> userOf(const KorDSMDatabaseItem& item) {
    return item.parent() && item.record() ? useIn(*item.parent(), {item.tableType(), item.recordKey()})
                                          : std::nullopt;
}

std::optional<Use> userOf(const KorDSMDatabaseItem& item, RowRef target) {
    const std::optional<Use> own = useIn(item, target);
    return own || !item.parent() ? own : useIn(*item.parent(), target);
}

KorString targetName(SourceId source, const Use& use) {
    StyleSource* open = StyleDatabases::current().source(source);
    const StructRecord* target =
        open ? open->table(use.column->target).find(KorOdbcKey(keyIn(source, use))) : nullptr;
    return target ? target->name : KorString();
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

KorDSMRecordCommands::Outcome copyFor(SourceId source, const Use& use, const KorString& name,
                                      const std::optional<KorDSMCopyWish>& wish) {
    return makeAndUse(source, use, [&] {
        const RowRef original{use.column->target, keyIn(source, use)};
        KorDSMRecordCommands::Outcome copy =
            KorDSMRecordCommands::copy(source, original, name, KorDSMRecordCommands::eDepth::kRecord);
        if (copy.isStored() && wish)
            static_cast<WriteResult&>(copy) = writeWish(source, original, copy.row, *wish);
        return copy;
    });
}

KorDSMRecordCommands::Outcome removeFor(SourceId source, const Use& use) {
    const RowRef row{use.column->target, keyIn(source, use)};
    if (row.key <= 0 || isUsedElsewhere(source, use, row))
        return KorDSMRecordCommands::remove(source, row); // which says why not
    const KorString label = ItemCommandParts::label(kDeleting, targetName(source, use));
    return allOrNothing(source, label, [&] {
        KorDSMRecordCommands::Outcome outcome;
        static_cast<WriteResult&>(outcome) = writeUse(use, 0);
        return outcome.isStored() ? KorDSMRecordCommands::remove(source, row) : outcome;
    });
}

} // namespace KorDSMRecordUse
