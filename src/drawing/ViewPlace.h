#pragma once

#include "drawing/AxisMap.h"
#include "drawing/ViewCamera.h"

/// From where a picture of a view was taken, and where on it the model comes to lie.
struct ViewPlace {
    ViewCamera camera;
    AxisMap maps[2];
    Box2 outline; ///< of the edges, on the picture

    /// A point of the view in millimetres of the model, as it lies in the picture.
    Vec2 onPicture(Vec2 flat) const {
        const Vec2 zero = {maps[0].at(camera.reference.u), maps[1].at(camera.reference.v)};
        return Vec2{maps[0].at(flat.u), maps[1].at(flat.v)} - zero;
    }
    Vec2 onPicture(const Vec3& p) const { return onPicture(camera.flat(p)); }
};
