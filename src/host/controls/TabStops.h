#pragma once

#include <QWidgetList>

/// The way of the Tab key through a window whose parts are made at different times: the parts come in the
/// order in which they are named, the controls of each in the order in which they were made.
namespace TabStops {

/// The widgets at which the Tab key stops, in order: each part itself, or what is in it, where it can have
/// the focus now.
QWidgetList in(const QWidgetList& parts);

/// Gives the focus to the stop after, or before, the one that has it; from outside, to the first or last.
/// Returns false when there is none.
bool step(const QWidgetList& parts, bool forward);

} // namespace TabStops
