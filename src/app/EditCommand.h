#pragma once

#include "app/Commands.h"

/// Opens the editor on the open databases and runs it until it is closed, or, where a screenshot is wanted,
/// paints it into that file. `argc` and `argv` are the program's own, for the window system. Returns an exit
/// code.
int openEditor(int& argc, char** argv, DataFolder& folder, const EditOptions& options);
