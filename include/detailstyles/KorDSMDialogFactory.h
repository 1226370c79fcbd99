#pragma once

/// Opening the editor, and what it shows: KorDSMDialogFactory and KorDSMDataStructure.
#include "model/KorDSMDialogFactory.h"
