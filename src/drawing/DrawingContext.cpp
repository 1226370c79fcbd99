#include "drawing/DrawingContext.h"

namespace {

enum eDrawingKind { kOverview, kSinglePart, kAssembly };

bool isAccessory(const PartObject& object) {
    return object.type == eObjectType::kBolt;
}

bool belongsTo(const PartObject& object, const PartObject& main) {
    return &object == &main || std::ranges::find(object.in, main.name) != object.in.end();
}

} // namespace

void selectObjects(DrawingContext& context) {
    static const StructDetObjSelectionStrategy kPlain{{}, kAssembly};
    const auto* wanted =
        context.rows.row<StructDetObjSelectionStrategy>(context.style.objectSelectionStrategy);
    const StructDetObjSelectionStrategy& strategy = wanted ? *wanted : kPlain;
    context.isOverview = strategy.drawingKind == kOverview;
    const PartObject* main = context.part.main();
    Box3 own;
    for (const PartObject& object : context.part.objects)
        if (object.role != eObjectRole::kNeighbour && object.type != eObjectType::kGrid &&
            object.type != eObjectType::kLevel)
            own.add(strategy.drawingKind == kSinglePart ? (main == &object ? object.box : Box3())
                                                        : object.box);
    for (std::size_t i = 0; i < context.part.objects.size(); ++i) {
        const PartObject& object = context.part.objects[i];
        const bool isWeld = object.type == eObjectType::kWeld;
        const bool isNear =
            strategy.neighbourDistance > 0 && object.box.distance(own) <= strategy.neighbourDistance;
        bool wantedHere = true;
        if (isWeld)
            wantedHere = strategy.includeWelds != 0;
        else if (isAccessory(object))
            wantedHere = strategy.includeAccessories != 0;
        else if (object.type == eObjectType::kGrid || object.type == eObjectType::kLevel)
            wantedHere = strategy.drawingKind != kSinglePart;
        else if (strategy.drawingKind == kSinglePart)
            wantedHere = belongsTo(object, *main) || isNear;
        else if (object.role == eObjectRole::kNeighbour)
            wantedHere = strategy.drawingKind == kOverview || isNear;
        if (wantedHere)
            context.shown.push_back(static_cast<int>(i));
    }
}
