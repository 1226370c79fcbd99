#include "drawing/ObjectMatch.h"

#include "base/Translation.h"

eAnswer ObjectMatch::holds(StyleRows& rows, const AskedQualifier& qualifier, const PartObject& object) {
    if (!qualifier.isKnown)
        return eAnswer::kUnknown;
    eAnswer answer = eAnswer::kNo;
    const bool playsRole = qualifier.roleNumber == 0 || qualifier.roleNumber == static_cast<int>(object.role);
    if (qualifier.type == static_cast<int>(object.type) && playsRole) {
        answer = qualifier.test.holds(object.properties);
        if (answer == eAnswer::kUnknown)
            rows.note(KorString::format(
                translated("What the filter \"%s\" with the expression \"%s\" means is not known here."),
                {qualifier.filterName, qualifier.expression}));
    }
    return qualifier.negate ? !answer : answer;
}

eAnswer ObjectMatch::picks(StyleRows& rows, const AskedSet& set, const PartObject& object) {
    if (set.saysNothing())
        return eAnswer::kUnknown;
    const eAnswer settled = set.all ? eAnswer::kNo : eAnswer::kYes;
    eAnswer answer = !settled;
    for (const AskedQualifier& qualifier : set.qualifiers)
        if (answer != settled)
            answer = set.all ? (answer && holds(rows, qualifier, object))
                             : (answer || holds(rows, qualifier, object));
    return answer;
}

eAnswer ObjectMatch::picks(StyleRows& rows, std::int32_t set, const PartObject& object) {
    return picks(rows, AskedSet::of(rows, set), object);
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

std::vector<const StructDetObjReprMapKey*> ObjectMatch::entriesOf(StyleRows& rows, std::int32_t map) {
    return rows.parts<StructDetObjReprMapKey>(&StructDetObjReprMapKey::reprMapKey, map,
                                              &StructDetObjReprMapKey::order);
}
