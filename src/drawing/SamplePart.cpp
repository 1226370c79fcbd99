#include "drawing/SamplePart.h"

const PartObject* SamplePart::main() const {
    const auto main = std::ranges::find(objects, eObjectRole::kMain, &PartObject::role);
    return main != objects.end() ? &*main : objects.empty() ? nullptr : &objects.front();
}

Box3 SamplePart::box() const {
    Box3 box;
    for (const PartObject& object : objects)
        box.add(object.box);
    return box;
}
