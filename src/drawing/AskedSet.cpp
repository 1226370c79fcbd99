#include "drawing/AskedSet.h"

#include "base/Translation.h"
#include "records/OwnWords.h"

namespace {

AskedQualifier qualifierOf(StyleRows& rows, const StructDetObjQualifierWithRole& record) {
    AskedQualifier asked;
    asked.key = record.key;
    asked.property = record.qualifierKey;
    asked.role = std::max(record.modelRoleKey, 0);
    asked.filter = std::max(record.filterKey, 0);
    asked.negate = record.negate != 0;
    const auto* property = rows.row<StructDetObjQualifier>(record.qualifierKey);
    const auto* type = property ? rows.row<StructDetModelType>(property->modelTypeKey) : nullptr;
    const auto* role = rows.row<StructModelRole>(record.modelRoleKey);
    const auto* filter = rows.row<StructDetObjQualifierFilter>(record.filterKey);
    asked.isKnown = type && (role || asked.role == 0) && (filter || asked.filter == 0);
    if (!asked.isKnown)
        return asked;
    asked.type = type->modelType;
    asked.roleNumber = role ? role->role : 0;
    asked.propertyName = OwnWords::nameOf(kTableQualifier, *property);
    asked.filterName = filter ? filter->name : KorString();
    asked.expression = filter ? filter->expression : KorString();
    asked.test = PropertyTest::read(asked.expression.view(), filter ? filter->minimum : 0,
                                    filter ? filter->maximum : 0, property->property.toStdString());
    return asked;
}

AskedSet setOf(StyleRows& rows, std::int32_t key) {
    AskedSet asked;
    const auto* record = rows.row<StructDetObjQualifierSet>(key);
    asked.isThere = record != nullptr;
    if (!record)
        return asked;
    asked.name = record->name;
    asked.all = record->combination == 0;
    constexpr std::size_t kMostQualifiers = 1000;
    auto qualifiers = rows.parts<StructDetObjQualifierWithRole>(
        &StructDetObjQualifierWithRole::qualifierSetKey, key, &StructDetObjQualifierWithRole::key);
    asked.isCutShort = qualifiers.size() > kMostQualifiers;
    if (asked.isCutShort) {
        qualifiers.resize(kMostQualifiers);
        rows.note(KorString::format(
            translated("Of the qualifier set \"%s\" only the first %d qualifiers are looked at."),
            {asked.name, KorString::number(static_cast<std::int64_t>(kMostQualifiers))}));
    }
    for (const auto* qualifier : qualifiers)
        asked.qualifiers.push_back(qualifierOf(rows, *qualifier));
    return asked;
}

} // namespace

const AskedSet& AskedSet::of(StyleRows& rows, std::int32_t key) {
    return rows.once<AskedSet>(key, [&] { return setOf(rows, key); });
}
