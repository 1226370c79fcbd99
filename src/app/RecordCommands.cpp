#include "app/ChangeReport.h"
#include "app/Commands.h"
#include "app/Console.h"
#include "app/DidYouMean.h"
#include "app/EntryList.h"
#include "app/ReadProblems.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "data/RowClosure.h"
#include "data/ScopedSource.h"
#include "data/exchange/ExchangeReport.h"
#include "session/KorDSMDeepCopy.h"
#include "session/KorDSMRecordCommands.h"

#include <QJsonArray>

#include <algorithm>

// Records that are made, copied, renamed and deleted.

namespace {

using Outcome = KorDSMRecordCommands::Outcome;

KorString sentence(const char* pattern, RowRef row, const KorString& name, const KorString& more = {}) {
    return KorString::format(translated(pattern), {findTable(row.table)->rowName(), name, more});
}

KorString nameOf(SourceId source, RowRef row) {
    return StyleDatabases::current().source(source)->table(row.table).find(KorOdbcKey(row.key))->name;
}

// Why a record cannot be made or deleted on its own: empty where it can.
KorString whyNotOnItsOwn(const TableSchema& table) {
    return belongsToOthers(table)
               ? KorString::format(
                     translated("A record of the kind \"%s\" belongs to another one; \"detailstyles "
                                "entry\" changes the parts of records."),
                     {table.kindName()})
               : KorString();
}

// Finds a record of its own that is to be changed.
FoundRow find(const RowOptions& options) {
    FoundRow found = RowChoice::findToChange(options);
    const KorString why = found ? whyNotOnItsOwn(*found.value.table) : KorString();
    return why.isEmpty() ? found : FoundRow(Result<>::failure(why), kExitUsage);
}

// Finds one open source by its name, and reads it whole.
Result<SourceId> findSource(const std::string& name) {
    const Result<std::vector<SourceId>> sources = SourceChoice::choose(name.empty() ? "user" : name);
    if (!sources)
        return static_cast<const Result<>&>(sources);
    const SourceId source = sources.value.front();
    if (Result<> whole = StyleDatabases::current().readWhole(source); !whole)
        return whole;
    return source;
}

// The same, and tells the user why not.
Result<SourceId> findSourceOrTell(const std::string& name) {
    Result<SourceId> source = findSource(name);
    complainOfReading();
    if (!source)
        complainUnlessTold(KorString(source.error));
    return source;
}

KorString kindsThatAreMade() {
    KorString kinds;
    for (const TableSchema& table : allTables())
        if (KorDSMRecordCommands::isMade(table.type))
            kinds = kinds + (kinds.isEmpty() ? "" : ", ") + table.kindName();
    return kinds;
}

// The key of the group that NAME --in means, 0 for none.
Result<std::int32_t> groupKey(const TableSchema& table, const std::string& name) {
    const eTableType type = KorDSMRecordCommands::groupsOf(table.type);
    if (type == kNoTable)
        return 0;
    const TableSchema& groups = *findTable(type);
    const StyleTable& rows = StyleDatabases::current().here()->table(type);
    const std::vector<KorString> names = RowChoice::namesIn(rows);
    const StructRecord* group = rows.find(KorString(name));
    if (group)
        return group->key;
    return Result<>::failure(
        !name.empty()
            ? KorString::format(translated("There is no %s named \"%s\"."), {groups.rowName(), name}) +
                  didYouMean(name, names)
        : names.empty()
            ? KorString::format(translated("The new %s has to be filed, and there is no %s; make one by "
                                           "\"detailstyles new %s NAME\", and name it with --in."),
                                {table.rowName(), groups.rowName(), groups.kindName()})
            : KorString::format(
                  translated("Say with --in where the new %s is to be filed: the %s is one of %s."),
                  {table.rowName(), groups.rowName(), RowChoice::listOf(names)}));
}

// Lists a record in a category that is listed in several, such as a view. An error says why not.
KorString listIn(SourceId source, RowRef row, const std::string& category) {
    const RowChoice record{source, findTable(row.table), KorOdbcKey(row.key)};
    const std::unique_ptr<EntryList> list = EntryList::of(record);
    if (!list || list->columns().front()->role != eReferenceRole::kFiledUnder)
        return KorString::format(translated("Records of the kind \"%s\" are filed nowhere; leave out --in."),
                                 {record.table->kindName()});
    return list->add(0, KorString(category));
}

struct GivenValue {
    const Column* column;
    std::string text;
};

// The values that are given as COLUMN=VALUE.
Result<std::vector<GivenValue>> readValues(const TableSchema& table, const std::vector<std::string>& texts) {
    std::vector<const Column*> columns = TypedValue::columnsOf(table);
    std::erase(columns, table.column(1)); // the name was given
    std::vector<GivenValue> values;
    for (const std::string& text : texts) {
        const auto mark = text.find('=');
        if (mark == std::string::npos)
            return Result<>::failure(
                KorString::format(translated("\"%s\" is no COLUMN=VALUE, such as scale=1:10."), {text}));
        const Result<const Column*> column = TypedValue::findColumn(table, columns, text.substr(0, mark));
        if (!column)
            return static_cast<const Result<>&>(column);
        if (std::ranges::find(values, column.value, &GivenValue::column) != values.end())
            return Result<>::failure(TypedValue::givenTwice(*column.value));
        values.push_back({column.value, text.substr(mark + 1)});
    }
    return values;
}

// Writes a value into the new row. An error says why not.
KorString setValue(RowRef row, const GivenValue& value) {
    const Column* column = value.column;
    const Result<CellValue> typed = TypedValue::read(row, *column, value.text);
    if (!typed)
        return KorString(typed.error);
    StyleDatabases& databases = StyleDatabases::current();
    const StructRecord* record = databases.here()->table(row.table).find(KorOdbcKey(row.key));
    const bool isStored = column->read(record) == typed.value ||
                          databases.setCell(row.table, KorOdbcKey(row.key), column->number, typed.value) ==
                              WriteResult::kWritten;
    return isStored ? KorString()
                    : KorString::format(translated("The value could not be written to column \"%s\"."),
                                        {column->name});
}

} // namespace

