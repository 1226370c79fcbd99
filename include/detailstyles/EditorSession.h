#pragma once

/// One run of the editor with all that belongs to it, for hosts that want more than one.
#include "base/EditorSession.h"
