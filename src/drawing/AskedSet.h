#pragma once

#include "drawing/PropertyTest.h"
#include "drawing/StyleRows.h"

/// One qualifier of a set, with what its records say.
struct AskedQualifier {
    std::int32_t key = 0;      ///< of the qualifier in its set
    bool isKnown = false;      ///< its records are there
    std::int32_t property = 0; ///< keys of what it consists of
    std::int32_t role = 0;
    std::int32_t filter = 0;
    int type = 0;       ///< number of the objects' type
    int roleNumber = 0; ///< 0: any
    bool negate = false;
    PropertyTest test;
    KorString propertyName;
    KorString filterName;
    KorString expression;
};

/// A qualifier set with all that its records say.
struct AskedSet {
    bool isThere = false;
    KorString name;
    bool all = true; ///< all qualifiers must hold, or any of them
    std::vector<AskedQualifier> qualifiers;
    bool isCutShort = false; ///< it has more of them than are read, and what those say is not known

    /// A set without qualifiers, or one that is not there, says nothing about any object.
    bool saysNothing() const { return !isThere || qualifiers.empty(); }

    /// The set of this key, read once.
    static const AskedSet& of(StyleRows& rows, std::int32_t key);
};
