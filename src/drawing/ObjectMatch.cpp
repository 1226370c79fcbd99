#include "drawing/ObjectMatch.h"

#include "base/Translation.h"

#include <unordered_map>

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
    return set.isCutShort && answer != settled ? eAnswer::kUnknown : answer;
}

eAnswer ObjectMatch::picks(StyleRows& rows, std::int32_t set, const PartObject& object) {
    return picks(rows, AskedSet::of(rows, set), object);
}

ObjectMatch::Decider::Decider(StyleRows& rows, Entries entries)
    : m_rows(rows), m_entries(std::move(entries)) {
    std::unordered_map<std::int32_t, std::size_t> places;
    for (const StructDetObjReprMapKey* entry : m_entries)
        m_setOf.push_back(places.try_emplace(entry->qualifierSetKey, places.size()).first->second);
    m_sets.resize(places.size());
}

ObjectMatch::Decision ObjectMatch::Decider::decide(const PartObject& object) {
    ++m_object;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        Set& set = m_sets[m_setOf[i]];
        if (!set.asked)
            set.asked = &AskedSet::of(m_rows, m_entries[i]->qualifierSetKey);
        if (std::exchange(set.object, m_object) != m_object)
            set.answer = picks(m_rows, *set.asked, object);
        if (set.answer == eAnswer::kYes)
            return {m_entries[i], false};
        if (set.answer == eAnswer::kUnknown)
            return {nullptr, true};
    }
    return {};
}

ObjectMatch::Entries ObjectMatch::entriesOf(StyleRows& rows, std::int32_t map) {
    return rows.parts<StructDetObjReprMapKey>(&StructDetObjReprMapKey::reprMapKey, map,
                                              &StructDetObjReprMapKey::order);
}
