#pragma once

#include "app/Commands.h"

/// Opens the editor on the open databases and runs it until it is closed, or, where a screenshot is wanted,
/// paints it into that file. `argv` is the program's own. Returns an exit code.
int openEditor(char** argv, DataFolder& folder, const EditOptions& options);
