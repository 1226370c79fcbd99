#pragma once

#include "drawing/ObjectMatch.h"

#include <set>

/// What an entry of a map does with the objects of a part. Objects are told by their index in the part.
struct EntryCount {
    std::int32_t entry = 0;   ///< key
    bool isOff = false;       ///< on trial: it decides nothing
    std::vector<int> takes;   ///< it decides how they are drawn
    std::vector<int> unknown; ///< it comes to decide, but nobody knows whether it fits
    struct Taken {
        int object;
        std::int32_t by; ///< key of the entry before
    };
    std::vector<Taken> takenBefore; ///< they fit, but an entry before decides
};

/// Why an entry does or does not decide how an object is drawn.
struct EntryReason {
    enum eReason : std::uint8_t {
        kDecides,
        kFails,       ///< its qualifier set does not fit
        kTakenBefore, ///< it fits, but an entry before decides
        kUnknown,     ///< nobody knows whether it fits, or an entry before is such a one
        kOff,         ///< on trial
    };
    std::int32_t entry = 0;
    eReason reason = kDecides;
    std::int32_t culprit = 0; ///< the entry before, or the qualifier that failed; 0: none
    std::string sentence;     ///< for the user
};

/// How the objects of a part come to look as they do.
class MapExplanation {
public:
    /// Of a map of the source, with those objects of the part that are asked about. Entries that are off
    /// decide nothing.
    MapExplanation(StyleSource& source, std::int32_t map, const SamplePart& part, std::vector<int> objects,
                   std::set<std::int32_t> entriesOff = {});

    /// All entries, in the order in which they are asked.
    std::vector<EntryCount> counts();
    /// For one object of the part: all entries in their order, each with its reason.
    std::vector<EntryReason> reasonsFor(int object);

    /// The objects of a part that a style of the source selects; all of them for a style that is not there.
    static std::vector<int> objectsOf(StyleSource& source, std::int32_t style, const SamplePart& part);

private:
    using Entries = std::vector<const StructDetObjReprMapKey*>;
    Entries entries();

    StyleRows m_rows;
    std::int32_t m_map;
    const SamplePart& m_part;
    std::vector<int> m_objects;
    std::set<std::int32_t> m_off;
};

/// What one qualifier of a set says of the objects of a part, told by their index.
struct QualifierCount {
    std::int32_t qualifier = 0; ///< key
    std::vector<int> holds;
    std::vector<int> unknown; ///< nobody knows whether it holds for them
};

/// What a qualifier set does with the objects of a part.
class SetExplanation {
public:
    SetExplanation(StyleSource& source, std::int32_t set, const SamplePart& part)
        : m_rows(source), m_set(set), m_part(part) {}

    /// The objects that it picks, or of which it is not known.
    std::vector<int> picked(eAnswer answer = eAnswer::kYes);
    /// All of its qualifiers, each by itself, in their order.
    std::vector<QualifierCount> counts();

private:
    StyleRows m_rows;
    std::int32_t m_set;
    const SamplePart& m_part;
};
