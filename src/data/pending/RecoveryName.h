#pragma once

#include <string>
#include <string_view>

#include <sys/types.h>

/// The names of recovery files: "recovery-PID-N-CHECK". The last part follows from the others, so that no
/// name that somebody else gives to a file is taken for one.
namespace RecoveryName {

/// The `number`th name of a process, from 1.
std::string of(pid_t process, int number);
/// Whether a file of this name was made by this program: even an empty one is then no file of the user's.
bool isProven(std::string_view name);
/// Whether the name is, or may be, of a recovery file: earlier versions left "recovery-PID" and
/// "recovery-PID-N".
bool isPossible(std::string_view name);

} // namespace RecoveryName
