#pragma once

#include "drawing/Solid.h"

#include <map>
#include <optional>
#include <string>

/// The kinds of model objects, by the numbers that the records of model types have.
enum class eObjectType {
    kProfile = 1,
    kPlate,
    kBolt,
    kWeld,
    kHole,
    kAssembly,
    kGrid,
    kLevel,
    kAnchor,
    kGrating,
    kCut,
    kRail
};

/// The roles of objects in their assembly, by the numbers that the records of model roles have.
enum class eObjectRole { kAny = 0, kMain, kSecondary, kFitting, kNeighbour, kShop, kSite };

/// A property as a qualifier asks for it: a number, a word, or a number that is written as a word.
struct PropertyValue {
    std::string text;
    std::optional<double> number; ///< in the property's own unit
};

/// One object of a sample part, in the millimetres of the part's own axes: x to the right, y away from who
/// looks from the front, z up.
struct PartObject {
    std::string name;
    eObjectType type = eObjectType::kProfile;
    eObjectRole role = eObjectRole::kAny;
    std::map<std::string, PropertyValue> properties; ///< that qualifiers ask for
    std::map<std::string, std::string> values;       ///< of label variables

    Solid solid;               ///< empty for what is only lines
    std::vector<Loop3> paths;  ///< lines that are drawn as they are: welds, grid lines, levels, folds
    std::vector<Vec3> centres; ///< of holes, bolts and anchors
    Vec3 axis;                 ///< of those, or along a profile
    double diameter = 0;       ///< of holes and bolts
    Frame frame;               ///< of a profile: from its start, x along it; of a plate: in its face
    Vec3 start;                ///< ends of the axis of what has one
    Vec3 end;
    std::vector<std::string> in; ///< names of the objects that a hole or cut is in

    Box3 box; ///< around all of it
    bool isRound() const {
        return type == eObjectType::kHole || type == eObjectType::kBolt || type == eObjectType::kAnchor;
    }
};

/// Something to draw: one part, an assembly or a piece of a building, read from a text file.
struct SamplePart {
    std::string name;                          ///< as the user chooses it
    std::vector<std::string> categories;       ///< words that occur in the names of categories it suits
    std::vector<std::string> styles;           ///< words that occur in the names of styles it suits
    std::map<std::string, std::string> values; ///< of label variables, where an object has none of its own
    std::map<int, Box3> areas;                 ///< by the number of the area type
    std::vector<PartObject> objects;

    /// The main object, or the first one; null in a part without objects.
    const PartObject* main() const;
    Box3 box() const;
};
