#pragma once

#include "services/KorUnitsManager.h"

/// The units of the current database: imperial when its numeric default "C01_DistanceUnit" is 1, else
/// metric.
const KorUnitsManager& getUnitsOfCurrentDatabase();
