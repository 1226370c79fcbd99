#include "session/KorDSMDeepCopy.h"

#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "data/text/TextFields.h"
#include "model/CurrentUnits.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "operations/KorDSNManager.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "services/Prompts.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>
#include <array>
#include <set>

namespace KorDSMDeepCopy {

namespace {

constexpr int kCopying = 245;     // "copying of "%s""
constexpr int kCopyingMany = 590; // "copying of %s definitions"
constexpr int kHead = 602;        // ""%s" comes with all that it uses from %s."
constexpr int kHeadMany = 603;
constexpr int kTitleHeight =
    981; // "Titles without a text size of their own are %s high there, and %s in %s."
constexpr int kWithoutCategory = 33728; // "UPS"

// What becomes of a row, and how many there are of it.
struct FateWords {
    int one;
    int counted;
};
constexpr std::array<FateWords, 5> kFates = {{{591, 596}, {592, 597}, {593, 598}, {594, 599}, {595, 600}}};

const FateWords& wordsOf(ImportReport::Row::eFate fate) {
    return kFates.at(static_cast<std::size_t>(fate));
}

// The records that are filed in a group, or all that have a place in a section of the source.
std::vector<RowRef> membersOf(StyleSource& source, const KorDSMFamily& family, const RowRef* group) {
    std::vector<RowRef> members;
    if (!group) {
        const RowArray& rows = source.table(family.table).rows();
        for (int i = 0; i < rows.size(); ++i)
            members.push_back({family.table, rows.at(i).key});
        return members;
    }
    for (const Referrer& referrer : source.referrersOf(group->table, KorOdbcKey(group->key))) {
        const StructRecord* row = source.table(referrer.table->type).find(KorOdbcKey(referrer.key));
        if (referrer.table->type == kTableDetailMaster)
            members.push_back({kTableDetailStyle, static_cast<const StructDetailMaster*>(row)->styleKey});
        else if (referrer.table->type == family.table)
            members.push_back({family.table, referrer.key});
    }
    return members;
}

// The name of the one record, or how many there are.
KorString subjectOf(const Wish& wish) {
    if (wish.records.size() != 1)
        return KorString::number(static_cast<std::int64_t>(wish.records.size()));
    const RowRef row = wish.records.front();
    StyleSource* from = StyleDatabases::current().source(wish.from);
    const StructRecord* record = from ? from->table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    return KorDSMValueText::shortName(record ? record->name : KorString());
}

// What titles without a size of their own are drawn with, in millimetres; 0 where the source does not say it.
double titleHeight(SourceId id) {
    StyleSource* source = StyleDatabases::current().source(id);
    double height = 0;
    if (!source)
        return height;
    const RowArray& rows = source->table(kTableCreationDefault).rows();
    for (int i = 0; i < rows.size(); ++i) {
        const auto& row = static_cast<const StructCreationDefault&>(rows.at(i));
        if (row.family == 40 && row.name == "TitleHeight")
            height = TextFields::toReal(row.value.view()).value_or(0);
    }
    return height;
}

Outcome run(const Wish& wish, bool isTrial) {
    Outcome outcome;
    if (wish.records.empty())
        return outcome;
    const KorDSMBusy busy;
    const KorString label =
        !wish.label.isEmpty()
            ? wish.label
            : KorString::format(Prompts::dsm(wish.records.size() == 1 ? kCopying : kCopyingMany),
                                {subjectOf(wish)});
    const std::size_t before = StyleDatabases::current().pending().steps().size();
    const int result = KorODBCDetailStyleExports::copyRows(
        {wish.from, wish.to, wish.records, label, wish.namesakes, wish.single, wish.group, isTrial},
        outcome.report);
    outcome.done = result == KorODBCDetailStyleExports::kDone;
    if (!outcome.done)
        KorODBCDetailStyleExports::GetErrorMessage(outcome.error, result);
    if (outcome.done && !isTrial) {
        outcome.changes = KorDSMUndo::changesSince(before);
        if (!outcome.changes.empty())
            KorDSMMainWindow::sendMessage(DsmDataChanged());
    }
    return outcome;
}

} // namespace

std::vector<SourceId> targetsFor(SourceId from) {
    StyleDatabases& databases = StyleDatabases::current();
    std::vector<SourceId> targets = databases.sources();
    std::erase_if(targets, [&](SourceId id) {
        return id == from || id == SourceId::exchange() || !databases.isEditable(id);
    });
    std::ranges::stable_partition(targets, [](SourceId id) { return id == SourceId::user(); });
    return targets;
}

std::vector<SourceId> originsFor(SourceId to) {
    std::vector<SourceId> origins = StyleDatabases::current().sources();
    std::erase_if(origins, [to](SourceId id) { return id == to || id == SourceId::exchange(); });
    return origins;
}

const KorDSMSection* sectionOf(KorDSMDatabaseItem& item) {
    const KorDsmSectionItem* section = KorDSMItemPath::sectionOf(item);
    return section ? &KorDSMFamilies::section(section->section()) : nullptr;
}

std::vector<Choice> choicesOf(SourceId id, const KorDSMSection& section) {
    StyleSource* source = StyleDatabases::current().source(id);
    std::vector<Choice> choices;
    if (!source)
        return choices;
    const KorDSMFamily& family = *KorDSMFamilies::of(section.family);
    const RowArray& groups = source->table(KorDSMFamilies::of(family.group)->table).rows();
    std::set<std::int32_t> filed;
    for (int i = 0; i < groups.size(); ++i) {
        const RowRef group{KorDSMFamilies::of(family.group)->table, groups.at(i).key};
        for (const RowRef& row : membersOf(*source, family, &group))
            if (const StructRecord* record = source->table(row.table).find(KorOdbcKey(row.key));
                record && filed.insert(row.key).second)
                choices.push_back({row, record->name, groups.at(i).name});
    }
    std::ranges::stable_sort(choices, [](const Choice& a, const Choice& b) {
        return a.group == b.group ? KorDetStructureUtilities::isNameBefore(a.name, b.name)
                                  : KorDetStructureUtilities::isNameBefore(a.group, b.group);
    });
    for (const RowRef& row : membersOf(*source, family, nullptr))
        if (!filed.contains(row.key))
            choices.push_back({row, source->table(row.table).find(KorOdbcKey(row.key))->name,
                               Prompts::ups(kWithoutCategory)});
    return choices;
}

std::vector<RowRef> recordsOf(KorDSMDatabaseItem& item) {
    StyleSource* source = StyleDatabases::current().source(KorDSMItemSource::sourceOf(&item));
    if (!source)
        return {};
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    if (item.record() && family && !family->isGroup())
        return belongsToOthers(*findTable(item.tableType()))
                   ? std::vector<RowRef>()
                   : std::vector<RowRef>{{item.tableType(), item.recordKey()}};
    std::vector<RowRef> members;
    if (family && family->isGroup()) {
        const RowRef group{item.tableType(), item.recordKey()};
        if (const KorDSMFamily* filed = KorDSMFamilies::filedUnder(*family))
            members = membersOf(*source, *filed, &group);
    } else if (const KorDSMSection* section = sectionOf(item)) {
        members = membersOf(*source, *KorDSMFamilies::of(section->family), nullptr);
    }
    std::ranges::stable_sort(members, KorDetStructureUtilities::isNameBefore, [&](const RowRef& row) {
        return source->table(row.table).find(KorOdbcKey(row.key))->name;
    });
    return members;
}

KorString headOf(const Wish& wish) {
    return KorString::format(Prompts::dsm(wish.records.size() == 1 ? kHead : kHeadMany),
                             {subjectOf(wish), KorDSMWhereUsed::sourceName(wish.from)});
}

KorString noteOf(const Wish& wish) {
    const double here = titleHeight(wish.from);
    const double there = titleHeight(wish.to);
    const bool hasTitles =
        std::ranges::find(wish.records, kTableDetailStyle, &RowRef::table) != wish.records.end();
    if (!hasTitles || here <= 0 || there <= 0 || here == there)
        return {};
    const KorDSNRequest request(wish.to.dsn, wish.to.index);
    const KorUnitsManager& units = getUnitsOfCurrentDatabase();
    const auto text = [&units](double height) {
        const KorString number = units.format(height, KorUnitsManager::kPaper);
        return units.getBasisUnitForDistanceIsImperial() ? number : number + " mm";
    };
    return KorString::format(Prompts::dsm(kTitleHeight),
                             {text(there), text(here), KorDSMWhereUsed::sourceName(wish.from)});
}

Outcome preview(const Wish& wish) {
    return run(wish, true);
}

Outcome copy(const Wish& wish) {
    return run(wish, false);
}

KorString fateText(ImportReport::Row::eFate fate) {
    return Prompts::dsm(wordsOf(fate).one);
}

KorString summaryOf(const ImportReport& report) {
    KorString summary;
    for (std::size_t fate = 0; fate < kFates.size(); ++fate) {
        const auto count = std::ranges::count(report.rows, static_cast<ImportReport::Row::eFate>(fate),
                                              &ImportReport::Row::fate);
        if (count == 0)
            continue;
        const KorString words =
            KorString::format(Prompts::dsm(kFates[fate].counted), {KorString::number(std::int64_t{count})});
        summary = summary.isEmpty() ? words : KorString::format("%s, %s", {summary, words});
    }
    return summary;
}

} // namespace KorDSMDeepCopy
