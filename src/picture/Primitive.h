#pragma once

#include "base/LabelFormat.h"
#include "base/LinetypeFile.h"
#include "picture/Geometry.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <memory>
#include <string>
#include <vector>

/// One record that had a say in a primitive, and the columns of it that did.
struct ProvenanceStep {
    SourceId source;
    RowRef row;
    std::vector<int> columns; ///< by their numbers

    bool operator==(const ProvenanceStep&) const = default;
};

/// What made a primitive what it is, nearest first: the appearance, the entry of the map, the map, the view,
/// the style.
using Provenance = std::vector<ProvenanceStep>;
using ProvenancePtr = std::shared_ptr<const Provenance>;

/// How a line is drawn.
struct Pen {
    LinetypeDefinitionPtr linetype; ///< null: continuous
    double patternScale = 1.0;
    int color = 7;        ///< drawing colour, 1 to 255; 256: that of the layer
    double weight = 0.25; ///< mm on paper
    std::string layer;

    /// The lengths of dashes and gaps in turn, beginning with a dash, in millimetres on paper; none where the
    /// line is continuous.
    std::vector<double> dashes() const;

    bool operator==(const Pen&) const = default;
};

/// What a drawing is made of. Millimetres on the sheet, u to the right, v up.
struct Primitive {
    enum eKind : std::uint8_t {
        kLine, ///< through all of `points`
        kArc,  ///< about points[0], from the angle `from` counter-clockwise to `to`
        kFill, ///< the inside of points
        kText, ///< its lower left corner is points[0]
    };
    enum ePurpose : std::uint8_t {
        kVisibleEdge,
        kHiddenEdge,
        kCutEdge,
        kHatch,
        kCentreLine,
        kBreakLine,
        kSymbol,
        kGridLine,
        kDimension,
        kLabel,
        kTitle,
        kFrame,
    };

    eKind kind = kLine;
    ePurpose purpose = kVisibleEdge;
    std::vector<Vec2> points;
    double radius = 0;
    double from = 0; ///< degrees
    double to = 0;
    Pen pen;
    LabelStyle style; ///< of a text
    std::string text;
    double turned = 0; ///< of a text: degrees
    int object = -1;   ///< index in the part of what it shows; -1: none
    ProvenancePtr provenance;

    /// Height of capitals in parts of the size of a font: sizes of texts are heights of capitals.
    static constexpr double kCapitals = 0.716;

    bool operator==(const Primitive& o) const;
    /// How wide a text is, in millimetres. Fonts differ: whoever draws it stretches it to this width.
    double textWidth() const;
    /// The box of it, with about the size that a text has.
    Box2 box() const;
    void move(Vec2 by);
    /// Whether all of it lies on a sheet of some size: damaged records can put it anywhere.
    bool isOnSheet() const;
};

using Primitives = std::vector<Primitive>;

Box2 boxOf(const Primitives& primitives);
void moveAll(Primitives& primitives, Vec2 by);

struct ViewPlace;

/// One view of a drawing.
struct ViewPicture {
    std::int32_t key = 0; ///< of its request
    std::string name;
    double scale = 0.1; ///< with what its process made of it
    bool isCut = false; ///< it serves as a cut or callout
    std::string letter; ///< of a cut
    Primitives primitives;
    Box2 box;                                         ///< of all of them
    std::shared_ptr<const ViewPlace> place = nullptr; ///< of the picture before it was arranged
};

/// What a style makes of a part.
struct Drawing {
    std::string style;
    std::string part;
    std::vector<ViewPicture> views; ///< where they stand on the sheet
    Primitives sheet;               ///< titles and the frame
    std::vector<std::string> notes; ///< one sentence for each thing that could not be shown, or was left out

    /// All primitives in the order of drawing.
    std::vector<const Primitive*> all() const;
    Box2 box() const;
};
