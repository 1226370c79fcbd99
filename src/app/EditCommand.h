#pragma once

#include "app/Commands.h"
#include "app/WindowStart.h"

/// Leaves to another start of the program what was to be shown, where that can be done before the databases
/// are open: where one is on a server, which nobody has to wait for then. Returns whether it was; otherwise
/// other starts find this one from now on.
bool leaveToAnother(WindowStart& start, const DataFolder& folder, const EditOptions& options);
/// Opens the editor on the open databases and runs it until it is closed, or, where a screenshot is wanted,
/// paints it into that file. Returns an exit code.
int openEditor(WindowStart& start, DataFolder& folder, const EditOptions& options);
