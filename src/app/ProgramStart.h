#pragma once

/// Makes the program's services ready, before anything else: where resources lie, the language of texts and
/// the user's decimal mark. What goes wrong is put into the host report.
void startServices();
