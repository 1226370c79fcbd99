#include "drawing/SamplePart.h"

Box3 PartObject::box() const {
    Box3 box = solid.box();
    for (const Loop3& path : paths)
        std::ranges::for_each(path, [&](const Vec3& p) { box.add(p); });
    std::ranges::for_each(centres, [&](const Vec3& p) { box.add(p); });
    return box;
}

const PartObject* SamplePart::main() const {
    const auto main = std::ranges::find(objects, eObjectRole::kMain, &PartObject::role);
    return main != objects.end() ? &*main : objects.empty() ? nullptr : &objects.front();
}

Box3 SamplePart::box() const {
    Box3 box;
    for (const PartObject& object : objects)
        box.add(object.box());
    return box;
}
