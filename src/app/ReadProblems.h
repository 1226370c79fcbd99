#pragma once

#include "base/KorString.h"

/// Tells the user what could not be read as declared in the databases used so far. Returns whether anything
/// was left out or replaced by a default, or read in two states of a database.
bool complainOfReading();
/// Tells the user why a command stops, unless that function has told it.
void complainUnlessTold(const KorString& reason);
