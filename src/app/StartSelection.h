#pragma once

#include "app/RowChoice.h"

/// Loads the sections and remembers a detail style as the selected entry, so that the editor opens with it.
/// Returns false when the sections do not show it, such as a style without a category.
bool selectAtStart(const RowChoice& style);
