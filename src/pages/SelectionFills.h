#pragma once

#include "base/KorString.h"

struct StructDetViewRequest;
class VELComboTree;

/// Fills selection trees with the records of the current source that are kept in groups: an entry for each
/// group, which cannot be chosen, and below it one for each of its records. Progress goes to the main dialog.
namespace SelectionFills {

enum eFill : int { kQualifierSets, kAnnotationStrategies, kDimRequests, kPointSelections, kViewRequests };

/// Replaces the entries of the combo, by those that are there when they are first needed; the path that was
/// chosen stays chosen where it is still there.
void fill(eFill what, VELComboTree& combo);

/// Names from the top down as a path of a selection tree.
KorString path(const KorString& group, const KorString& name);
/// The last name of a path.
KorString nameOf(const KorString& path);

/// The path under which a view request is shown: below the first of its categories, or below "without
/// category".
KorString viewRequestPath(const StructDetViewRequest& request);

} // namespace SelectionFills
