#pragma once

/// Which source is current and whether it may be edited, and the reload flags between host and editor. Of
/// KorOdbcMan only the members marked DETAILSTYLES_API can be reached from outside the module.
#include "operations/KorOdbcMan.h"
