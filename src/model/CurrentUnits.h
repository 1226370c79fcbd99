#pragma once

#include "operations/KorScales.h"
#include "services/KorUnitsManager.h"

/// The units of the current database: imperial when its numeric default "C01_DistanceUnit" is 1, else
/// metric.
const KorUnitsManager& getUnitsOfCurrentDatabase();

/// The kind of scales that goes with them.
ScaleUnitType getScaleUnitsOfCurrentDatabase();
