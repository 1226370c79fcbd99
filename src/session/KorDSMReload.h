#pragma once

#include "model/KorDSMDataStructure.h"

/// Empties the data structure and loads it anew. The selected section, the source to which it adds and the
/// places that were selected stay; all items are others afterwards, so nobody may hold on to one.
void reloadDataStructure(KorDSMDataStructure& structure);
