#include "session/KorDSMRecordCommands.h"

#include "base/KorAssert.h"
#include "base/Translation.h"
#include "data/IndependentCopy.h"
#include "data/WriteRefusal.h"
#include "data/exchange/MasterNumbers.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/KorDSNManager.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMItemWords.h"
#include "session/PendingGroup.h"

#include <algorithm>
#include <array>

namespace KorDSMRecordCommands {

using ItemCommandParts::needsMaster;
using ItemCommandParts::readMaster;

namespace {

constexpr int kTaken = 231;        // "There is one of this name already."
constexpr int kNameNeeded = 232;   // "A name is needed."
constexpr int kDeleting = 244;     // "deletion of "%s""
constexpr int kDeletingMany = 493; // "deletion of %s definitions"
constexpr int kCopying = 245;      // "copying of "%s""
constexpr int kCopyingMany = 590;  // "copying of %s definitions"
constexpr int kRenaming = 246;     // "renaming of "%s""
constexpr int kNoMaster = 494;     // ""%s" has no category any more, so it cannot be copied."
constexpr int kNameColumn = 1;

StyleDatabases& databases() {
    return StyleDatabases::current();
}

// The row of the current source; null when it is gone.
const StructRecord* find(RowRef row) {
    return databases().here()->table(row.table).find(KorOdbcKey(row.key));
}

// Announces a write that was made.
WriteResult announced(WriteResult result) {
    if (result == WriteResult::kWritten)
        KorDSMMainWindow::sendMessage(DsmDataChanged());
    return result;
}

// Control signs, those without a width, and those that turn the direction of what follows: what is read would
// not be what is there.
bool hasUnseenSigns(std::string_view name) {
    constexpr std::array<std::string_view, 14> kUnseen = {"\u200E", "\u200F", "\u202A", "\u202B", "\u202C",
                                                          "\u202D", "\u202E", "\u2066", "\u2067", "\u2068",
                                                          "\u2069", "\u200B", "\u2060", "\uFEFF"};
    return std::ranges::any_of(name, [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }) ||
           std::ranges::any_of(kUnseen,
                               [name](std::string_view sign) { return name.find(sign) != name.npos; });
}

// "[12]" means the record with the key 12, where a name is asked for.
bool isKeyInBrackets(std::string_view name) {
    return name.size() > 2 && name.front() == '[' && name.back() == ']' &&
           name.find_first_not_of("0123456789", 1) == name.size() - 1;
}

// Why a record of the source must not get the name; `exceptKey` is the row that may have it.
KorString whyNotNamed(SourceId source, eTableType table, const KorString& name, std::int32_t exceptKey) {
    if (KorString readOnly = KorDSMItemCommands::whyOnlyReadable(source); !readOnly.isEmpty())
        return readOnly;
    if (name.isEmpty())
        return Prompts::dsm(kNameNeeded);
    if (hasUnseenSigns(name.view()))
        return translated("A name is one line of signs that can be seen; leave out line breaks and tabs.");
    if (isKeyInBrackets(name.view()))
        return KorString::format(translated("\"%s\" would be taken for a key; choose another name."), {name});
    const StructRecord* present = databases().source(source)->table(table).find(name);
    return present && present->key != exceptKey ? Prompts::dsm(kTaken) : KorString();
}

Outcome outcomeOf(WriteResult result, RowRef row) {
    Outcome outcome;
    static_cast<WriteResult&>(outcome) = std::move(result);
    outcome.row = row;
    return outcome;
}

Outcome refused(const KorString& why) {
    return outcomeOf({WriteResult::kFailed, why.toStdString()}, {});
}

// Does `write` as one step of undo, or leaves nothing behind. `write` is given the row, and puts the key of a
// new one into it.
template <typename Write>
Outcome inOneStep(const KorString& label, RowRef row, Write write) {
    PendingGroup group(label);
    WriteResult result = write(row);
    if (!result.isStored())
        group.takeBack();
    return outcomeOf(std::move(result), row);
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

WriteResult appendMaster(StructDetailMaster master, RowRef style) {
    master.key = 0;
    master.name = find(style)->name;
    master.styleKey = style.key;
    master.number = freeMasterNumber(*databases().here(), master);
    KorOdbcMan::m_structDetailMaster = master;
    return announced(databases().append(kTableDetailMaster, KorOdbcMan::m_structDetailMaster));
}

// Views are listed in categories by rows of their own.
WriteResult listUnder(RowRef view, std::int32_t category) {
    if (!find({kTableBaseCategory, category}))
        return WriteRefusal::noRow();
    StructDetViewRequestCategory listing;
    listing.name = find(view)->name;
    listing.viewRequestKey = view.key;
    listing.categoryKey = category;
    return announced(databases().append(kTableViewRequestCategory, listing));
}

WriteResult append(RowRef& row, const KorString& name, std::int32_t group) {
    const auto record = databases().here()->table(row.table).rows().copyOf(nullptr);
    record->name = name;
    if (const Column* filing = KorDSMFamilies::filingColumn(row.table))
        filing->integerIn(record.get()) = group;
    placeLast(*KorDSMFamilies::of(row.table), *record);
    WriteResult result = announced(databases().append(row.table, *record));
    row.key = record->key;
    if (result.isStored() && row.table == kTableViewRequest && group != 0)
        return listUnder(row, group);
    if (!result.isStored() || !needsMaster(row.table))
        return result;
    const auto* category = static_cast<const StructDetBaseCategory*>(find({kTableBaseCategory, group}));
    if (!category)
        return WriteRefusal::noRow();
    StructDetailMaster master;
    master.categoryKey = group;
    master.detailKey = category->number;
    master.number = 1;
    return appendMaster(master, row);
}

// The layer's current record of the table is the copy afterwards.
WriteResult appendCopy(RowRef& row, const KorString& name, eDepth depth) {
    const RowRef original = row;
    if (depth == eDepth::kAllThatUsed)
        return announced(IndependentCopy(databases()).copy(original, name, row.key));
    StructRecord& current = KorOdbcMan::currentRecord(row.table);
    databases().here()->table(row.table).rows().assign(current, *find(original));
    current.setRunBezeichnung(name);
    WriteResult result = announced(databases().append(row.table, current));
    row.key = current.key;
    return result;
}

WriteResult appendWhole(RowRef& row, const KorString& name, const StructDetailMaster& master, eDepth depth) {
    WriteResult result = appendCopy(row, name, depth);
    return result.isStored() && needsMaster(row.table) ? appendMaster(master, row) : result;
}

} // namespace

bool isMade(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->namePrompt != 0;
}

KorDSMDefines::eItemType itemTypeOf(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family ? family->type : KorDSMDefines::kNoType;
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
    return inOneStep(name, {table, 0}, [&](RowRef& row) { return append(row, name, group); });
}

Outcome copy(SourceId source, RowRef row, const KorString& newName, eDepth depth) {
    const KorDSNRequest request(source.dsn, source.index);
    const KorString name = newName.trimmed();
    KorString why = whyNotNamed(source, row.table, name, 0);
    if (why.isEmpty())
        why = ItemCommandParts::whyIncomplete();
    if (!why.isEmpty())
        return refused(why);
    const StructRecord* original = find(row);
    if (!original)
        return outcomeOf(WriteRefusal::noRow(), row);
    StructDetailMaster master;
    if (needsMaster(row.table) && !readMaster(row, master))
        return refused(ItemCommandParts::label(kNoMaster, original->name));
    return inOneStep(ItemCommandParts::label(kCopying, original->name), row,
                     [&](RowRef& copied) { return appendWhole(copied, name, master, depth); });
}

namespace {

KorString whyNotChanged(SourceId source) {
    const KorString why = KorDSMItemCommands::whyOnlyReadable(source);
    return why.isEmpty() ? ItemCommandParts::whyIncomplete() : why;
}

// The row becomes that of its copy, under the name that the dialog for one copy proposes.
WriteResult appendNamedCopy(RowRef& row) {
    const StructRecord* original = find(row);
    StructDetailMaster master;
    if (!original)
        return WriteRefusal::noRow();
    if (needsMaster(row.table) && !readMaster(row, master))
        return {WriteResult::kFailed, ItemCommandParts::label(kNoMaster, original->name).toStdString()};
    const auto naming = KorDSMNaming::of(itemTypeOf(row.table), original->name, true);
    return naming ? appendWhole(row, naming->name, master, eDepth::kRecord) : WriteRefusal::noRow();
}

} // namespace

Outcome copyEach(SourceId source, std::vector<RowRef>& rows) {
    const KorDSNRequest request(source.dsn, source.index);
    if (const KorString why = whyNotChanged(source); !why.isEmpty())
        return refused(why);
    const auto count = KorString::number(static_cast<std::int64_t>(rows.size()));
    return inOneStep(ItemCommandParts::label(kCopyingMany, count), rows.front(), [&](RowRef&) {
        WriteResult result;
        for (RowRef& row : rows)
            if (result.isStored())
                result = appendNamedCopy(row);
        return result;
    });
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
        return outcomeOf({}, {row.table, databases().here()->table(row.table).find(name)->key});
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
    const StructRecord* record = find(row);
    if (!record)
        return outcomeOf(WriteRefusal::noRow(), row);
    if (name == record->name)
        return outcomeOf({WriteResult::kUnchanged}, row);
    return inOneStep(ItemCommandParts::label(kRenaming, record->name), row, [&](RowRef& renamed) {
        StructDetailMaster master;
        WriteResult result = writeName(renamed, name);
        return result.isStored() && readMaster(renamed, master)
                   ? writeName({kTableDetailMaster, master.key}, name)
                   : result;
    });
}

namespace {

bool isListing(const Referrer& referrer) {
    return referrer.table->type == kTableViewRequestCategory;
}

// What is filed under a row of the current source, for which views count as listed only.
std::vector<KorString> filedUnder(RowRef row) {
    std::vector<KorString> names;
    for (const Referrer& referrer : databases().here()->referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kFiledUnder && !isListing(referrer))
            names.push_back(find({referrer.table->type, referrer.key})->name);
    return names;
}

// What forbids to delete the row of the current source; an outcome without an error when nothing does.
Outcome whyKept(SourceId source, RowRef row, eFiled filed) {
    Outcome outcome;
    const StructRecord* record = find(row);
    if (!record)
        return outcomeOf(WriteRefusal::noRow(), row);
    outcome.users = KorDSMWhereUsed::usagesHere(source, row);
    if (filed == eFiled::kForbids)
        outcome.filed = filedUnder(row);
    if (!outcome.users.empty())
        outcome.error = KorDSMItemCommands::inUseText().toStdString();
    else if (!outcome.filed.empty())
        outcome.error =
            KorString::format(
                translated("\"%s\" is not empty; file what it holds elsewhere, or delete that first."),
                {record->name})
                .toStdString();
    return outcome;
}

WriteResult removeWithPlaces(SourceId source, RowRef row) {
    std::vector<RowRef> going = listingsIn(source, row);
    going.push_back(row);
    for (const Referrer& referrer : databases().here()->referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == eReferenceRole::kIdentifies)
            going.push_back({referrer.table->type, referrer.key});
    WriteResult result;
    for (const RowRef& each : going)
        if (result.isStored())
            result = announced(databases().remove(each.table, KorOdbcKey(each.key)));
    KorAssert::check(result.isStored(), "result > 0");
    return result;
}

} // namespace

std::vector<RowRef> listingsIn(SourceId source, RowRef category) {
    std::vector<RowRef> rows;
    for (const Referrer& referrer :
         databases().source(source)->referrersOf(category.table, KorOdbcKey(category.key)))
        if (referrer.column->role == eReferenceRole::kFiledUnder && isListing(referrer))
            rows.push_back({referrer.table->type, referrer.key});
    return rows;
}

Outcome remove(SourceId source, const std::vector<RowRef>& rows, eFiled filed,
               const std::vector<RowRef>& also) {
    const KorDSNRequest request(source.dsn, source.index);
    if (const KorString why = whyNotChanged(source); !why.isEmpty())
        return refused(why);
    for (const RowRef& row : rows)
        if (Outcome kept = whyKept(source, row, filed); !kept.error.empty())
            return kept;
    const auto count = static_cast<std::int64_t>(rows.size() + also.size());
    const KorString label = count == 1 ? ItemCommandParts::label(kDeleting, find(rows.front())->name)
                                       : ItemCommandParts::label(kDeletingMany, KorString::number(count));
    return inOneStep(label, rows.front(), [&](RowRef&) {
        WriteResult result;
        for (const RowRef& row : rows)
            if (result.isStored())
                result = removeWithPlaces(source, row);
        for (const RowRef& row : also)
            if (result.isStored() && find(row) && KorDSMWhereUsed::usagesHere(source, row).empty())
                result = removeWithPlaces(source, row);
        return result;
    });
}

} // namespace KorDSMRecordCommands
