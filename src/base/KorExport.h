#pragma once

/// Marks what the shared library shows to hosts; everything else is hidden.
#define DETAILSTYLES_API __attribute__((visibility("default")))
/// A member of a class that is shown, and is hidden all the same.
#define DETAILSTYLES_HIDDEN __attribute__((visibility("hidden")))
