#pragma once

#include "base/Result.h"
#include "drawing/DrawingRequest.h"
#include "drawing/HiddenLines.h"
#include "picture/Primitive.h"

class StyleSource;

/// Draws a sample part as a detail style says. Whatever is damaged, missing or impossible is left out and
/// told in the drawing's notes; nothing is written, and nothing that only a host knows is made up. A style
/// that is not there gives a drawing without views. Whoever draws one part with many styles lends the same
/// `seen` each time, which is faster.
Drawing drawStyle(StyleSource& source, const SamplePart& part, const DrawingRequest& request,
                  const std::shared_ptr<SeenLines>& seen = nullptr);
