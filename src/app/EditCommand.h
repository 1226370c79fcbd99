#pragma once

#include "app/Commands.h"
#include "app/WindowStart.h"

/// Opens the editor on the open databases and runs it until it is closed, or, where a screenshot is wanted,
/// paints it into that file. Returns an exit code.
int openEditor(WindowStart& start, DataFolder& folder, const EditOptions& options);
