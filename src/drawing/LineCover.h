#pragma once

#include "drawing/ViewLine.h"

/// Without the stretches that others lie upon: visible lines before hidden ones, nearer before farther ones.
std::vector<ViewLine> withoutCovered(const std::vector<ViewLine>& lines);
