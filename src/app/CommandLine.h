#pragma once

/// Reads the command line and does what it says. Returns the exit code.
int runCommandLine(int argc, char** argv);
