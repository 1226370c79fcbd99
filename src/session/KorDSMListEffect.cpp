#include "session/KorDSMListEffect.h"

#include "data/StyleDatabases.h"
#include "data/check/StillMissing.h"
#include "drawing/MapExplanation.h"
#include "drawing/Shadowing.h"
#include "records/ObjectRecords.h"
#include "services/Prompts.h"
#include "session/KorDSMPreview.h"

#include <algorithm>

bool KorDSMListEffect::isFor(eTableType parts) {
    return isFirstMatch(parts) || parts == kTableQualifierWithRole;
}

bool KorDSMListEffect::isFirstMatch(eTableType parts) {
    return parts == kTableReprMapEntry;
}

std::vector<KorDSMListEffect::Row> KorDSMListEffect::of(SourceId id, RowRef whole,
                                                        const KorDSMPreview* preview) {
    std::vector<Row> rows;
    if (preview && whole.table == kTableQualifierSet)
        for (QualifierCount& count : preview->countsOfSet(whole.key)) {
            Row& row = rows.emplace_back();
            row.key = count.qualifier;
            row.takes = std::move(count.holds);
            row.unknown = std::move(count.unknown);
        }
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source || whole.table != kTableReprMap)
        return rows;
    for (EntryCount& count : preview ? preview->countsOf(whole.key) : std::vector<EntryCount>()) {
        Row& row = rows.emplace_back();
        row.key = count.entry;
        row.isOff = count.isOff;
        row.takes = std::move(count.takes);
        row.unknown = std::move(count.unknown);
        for (const EntryCount::Taken& taken : count.takenBefore)
            row.takenBefore.push_back(taken.object);
    }
    for (const ShadowedEntry& shadowed :
         Shadowing::of(*source, whole.key, preview ? preview->leftOut() : std::set<std::int32_t>())) {
        auto row = std::ranges::find(rows, shadowed.entry, &Row::key);
        if (row == rows.end())
            row = rows.insert(rows.end(), Row{shadowed.entry});
        row->never = shadowed.sentence;
    }
    return rows;
}

KorString KorDSMListEffect::whyNothing(SourceId id, RowRef part) {
    constexpr int kNoSet = 1415;
    constexpr int kEmptySet = 1416;
    constexpr int kNoQualifier = 1417;
    StyleSource* source = StyleDatabases::current().source(id);
    const StructRecord* record = source ? source->table(part.table).find(KorOdbcKey(part.key)) : nullptr;
    if (!record)
        return {};
    if (part.table == kTableQualifierWithRole)
        return static_cast<const StructDetObjQualifierWithRole*>(record)->qualifierKey > 0
                   ? KorString()
                   : Prompts::dsm(kNoQualifier);
    const RowRef set{kTableQualifierSet, static_cast<const StructDetObjReprMapKey*>(record)->qualifierSetKey};
    if (!source->table(set.table).find(KorOdbcKey(set.key)))
        return Prompts::dsm(kNoSet);
    return stillMissing(*source, set).empty() ? KorString() : Prompts::dsm(kEmptySet);
}
