#include "app/RowChoice.h"

#include "app/DidYouMean.h"
#include "app/ReadProblems.h"
#include "base/Translation.h"
#include "data/RowUsers.h"
#include "records/OwnWords.h"
#include "services/OtherWordings.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>

const StructRecord* RowChoice::record() const {
    return StyleDatabases::current().source(source)->table(table->type).find(key);
}

std::vector<FilingCell> RowChoice::filingCells() const {
    std::vector<FilingCell> cells;
    for (const Referrer& referrer : StyleDatabases::current().source(source)->referrersOf(table->type, key))
        if (referrer.column->role == eReferenceRole::kIdentifies)
            for (const Column& column : referrer.table->columns)
                if (column.role == eReferenceRole::kFiledUnder)
                    cells.push_back({{source, referrer.table, KorOdbcKey(referrer.key)}, &column});
    return cells;
}

namespace {

// Those whom a change reaches, each once; of many only the first.
KorString usersOf(SourceId source, RowRef row) {
    constexpr std::size_t kMostTold = 6;
    std::vector<KorString> users;
    for (const KorDSMUsage& usage : KorDSMWhereUsed::usagesUpToSharing(source, row)) {
        if (users.size() > kMostTold)
            break;
        if (KorString user = KorString::format(translated("%s \"%s\""), {usage.kind, usage.name});
            std::ranges::find(users, user) == users.end())
            users.push_back(std::move(user));
    }
    KorString list;
    for (std::size_t i = 0; i < std::min(users.size(), kMostTold); ++i)
        list = list + (i == 0 ? "" : ", ") + users[i];
    return users.size() > kMostTold ? list + ", ..." : list;
}

} // namespace

KorString RowChoice::whyShared() const {
    StyleSource& here = *StyleDatabases::current().here();
    const auto whole = sharedWhole(StyleDatabases::current(), ref());
    if (!whole)
        return {};
    const KorString kind = findTable(whole->table)->rowName();
    const KorString name = here.table(whole->table).find(KorOdbcKey(whole->key))->name;
    return here.complete() ? KorString::format(
                                 translated("A change of the %s \"%s\" reaches %s; give --shared if that is "
                                            "meant."),
                                 {kind, name, usersOf(source, *whole)})
                           : KorString::format(
                                 translated("\"%s\" could not be read whole, so it cannot be told what else "
                                            "uses the %s \"%s\" and would change; give --shared to change it "
                                            "all the same."),
                                 {here.store().name(), kind, name});
}

namespace {

// However it is written.
KorString plainKind(const KorString& kind) {
    return kind.lowered().replaced("-", " ").replaced("_", " ").trimmed();
}

// The table whose rows are called so in some language.
const TableSchema* tableCalled(const KorString& kind) {
    const OtherWordings otherWordings;
    const auto isMeant = [wanted = plainKind(kind)](const KorString& word) {
        return plainKind(word) == wanted;
    };
    for (const TableSchema& table : allTables())
        if (isMeant(table.kindName()) || isMeant(KorDSMValueText::tableCaption(table)))
            return &table;
    for (const TableSchema& table : allTables())
        if (std::ranges::any_of(otherWordings.of(KorDSMValueText::tableCaption(table)), isMeant))
            return &table;
    return nullptr;
}

} // namespace

Result<const TableSchema*> RowChoice::findKind(const std::string& kind) {
    if (const TableSchema* table = findTable(std::string_view(kind)))
        return table;
    if (const TableSchema* table = tableCalled(kind))
        return table;
    std::vector<KorString> kinds;
    for (const TableSchema& each : allTables())
        kinds.emplace_back(each.kindName());
    for (const TableSchema& each : allTables())
        kinds.push_back(KorDSMValueText::tableCaption(each));
    return Result<>::failure(
        KorString::format(translated("There is no kind \"%s\"; \"detailstyles list --help\" names them all."),
                          {kind}) +
        didYouMean(kind, kinds));
}

namespace {

// Why it cannot be told that no row of the table has a name: empty when it can.
KorString whyNamesAreUnknown(StyleSource& source, const TableSchema& table, const KorString& name) {
    const bool known = std::ranges::none_of(source.problems(), [&](const ReadProblem& problem) {
        return !problem.kept && problem.table == &table && (!problem.column || problem.column->number == 1);
    });
    return known
               ? KorString()
               : KorString::format(translated("\"%s\" could not be read whole, so it cannot be told whether "
                                              "it holds a %s named \"%s\"."),
                                   {source.store().name(), table.rowName(), name});
}

KorString noneNamed(const TableSchema& table, const RowOptions& options) {
    const KorString missing = options.source.empty() ? SourceChoice::missing() : KorString();
    std::vector<KorString> names;
    for (const SourceId id : SourceChoice::choose(options.source).value)
        std::ranges::move(RowChoice::namesIn(StyleDatabases::current().source(id)->table(table.type)),
                          std::back_inserter(names));
    const KorString pattern =
        !options.source.empty() ? translated("There is no %s named \"%s\" in the source \"%s\".")
        : missing.isEmpty()     ? translated("There is no %s named \"%s\".")
        : missing == SourceChoice::nameOf(SourceId::standard()) // why was told
            ? translated("There is no %s named \"%s\" in the sources that can be used.")
            : translated("No %s named \"%s\" was found, but the source \"%s\", which may hold it, cannot be "
                         "used.");
    return KorString::format(pattern, {table.rowName(), options.name,
                                       options.source.empty() ? missing : KorString(options.source)}) +
           didYouMean(options.name, names);
}

} // namespace

