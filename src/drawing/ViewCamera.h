#pragma once

#include "drawing/SamplePart.h"
#include "drawing/StyleRows.h"

/// From where a view looks, and what it takes in.
struct ViewCamera {
    Frame frame;          ///< x to the right, z up, y away from who looks
    double nearDepth = 0; ///< y of what is cut off in front
    double farDepth = 0;  ///< y behind which nothing is shown
    Box2 window;          ///< x and z of what is shown
    Vec2 reference;       ///< what stands on one line with other views
    bool mirrored = false;

    /// A point as it lies in the view, in millimetres of the model.
    Vec2 flat(const Vec3& p) const {
        const Vec3 q = frame.in(p);
        return {mirrored ? -q.x : q.x, q.z};
    }
    double depth(const Vec3& p) const { return frame.in(p).y; }
};

namespace ViewCameras {

/// Camera of a view request for a part whose objects `shown` are drawn. `chain` is what the view is owed to.
ViewCamera of(StyleRows& rows, const StructDetViewRequest& view, const SamplePart& part,
              const std::vector<int>& shown);
/// The same view from the other side.
ViewCamera opposite(ViewCamera camera);

} // namespace ViewCameras
