#pragma once

#include <filesystem>
#include <string>

/// The folder that the user named, else `detailstyles` in the user's own place, else the first such folder
/// among the places where the desktop keeps data of programs that holds databases, else the user's own, which
/// is not there yet.
std::filesystem::path locateDataFolder(const std::string& named);
