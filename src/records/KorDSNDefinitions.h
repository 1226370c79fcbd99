#pragma once

#include <compare>
#include <cstdint>
#include <functional>

/// Coordinates of a source: which database, and which add-in inside it.
namespace KorDSNDefinitions {

enum eDSN : std::int32_t {
    kStandard = 1,  ///< the maker's standard database
    kUser = 9,      ///< the user's own database
    kAddIn = 15,    ///< the database of an installed add-in
    kExchange = 16, ///< an exchange file that is open for import
    kLast = 17,     ///< end marker, never a current database
};

enum eIndex : std::int32_t {
    kNone = -1, ///< no add-in, never a current index
    kStandardIndex = 0,
    kUserIndex = 1,
    kFirstAddIn = 3, ///< installed add-in number i has the index i + 3
};

} // namespace KorDSNDefinitions

using KorDSNDefinitions::eDSN;
using KorDSNDefinitions::eIndex;

/// One source, by its pair. (1, 0) is Standard, (9, 1) User, (15, i + 3) the installed add-in number i.
struct SourceId {
    eDSN dsn = KorDSNDefinitions::kLast;
    eIndex index = KorDSNDefinitions::kNone;

    static constexpr SourceId standard() {
        return {KorDSNDefinitions::kStandard, KorDSNDefinitions::kStandardIndex};
    }
    static constexpr SourceId user() { return {KorDSNDefinitions::kUser, KorDSNDefinitions::kUserIndex}; }
    static constexpr SourceId addIn(int number) {
        return {KorDSNDefinitions::kAddIn, static_cast<eIndex>(KorDSNDefinitions::kFirstAddIn + number)};
    }

    static constexpr SourceId exchange() {
        return {KorDSNDefinitions::kExchange, KorDSNDefinitions::kStandardIndex};
    }

    auto operator<=>(const SourceId&) const = default;
};
