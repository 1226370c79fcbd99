#pragma once

#include "drawing/DrawingContext.h"

/// The values of label variables for an object, or for the whole part where it is null: of the object, of the
/// main object, of the part file. Variables that only a host knows have none.
/// Lengths are in the unit of the database.
std::optional<std::string> labelValue(DrawingContext& context, const PartObject* object,
                                      const std::string& name);

/// The style of titles: font of the drawing, size and colour as the database has them for new titles.
LabelStyle titleStyle(DrawingContext& context);

/// Puts a title to each cut view, below or above it.
void addCutViewTitles(DrawingContext& context, std::vector<ViewPicture>& views);

/// Puts the title of the drawing above the main view, where it is to stand there.
void addTitleAboveMainView(DrawingContext& context, ViewPicture& main);
/// The title of the drawing, where it is to stand elsewhere: about the box of all views.
Primitives titleAbout(DrawingContext& context, const ViewPicture& main, const Box2& all);