int newCommand(DataFolder&, const NewOptions& options) {
    const Result<const TableSchema*> kind = RowChoice::findKind(options.row.kind);
    if (!kind)
        return ChangeReport::refuse(KorString(kind.error), kExitUsage);
    const TableSchema& table = *kind.value;
    if (!KorDSMRecordCommands::isMade(table.type))
        return ChangeReport::refuse(
            KorString::format(
                translated(
                    "Records of the kind \"%s\" are not made here; the kinds that are made here are %s."),
                {table.kindName(), kindsThatAreMade()}),
            kExitUsage);
    const Result<std::vector<GivenValue>> values = readValues(table, options.values);
    if (!values)
        return ChangeReport::refuse(KorString(values.error), kExitUsage);
    const Result<SourceId> found = findSourceOrTell(options.row.source);
    if (!found)
        return kExitFailed;
    const SourceId source = found.value;
    const ScopedSource request(source);
    const Result<std::int32_t> group = groupKey(table, options.group);
    if (!group)
        return ChangeReport::refuse(KorString(group.error));
    ChangeReport report("new", options.how);
    const Outcome made = KorDSMRecordCommands::create(source, table.type, options.row.name, group.value);
    if (!made.isStored())
        return ChangeReport::refuse(made.error);
    KorString error;
    if (!options.group.empty() && KorDSMRecordCommands::groupsOf(table.type) == kNoTable)
        error = listIn(source, made.row, options.group);
    if (!error.isEmpty())
        return ChangeReport::refuse(error);
    for (const GivenValue& value : values.value)
        if (error = setValue(made.row, value); !error.isEmpty())
            return ChangeReport::refuse(error);
    report.isAbout(source, made.row);
    report.say(sentence(translatable("Made the %s \"%s\" (key %s)."), made.row, nameOf(source, made.row),
                        KorString::number(made.row.key)));
    return report.finish();
}

