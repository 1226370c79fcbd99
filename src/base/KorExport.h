#pragma once

/// Marks what the shared library shows to hosts; everything else is hidden.
#define DETAILSTYLES_API __attribute__((visibility("default")))
