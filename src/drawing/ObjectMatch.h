#pragma once

#include "drawing/QualifierExpression.h"
#include "drawing/StyleRows.h"

/// Which objects the qualifier sets of a source pick.
namespace ObjectMatch {

/// Whether a qualifier holds for the object. Unknown where it names no property, or its expression is not
/// understood, which is noted.
eAnswer holds(StyleRows& rows, const StructDetObjQualifierWithRole& qualifier, const PartObject& object);
/// Whether a set picks the object. A set that is not there, or has no qualifiers, is unknown.
eAnswer picks(StyleRows& rows, std::int32_t set, const PartObject& object);

/// What a map says about an object.
struct Decision {
    const StructDetObjReprMapKey* entry = nullptr; ///< that decides; null: none fits
    bool isUnknown = false; ///< an entry before may fit or not; then nobody knows which one decides
};

/// The first entry that fits decides.
Decision decide(StyleRows& rows, const std::vector<const StructDetObjReprMapKey*>& entries,
                const PartObject& object);

} // namespace ObjectMatch
