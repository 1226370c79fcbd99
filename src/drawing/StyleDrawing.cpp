#include "drawing/StyleDrawing.h"

#include "drawing/LiveDrawing.h"

Drawing drawStyle(StyleSource& source, const SamplePart& part, const DrawingRequest& request,
                  const std::shared_ptr<SeenLines>& seen) {
    const std::shared_ptr<const SamplePart> lent(std::shared_ptr<void>(), &part);
    return LiveDrawing(lent, request, seen).update(source);
}
