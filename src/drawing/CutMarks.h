#pragma once

#include "drawing/DrawingContext.h"

/// Marks in the other views where a cut view is taken: strokes with arrows and its letter where it looks
/// along the view, a ring with its letter where it shows a piece of the view. The main view has them, or the
/// first one that can. `views` have their letters, and stand about their references; `main` is an index.
void addCutMarks(DrawingContext& context, std::vector<ViewPicture>& views, std::size_t main);
