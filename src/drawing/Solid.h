#pragma once

#include "picture/Geometry.h"

/// A plane face: an outline and the holes in it, which all lie in one plane. Which way the loops run does not
/// matter.
struct Face {
    std::vector<Loop3> loops;
    Vec3 normal; ///< of length 1, out of the solid
};

/// A line on the surface of a solid.
struct Edge {
    Vec3 a;
    Vec3 b;
    Vec3 normalA = {}; ///< of the two faces that meet in it
    Vec3 normalB = {};
    bool smooth = false; ///< the faces are pieces of a curved one: it is seen only as a silhouette
    int circle = -1;     ///< index of the circle that it is a piece of; -1: straight
};

/// A circle that edges are pieces of.
struct Circle3 {
    Vec3 centre;
    Vec3 axis;
    double radius = 0.0;
};

/// An outline with holes in the plane of a section or plate. Edge i runs from corner i to the next one.
struct Outline {
    struct Piece {
        Loop2 corners;
        bool round = false;       ///< all of it is one circle
        std::vector<bool> smooth; ///< per corner: the faces on both sides are pieces of a curved one
        bool isSmooth(std::size_t corner) const {
            return round || (corner < smooth.size() && smooth[corner]);
        }
    };
    std::vector<Piece> pieces; ///< the outer one first

    static Piece circle(Vec2 centre, double radius);
    static Outline rectangle(Vec2 low, Vec2 high);
    std::vector<Loop2> loops() const;
};

/// A round hole, or a slot.
struct Drill {
    Vec3 at;   ///< somewhere on its axis
    Vec3 axis; ///< of length 1
    double diameter = 0;
    double reach = 30; ///< how far from `at` faces are opened
    double slot = 0;   ///< length between the half circles at the ends of a slot
    Vec3 along = {};   ///< direction of the slot
};

/// A body bounded by plane faces. Curved ones are approached by strips.
struct Solid {
    static constexpr int kStrips = 32; ///< of a full turn

    std::vector<Face> faces;
    std::vector<Edge> edges;
    std::vector<Circle3> circles;

    Box3 box() const;
    /// Adds the body that the outline, which lies in the x-y plane of `frame`, sweeps along its z axis. The
    /// ends are in the planes through (0, 0, from) and (0, 0, to) that lean by the slopes: the end's z grows
    /// by slope x per x.
    void addPrism(const Outline& outline, const Frame& frame, double from, double to, double slopeFrom = 0,
                  double slopeTo = 0);
    /// Drills a hole: opens the faces square to the axis whose distance from its middle, along it, is at most
    /// the reach. The rims become edges of `hole`. Returns whether any face was hit.
    bool drill(const Drill& drill, Solid& hole);
    /// Drops the edges along which two faces lie in one plane. To be called when all prisms were added.
    void joinPlanes();
};
