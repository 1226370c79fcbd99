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

/// The entries of a map, in the order in which they are asked.
using Entries = std::vector<const StructDetObjReprMapKey*>;
Entries entriesOf(StyleRows& rows, std::int32_t map);

/// Decides for one object after the other. Each set is asked once for an object, however many entries have
/// it.
class Decider {
public:
    Decider(StyleRows& rows, Entries entries);

    /// The first entry that fits decides.
    Decision decide(const PartObject& object);

private:
    struct Set {
        const AskedSet* asked = nullptr; ///< null: not asked yet
        eAnswer answer = eAnswer::kNo;
        int object = -1; ///< number of the object that the answer is for
    };

    StyleRows& m_rows;
    Entries m_entries;
    std::vector<std::size_t> m_setOf; ///< per entry, in `m_sets`
    std::vector<Set> m_sets;
    int m_object = -1; ///< how many were asked for
};

} // namespace ObjectMatch
