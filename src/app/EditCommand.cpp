#include "app/EditCommand.h"

#include "app/Console.h"

int openEditor(int&, char**, DataFolder&, const EditOptions&) {
    Console::complain("The editor window is not built into this program; use the commands, see --help.");
    return kExitFailed;
}
