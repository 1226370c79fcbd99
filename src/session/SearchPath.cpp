#include "session/SearchPath.h"

#include "model/KorDSMFamilies.h"
#include "services/Prompts.h"

#include <algorithm>
#include <set>

namespace {

RowRef referrerOf(StyleSource& source, RowRef row, eReferenceRole role) {
    for (const Referrer& referrer : source.referrersOf(row.table, KorOdbcKey(row.key)))
        if (referrer.column->role == role)
            return {referrer.table->type, referrer.key};
    return {};
}

RowRef targetOf(StyleSource& source, RowRef row, eReferenceRole role) {
    const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
    for (const Column& column : findTable(row.table)->columns)
        if (record && column.isReference() && column.role == role && column.integerIn(record) > 0)
            return {column.target, column.integerIn(record)};
    return {};
}

RowRef above(StyleSource& source, RowRef row) {
    const KorDSMFamily* family = KorDSMFamilies::of(row.table);
    const bool isFiledByOther = family && family->filedBy != kNoTable;
    const RowRef filing = isFiledByOther ? referrerOf(source, row, eReferenceRole::kIdentifies) : row;
    for (const eReferenceRole role : {eReferenceRole::kFiledUnder, eReferenceRole::kPartOf})
        if (const RowRef found = filing.key > 0 ? targetOf(source, filing, role) : RowRef(); found.key > 0)
            return found;
    if (family && family->isFiled())
        return {};
    if (const RowRef identified = targetOf(source, row, eReferenceRole::kIdentifies); identified.key > 0)
        return identified;
    return referrerOf(source, row, eReferenceRole::kUses);
}

} // namespace

std::vector<KorString> searchPathTo(StyleSource& source, RowRef row) {
    std::vector<KorString> names;
    std::set<RowRef> seen{row};
    RowRef top = row;
    for (RowRef step = above(source, row); step.key > 0 && seen.insert(step).second;
         step = above(source, step)) {
        top = step;
        const StructRecord* record = source.table(step.table).find(KorOdbcKey(step.key));
        if (record && !record->name.isEmpty())
            names.push_back(record->name);
    }
    const KorDSMFamily* family = KorDSMFamilies::of(top.table);
    if (const KorDSMSection* section = family ? KorDSMFamilies::sectionOf(*family) : nullptr)
        names.push_back(Prompts::ups(section->namePrompt));
    std::ranges::reverse(names);
    return names;
}
