#pragma once

#include "model/items/KorDSMDatabaseItem.h"

/// Hands a detail style to the host through the exchange queue "DETAILSTYLESMANAGERNEW": "RESULT1" and
/// "RESULT2" the pair of numbers of its master, "RESULT3" the source ("Standard", "User" or the add-in's
/// name), "RESULT4" the add-in's number for add-ins.
class KorDSMHandOver {
public:
    static constexpr const char* kQueue = "DETAILSTYLESMANAGERNEW";

    /// Takes the results of an earlier hand-over out, and puts those for the detail style that `item` is or
    /// lies in. Nothing is put when there is none or its master cannot be read. The item's source must be
    /// current. Returns whether results were put.
    static bool put(const KorDSMDatabaseItem* item);
};
