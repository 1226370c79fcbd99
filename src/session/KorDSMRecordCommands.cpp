#include "session/KorDSMRecordCommands.h"

#include "base/Translation.h"
#include "data/IndependentCopy.h"
#include "data/RowClosure.h"
#include "data/exchange/MasterNumbers.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/KorDSNManager.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "operations/KorOdbcGUI.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/PendingGroup.h"

#include <algorithm>

namespace KorDSMRecordCommands {

namespace {

constexpr int kTaken = 231;      // "There is one of this name already."
constexpr int kNameNeeded = 232; // "A name is needed."
constexpr int kDeleting = 244;   // "deletion of "%s""
constexpr int kCopying = 245;    // "copying of "%s""
constexpr int kRenaming = 246;   // "renaming of "%s""
constexpr int kNoMaster = 494;   // ""%s" has no category any more, so it cannot be copied."
constexpr int kNameColumn = 1;

StyleDatabases& databases() {
    return StyleDatabases::current();
}

// The row of the current source; null when it is gone.
const StructRecord* find(RowRef row) {
    return databases().here()->table(row.table).find(KorOdbcKey(row.key));
}

bool needsMaster(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->filedBy == kTableDetailMaster;
}

bool readMaster(RowRef row, StructDetailMaster& master) {
    return needsMaster(row.table) && KorOdbcGUI::getDetailMaster(row.key, master) == 1;
}

bool appendMaster(StructDetailMaster master, const StructRecord& style) {
    master.key = 0;
    master.name = style.name;
    master.styleKey = style.key;
    master.number = freeMasterNumber(*databases().here(), master);
    return databases().append(kTableDetailMaster, master) == WriteResult::kWritten;
}

// Why a record of the source must not get the name; `exceptKey` is the row that may have it.
KorString whyNotNamed(SourceId source, eTableType table, const KorString& name, std::int32_t exceptKey) {
    if (KorString readOnly = KorDSMItemCommands::whyNotWritable(source); !readOnly.isEmpty())
        return readOnly;
    if (name.isEmpty())
        return Prompts::dsm(kNameNeeded);
    const StructRecord* present = databases().source(source)->table(table).find(name);
    return present && present->key != exceptKey ? Prompts::dsm(kTaken) : ItemCommandParts::whyIncomplete();
}

// Why the tables did not take a record with its master.
KorString whyNotAppended(eTableType table) {
    const KorString reason = ItemCommandParts::whyFull(table);
    return reason.isEmpty() && needsMaster(table) ? ItemCommandParts::whyFull(kTableDetailMaster) : reason;
}

Outcome refused(const KorString& why) {
    Outcome outcome;
    outcome.error = why.toStdString();
    return outcome;
}

Outcome stored(WriteResult::eKind kind, RowRef row) {
    Outcome outcome;
    outcome.kind = kind;
    outcome.row = row;
    return outcome;
}

// Does `write` as one step of undo, and announces it. `write` returns the record's key, or 0 for a failure.
template <typename Write>
Outcome inOneStep(const KorString& label, eTableType table, Write write) {
    PendingGroup group(label);
    const std::int32_t key = write();
    if (key == 0) {
        group.takeBack();
        return refused(whyNotAppended(table));
    }
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    return stored(WriteResult::kWritten, {table, key});
}

// A new group or category comes behind the others.
void placeLast(const KorDSMFamily& family, StructRecord& record) {
    const TableSchema& table = *findTable(family.table);
    const Column* order = table.column(std::string_view(family.isCategory ? "number" : "order"));
    if (!family.isGroup() || !order)
        return;
    const RowArray& rows = databases().here()->table(table.type).rows();
    std::int32_t last = 0;
    for (int i = 0; i < rows.size(); ++i)
        last = std::max(last, order->integerIn(&rows.at(i)));
    order->integerIn(&record) = last + 1;
}

std::int32_t append(const KorDSMFamily& family, const KorString& name, std::int32_t group) {
    const auto record = databases().here()->table(family.table).rows().copyOf(nullptr);
    record->name = name;
    if (const Column* filing = KorDSMFamilies::filingColumn(family.table))
        filing->integerIn(record.get()) = group;
    placeLast(family, *record);
    if (databases().append(family.table, *record) != WriteResult::kWritten)
        return 0;
    if (!needsMaster(family.table))
        return record->key;
    StructDetailMaster master;
    master.categoryKey = group;
    master.detailKey = static_cast<const StructDetBaseCategory*>(find({kTableBaseCategory, group}))->number;
    master.number = 1;
    return appendMaster(master, *record) ? record->key : 0;
}

std::int32_t appendCopy(RowRef row, const KorString& name, eDepth depth) {
    if (depth == eDepth::kAllThatUsed)
        return IndependentCopy(databases()).copy(row, name);
    const auto record = databases().here()->table(row.table).rows().copyOf(find(row));
    record->name = name;
    return databases().append(row.table, *record) == WriteResult::kWritten ? record->key : 0;
}

} // namespace

bool isMade(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->namePrompt != 0;
}

eTableType groupsOf(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->isFiled() ? KorDSMFamilies::of(family->group)->table : kNoTable;
}

Outcome create(SourceId source, eTableType table, const KorString& newName, std::int32_t group) {
    const KorDSNRequest request(source.dsn, source.index);
    const KorString name = newName.trimmed();
    if (const KorString why = whyNotNamed(source, table, name, 0); !why.isEmpty())
        return refused(why);
    return inOneStep(name, table, [&] { return append(*KorDSMFamilies::of(table), name, group); });
}

Outcome copy(SourceId source, RowRef row, const KorString& newName, eDepth depth) {
    const KorDSNRequest request(source.dsn, source.index);
    const KorString name = newName.trimmed();
    if (const KorString why = whyNotNamed(source, row.table, name, 0); !why.isEmpty())
        return refused(why);
    const KorString original = find(row)->name;
    StructDetailMaster master;
    if (needsMaster(row.table) && !readMaster(row, master))
        return refused(ItemCommandParts::label(kNoMaster, original));
    Outcome outcome = inOneStep(ItemCommandParts::label(kCopying, original), row.table, [&] {
        const std::int32_t key = appendCopy(row, name, depth);
        const bool done =
            key != 0 && (!needsMaster(row.table) || appendMaster(master, *find({row.table, key})));
        return done ? key : 0;
    });
    if (outcome.isFailed() && outcome.error.empty())
        outcome.error = whyNotCopied(*databases().here(), row);
    return outcome;
}

Outcome copyInto(SourceId to, SourceId from, RowRef row, const KorString& newName, ImportReport& report) {
    const KorDSNRequest request(to.dsn, to.index);
    const KorString name = newName.trimmed();
    if (const KorString why = whyNotNamed(to, row.table, name, 0); !why.isEmpty())
        return refused(why);
    using Exports = KorODBCDetailStyleExports;
    const int result = Exports::importDetail(row.table, KorOdbcKey(row.key), from.dsn, from.index, to.dsn,
                                             to.index, &report, name);
    if (result == Exports::kDone)
        return stored(WriteResult::kWritten,
                      {row.table, databases().here()->table(row.table).find(name)->key});
    KorString why;
    Exports::GetErrorMessage(why, result);
    return refused(why);
}

namespace {

WriteResult writeName(RowRef row, const KorString& name) {
    return KorDSMGuardedWrite::setAttributeValue(row.table, KorOdbcKey(row.key), kNameColumn, name);
}

} // namespace

Outcome rename(SourceId source, RowRef row, const KorString& newName) {
    const KorDSNRequest request(source.dsn, source.index);
    const KorString name = newName.trimmed();
    if (const KorString why = whyNotNamed(source, row.table, name, row.key); !why.isEmpty())
        return refused(why);
    const KorString before = find(row)->name;
    if (name == before)
        return stored(WriteResult::kUnchanged, row);
    PendingGroup group(ItemCommandParts::label(kRenaming, before));
    StructDetailMaster master;
    WriteResult written = writeName(row, name);
    if (written.isStored() && readMaster(row, master))
        written = writeName({kTableDetailMaster, master.key}, name);
    if (!written.isStored())
        group.takeBack();
    Outcome outcome = stored(written.kind, row);
    outcome.error = std::move(written.error);
    return outcome;
}

namespace {

bool isListing(const Referrer& referrer) {
    return referrer.table->type == kTableViewRequestCategory;
}

// What forbids to delete the row of the current source.
Outcome whyKept(SourceId source, RowRef row) {
    Outcome outcome;
    if (!databases().users(row.table, KorOdbcKey(row.key)).empty())
        outcome.users = KorDSMWhereUsed::usagesOf(source, row);
    for (const Referrer& referrer : databases().here()->referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kFiledUnder && !isListing(referrer))
            outcome.filed.push_back(find({referrer.table->type, referrer.key})->name);
    if (!outcome.users.empty())
        outcome.error = KorDSMItemCommands::inUseText().toStdString();
    else if (!outcome.filed.empty())
        outcome.error =
            KorString::format(
                translated("\"%s\" is not empty; file what it holds elsewhere, or delete that first."),
                {find(row)->name})
                .toStdString();
    return outcome;
}

std::vector<RowRef> rowsThatGo(RowRef row) {
    std::vector<RowRef> rows;
    for (const Referrer& referrer : databases().here()->referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kIdentifies ||
            (referrer.column->role == eReferenceRole::kFiledUnder && isListing(referrer)))
            rows.push_back({referrer.table->type, referrer.key});
    rows.push_back(row);
    return rows;
}

} // namespace

Outcome remove(SourceId source, RowRef row) {
    const KorDSNRequest request(source.dsn, source.index);
    KorString why = KorDSMItemCommands::whyNotWritable(source);
    if (why.isEmpty())
        why = ItemCommandParts::whyIncomplete();
    if (!why.isEmpty())
        return refused(why);
    if (Outcome kept = whyKept(source, row); !kept.error.empty())
        return kept;
    return inOneStep(ItemCommandParts::label(kDeleting, find(row)->name), row.table, [&] {
        const bool done = std::ranges::all_of(rowsThatGo(row), [](RowRef each) {
            return databases().remove(each.table, KorOdbcKey(each.key)) == WriteResult::kWritten;
        });
        return done ? row.key : 0;
    });
}

} // namespace KorDSMRecordCommands
