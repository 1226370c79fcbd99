#pragma once

#include "drawing/AskedSet.h"

/// Which objects the qualifier sets of a source pick.
namespace ObjectMatch {

/// Whether a qualifier holds for the object. Unknown where its records are not there, or its expression is
/// not understood, which is noted.
eAnswer holds(StyleRows& rows, const AskedQualifier& qualifier, const PartObject& object);
/// Whether a set picks the object. A set that is not there, or has no qualifiers, is unknown.
eAnswer picks(StyleRows& rows, const AskedSet& set, const PartObject& object);
eAnswer picks(StyleRows& rows, std::int32_t set, const PartObject& object);

/// What a map says about an object.
struct Decision {
    const StructDetObjReprMapKey* entry = nullptr; ///< that decides; null: none fits
    bool isUnknown = false; ///< an entry before may fit or not; then nobody knows which one decides
};

/// The first entry that fits decides.
Decision decide(StyleRows& rows, const std::vector<const StructDetObjReprMapKey*>& entries,
                const PartObject& object);

/// The entries of a map, in the order in which they are asked.
std::vector<const StructDetObjReprMapKey*> entriesOf(StyleRows& rows, std::int32_t map);

} // namespace ObjectMatch