std::vector<KorString> RowChoice::namesIn(const StyleTable& table) {
    std::vector<KorString> names;
    for (int i = 0; i < table.rows().size(); ++i)
        names.push_back(OwnWords::nameOf(table.schema().type, table.rows().at(i)));
    return names;
}

KorString RowChoice::listOf(const std::vector<KorString>& names) {
    constexpr std::size_t kMostTold = 20;
    KorString list;
    for (std::size_t i = 0; i < std::min(names.size(), kMostTold); ++i)
        list = list + (i == 0 ? "" : ", ") + KorString::format(translated("\"%s\""), {names[i]});
    return names.size() > kMostTold ? list + ", ..." : list;
}

namespace {

// A part is told from others of its name by what it is part of.
KorString keyWithWhole(StyleSource& source, RowRef row) {
    const KorString key = KorString::format("[%s]", {KorString::number(row.key)});
    const RowRef whole = wholeOf(source, row);
    if (whole == row)
        return KorString::format(translated("\"%s\""), {key});
    return KorString::format(translated("\"%s\" in \"%s\""),
                             {key, source.table(whole.table).find(KorOdbcKey(whole.key))->name});
}

} // namespace

KorString RowChoice::severalNamed(StyleSource& source, const StyleTable& table,
                                  const std::vector<std::int32_t>& keys) {
    constexpr std::size_t kMostTold = 8;
    if (keys.size() < 2)
        return {};
    KorString told;
    for (std::size_t i = 0; i < std::min(keys.size(), kMostTold); ++i)
        told = told + (i == 0 ? "" : ", ") + keyWithWhole(source, {table.schema().type, keys[i]});
    return KorString::format(
        translated("There is more than one %s named \"%s\"; give the key of the one that is "
                   "meant instead, which is one of %s."),
        {table.schema().rowName(), table.find(KorOdbcKey(keys.front()))->name,
         told + (keys.size() > kMostTold ? ", ..." : "")});
}

FoundRow RowChoice::find(const RowOptions& options) {
    const Result<const TableSchema*> kind = findKind(options.kind);
    if (!kind)
        return {kind, kExitUsage};
    const TableSchema& schema = *kind.value;
    Result<std::vector<SourceId>> sources = SourceChoice::choose(options.source);
    if (!sources)
        return {sources};
    std::ranges::stable_partition(sources.value, [](SourceId id) { return id == SourceId::user(); });
    for (const SourceId id : sources.value) {
        StyleSource& source = *StyleDatabases::current().source(id);
        if (const Result<> reading = source.readingOf(schema.type); !reading)
            return {reading};
        const StyleTable& table = source.table(schema.type);
        const std::vector<std::int32_t> keys = KorDSMValueText::keysNamed(table, options.name);
        if (const KorString several = severalNamed(source, table, keys); !several.isEmpty())
            return {Result<>::failure(several)};
        if (!keys.empty())
            return {RowChoice{id, &schema, KorOdbcKey(keys.front())}};
        if (const KorString unknown = whyNamesAreUnknown(source, schema, options.name); !unknown.isEmpty())
            return {Result<>::failure(unknown)};
    }
    return {Result<>::failure(noneNamed(schema, options))};
}

FoundRow RowChoice::findInOneState(const RowOptions& options) {
    const FoundRow found = find(options);
    if (!found)
        return found;
    const SourceId source = found.value.source;
    const KorString missing = options.source.empty() ? SourceChoice::missingBefore(source) : KorString();
    if (!missing.isEmpty())
        return {Result<>::failure(KorString::format(
            translated(
                "The source \"%s\", which is searched first, cannot be used, so nothing was done; mend "
                "that first, or name another source with --source."),
            {missing}))};
    if (const Result<> whole = StyleDatabases::current().readWhole(source); !whole)
        return {whole};
    return find(options); // reading the whole may have been reading anew
}

FoundRow RowChoice::findToChange(const RowOptions& options) {
    RowOptions wanted = options;
    if (wanted.source.empty())
        wanted.source = "user";
    return findInOneState(wanted);
}

eExitCode FoundRow::tell() const {
    complainOfReading();
    if (!ok())
        complainUnlessTold(KorString(error));
    return code;
}
