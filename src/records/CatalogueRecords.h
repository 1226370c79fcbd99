#pragma once

#include "records/StructRecord.h"

/// A picture that records of other tables show beside their names.
struct StructBitmap : StructRecord {
    std::int32_t resource = 0; ///< number in the bitmap library
    bool operator==(const StructBitmap&) const = default;
};

/// Position of a picture in the strip that lists are drawn from.
struct StructBitmapIndex : StructRecord {
    std::int32_t bitmapKey = 0; ///< the picture
    std::int32_t index = 0;     ///< from 0
    bool operator==(const StructBitmapIndex&) const = default;
};

/// A size that texts are offered in.
struct StructTextSize : StructRecord {
    double size = 0.0; ///< mm on paper
    bool operator==(const StructTextSize&) const = default;
};

/// A heading under which scales are listed.
struct StructScaleGroup : StructRecord {
    std::int32_t unitType = 1; ///< 1 metric, 2 imperial
    bool operator==(const StructScaleGroup&) const = default;
};

/// A scale that lists offer.
struct StructScale : StructRecord {
    double factor = 1.0;       ///< paper length over model length
    std::int32_t unitType = 1; ///< 1 metric, 2 imperial
    std::int32_t groupKey = 0; ///< the heading under which it stands
    bool operator==(const StructScale&) const = default;
};

/// A named numeric default, such as "C40_ClipLineDistance".
struct StructNumericDefault : StructRecord {
    double value = 0.0; ///< in the unit that its name stands for
    bool operator==(const StructNumericDefault&) const = default;
};

/// A named default for newly created things, kept as text and read in the type that the caller asks for.
struct StructCreationDefault : StructRecord {
    std::int32_t family = 0; ///< 40: titles
    KorString value;         ///< numbers with a decimal point
    bool operator==(const StructCreationDefault&) const = default;
};
