#pragma once

#include "base/KorString.h"

/// Names one installed add-in: the name of its folder, and its number in the order in which the add-in
/// manager lists the installed ones (from 0).
struct KorAddInId {
    KorString id;
    int number = -1;

    bool operator==(const KorAddInId&) const = default;
};