namespace {

// What could not keep its name in the target.
void tellRenamed(const ImportReport& brought, ChangeReport& report) {
    QJsonArray renamed;
    for (const ImportReport::Renamed& each : brought.renamed) {
        report.say(KorString::format(translated("The %s \"%s\" came in as \"%s\"."),
                                     {findTable(each.table)->rowName(), each.from, each.to}));
        renamed.append(QJsonObject{{"kind", Console::text(findTable(each.table)->kindName())},
                                   {"from", Console::text(each.from)},
                                   {"to", Console::text(each.to)}});
    }
    report.add("renamed", renamed);
}

} // namespace

int copyCommand(DataFolder&, const CopyOptions& options) {
    const FoundRow found = RowChoice::findInOneState(options.row);
    if (found.tell() != kExitDone)
        return found.code;
    const RowChoice& row = found.value;
    if (const KorString why = whyNotOnItsOwn(*row.table); !why.isEmpty())
        return ChangeReport::refuse(why, kExitUsage);
    const Result<SourceId> target = findSourceOrTell(options.to);
    if (!target)
        return kExitFailed;
    const SourceId to = target.value;
    ChangeReport report("copy", options.how);
    ImportReport brought;
    const auto depth =
        options.deep ? KorDSMRecordCommands::eDepth::kAllThatUsed : KorDSMRecordCommands::eDepth::kRecord;
    const KorString name = row.record()->name;
    const Outcome copied =
        to == row.source
            ? KorDSMRecordCommands::copy(to, row.ref(), options.newName, depth)
            : KorDSMRecordCommands::copyInto(to, row.source, row.ref(), options.newName, brought);
    if (!copied.isStored())
        return ChangeReport::refuse(copied.error);
    report.isAbout(to, copied.row);
    report.say(KorString::format(
        translated("Copied the %s \"%s\" as \"%s\" (key %s)."),
        {row.table->rowName(), name, nameOf(to, copied.row), KorString::number(copied.row.key)}));
    report.sayCompanions();
    tellRenamed(brought, report);
    for (const std::string& left : brought.leftOut)
        Console::complain(left);
    if (const KorString note = KorDSMDeepCopy::noteOf({.from = row.source, .to = to, .records = {row.ref()}});
        !note.isEmpty())
        Console::complain(note);
    return report.finish();
}

int renameCommand(DataFolder&, const RenameOptions& options) {
    const FoundRow found = find(options.row);
    if (found.tell() != kExitDone)
        return found.code;
    const RowChoice& row = found.value;
    const ScopedSource request(row.source);
    if (const KorString shared = options.how.shared ? KorString() : row.whyShared(); !shared.isEmpty())
        return ChangeReport::refuse(shared);
    ChangeReport report("rename", options.how);
    const KorString before = row.record()->name;
    const Outcome renamed = KorDSMRecordCommands::rename(row.source, row.ref(), options.newName);
    if (!renamed.isStored())
        return ChangeReport::refuse(renamed.error);
    report.isAbout(row.source, row.ref());
    report.say(
        sentence(translatable("Renamed the %s \"%s\" to \"%s\"."), row.ref(), before, row.record()->name));
    return report.finish();
}

namespace {

// Each user on a line of its own, as the editor lists them.
int refuseToDelete(const Outcome& refused) {
    ChangeReport::refuse(KorString(refused.error).replaced("\n", " "));
    for (const KorDSMUsage& user : refused.users)
        Console::complain(KorString::format(translated("%s \"%s\" uses it as \"%s\" (%s)."),
                                            {user.kind, user.name, user.as, user.database}));
    if (!refused.filed.empty())
        Console::complain(KorString::format(translated("It holds %s."), {RowChoice::listOf(refused.filed)}));
    return kExitFailed;
}

} // namespace

int deleteCommand(DataFolder&, const DeleteOptions& options) {
    const FoundRow found = find(options.row);
    if (found.tell() != kExitDone)
        return found.code;
    const RowChoice& row = found.value;
    ChangeReport report("delete", options.how);
    report.isAbout(row.source, row.ref());
    const KorString name = row.record()->name;
    const Outcome removed = KorDSMRecordCommands::remove(row.source, row.ref());
    if (!removed.isStored())
        return refuseToDelete(removed);
    report.say(sentence(translatable("Deleted the %s \"%s\"."), row.ref(), name));
    return report.finish();
}
