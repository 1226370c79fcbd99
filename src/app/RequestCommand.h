#pragma once

#include "app/Commands.h"
#include "app/WindowStart.h"

/// Lets the user choose a view request in the dialog that other parts of a host open, and prints what such a
/// part is given: the integers of the exchange queue. Returns an exit code, that of a failure also where
/// nothing was chosen.
int chooseRequest(WindowStart& start, DataFolder& folder, const RequestOptions& options);
