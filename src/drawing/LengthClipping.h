#pragma once

#include "drawing/AxisMap.h"
#include "drawing/StyleRows.h"
#include "drawing/ViewLine.h"

#include <optional>

/// How long parts are shortened.
namespace LengthClipping {

/// What a strategy comes to, with the defaults in place.
struct Strategy {
    bool along[2] = {false, false}; ///< x and y of the view
    double keep = 150;              ///< mm of the model
    double interval = 1000;         ///< mm of the model
    double gap = 5;                 ///< mm on the sheet
    double extension = 3;           ///< mm on the sheet
    bool oblique = false;
    int type = 1; ///< 1 straight, 2 no break line, 3 zigzag, 4 oblique
    LinetypeDefinitionPtr linetype;
    std::int32_t linetypeKey = 0;
    const StructDetViewLengthClip* record = nullptr;
};

/// The stretches along x (0) or y (1) of a view to be cut out: without any detail, and longer than the
/// interval after something was kept at both sides.
std::vector<std::pair<double, double>> stretches(const ViewLines& seen, int direction,
                                                 const Strategy& strategy);

/// What has to go in the other direction with a stretch along x (0) or y (1), so that an oblique line that
/// goes through it stays one line; nothing where none does.
std::optional<std::pair<double, double>> alongOblique(const ViewLines& seen, int direction,
                                                      const std::pair<double, double>& stretch);

/// The lines as they are left when `cuts` are taken out in a direction; pieces in a cut are gone.
std::vector<ViewLine> without(const std::vector<ViewLine>& lines, int direction,
                              const std::vector<std::pair<double, double>>& cuts);

/// The break lines of a view. `lines` are those before anything was cut out; `maps` those of x and y.
Primitives breakLines(const ViewLines& seen, const AxisMap maps[2], const Strategy& strategy, const Pen& pen,
                      const ProvenancePtr& provenance);

} // namespace LengthClipping
