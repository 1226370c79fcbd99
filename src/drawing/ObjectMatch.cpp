#include "drawing/ObjectMatch.h"

#include "base/Translation.h"

eAnswer ObjectMatch::holds(StyleRows& rows, const StructDetObjQualifierWithRole& qualifier,
                           const PartObject& object) {
    const auto* asked = rows.row<StructDetObjQualifier>(qualifier.qualifierKey);
    const auto* type = asked ? rows.row<StructDetModelType>(asked->modelTypeKey) : nullptr;
    const auto* role = rows.row<StructModelRole>(qualifier.modelRoleKey);
    const auto* filter = rows.row<StructDetObjQualifierFilter>(qualifier.filterKey);
    if (!type || (!role && qualifier.modelRoleKey > 0) || (!filter && qualifier.filterKey > 0))
        return eAnswer::kUnknown;
    eAnswer answer = eAnswer::kNo;
    const bool playsRole = !role || role->role == 0 || role->role == static_cast<int>(object.role);
    if (type->modelType == static_cast<int>(object.type) && playsRole) {
        const std::string property = asked->property.toStdString();
        answer = QualifierExpression::holds(filter ? filter->expression.view() : std::string_view(),
                                            filter ? filter->minimum : 0, filter ? filter->maximum : 0,
                                            property, object.properties);
        if (answer == eAnswer::kUnknown)
            rows.note(KorString::format(
                translated("What the filter \"%s\" with the expression \"%s\" means is not known here."),
                {filter->name, filter->expression}));
    }
    return qualifier.negate != 0 ? !answer : answer;
}

eAnswer ObjectMatch::picks(StyleRows& rows, std::int32_t set, const PartObject& object) {
    const auto* record = rows.row<StructDetObjQualifierSet>(set);
    const auto qualifiers = rows.parts<StructDetObjQualifierWithRole>(
        &StructDetObjQualifierWithRole::qualifierSetKey, set, &StructDetObjQualifierWithRole::key);
    if (!record || qualifiers.empty())
        return eAnswer::kUnknown;
    eAnswer answer = record->combination == 0 ? eAnswer::kYes : eAnswer::kNo;
    for (const StructDetObjQualifierWithRole* qualifier : qualifiers)
        answer = record->combination == 0 ? (answer && holds(rows, *qualifier, object))
                                          : (answer || holds(rows, *qualifier, object));
    return answer;
}

ObjectMatch::Decision ObjectMatch::decide(StyleRows& rows,
                                          const std::vector<const StructDetObjReprMapKey*>& entries,
                                          const PartObject& object) {
    for (const StructDetObjReprMapKey* entry : entries) {
        const eAnswer answer = picks(rows, entry->qualifierSetKey, object);
        if (answer == eAnswer::kYes)
            return {entry, false};
        if (answer == eAnswer::kUnknown)
            return {nullptr, true};
    }
    return {};
}
