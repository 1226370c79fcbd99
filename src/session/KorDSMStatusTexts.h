#pragma once

#include "model/items/KorDSMDatabaseItem.h"

/// What the status line says about a selected item: what its kind is called, or `entryText` itself. Empty
/// for kinds about which nothing is said.
KorString statusTextOf(const KorDSMDatabaseItem& item, const KorString& entryText);
