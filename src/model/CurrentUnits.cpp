#include "model/CurrentUnits.h"

const KorUnitsManager& getUnitsOfCurrentDatabase() {
    double unit = 0.0;
    kor_odbc_getDefault("C01_DistanceUnit", unit);
    return unit == 1.0 ? KorUnitsManager::imperial() : KorUnitsManager::metric();
}

ScaleUnitType getScaleUnitsOfCurrentDatabase() {
    return getUnitsOfCurrentDatabase().getBasisUnitForDistanceIsImperial() ? kScalesImperial : kScalesMetric;
}
