#pragma once

/// Keeps all pending changes for good. Tells the user what could not be kept, one sentence for each file and
/// each conflict. Returns whether everything is stored.
bool keepChanges();
