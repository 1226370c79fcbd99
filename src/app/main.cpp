#include "app/CommandLine.h"
#include "base/EditorSession.h"

int main(int argc, char** argv) {
    const EditorSession session;
    return runCommandLine(argc, argv);
}
