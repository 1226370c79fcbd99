#pragma once

#include "drawing/DrawingContext.h"
#include "drawing/LengthClipping.h"
#include "drawing/ViewCamera.h"

#include <optional>

/// How an object of a view is drawn.
struct ObjectLook {
    bool drawn = true;
    const StructDetObjReprMapKey* entry = nullptr;      ///< of the map that decides; null: none fits
    const StructDetObjAppearance* appearance = nullptr; ///< null: plainly
    ProvenancePtr provenance;                           ///< of the look
};

/// One view, as far as its figures can be taken from: what is seen, and where on the sheet it comes to lie.
struct ViewScene {
    const StructDetViewRequest* request = nullptr;
    ProvenancePtr chain;
    ViewCamera camera;
    ViewLines seen; ///< in millimetres of the model, nothing cut out
    std::map<int, ObjectLook> looks;
    LengthClipping::Strategy clipping;
    AxisMap maps[2];
    bool showsHidden = true;
    bool showsAnything = true;
    Box2 outline; ///< of the edges on the sheet

    Vec2 onSheet(Vec2 flat) const { return {maps[0].at(flat.u), maps[1].at(flat.v)}; }
    Vec2 onSheet(const Vec3& p) const { return onSheet(camera.flat(p)); }
    double scale() const { return maps[0].scale(); }
    /// Whether a direction of the model is looked along.
    bool looksAlong(const Vec3& axis) const { return std::abs(dot(axis, camera.frame.y)) > 1 - 1e-6; }
};

namespace ViewScenes {

/// The scene of a view; nothing where it is left out, which is noted. One that is asked for by name is not.
std::optional<ViewScene> of(DrawingContext& context, const StructDetViewRequest& view, bool askedFor);

/// The largest size of a view that still fits on the sheet, which no record says.
inline constexpr Vec2 kSheet = {780, 530};

} // namespace ViewScenes
