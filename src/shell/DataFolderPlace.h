#pragma once

#include <filesystem>
#include <string>

/// The folder that the user named, else the first `detailstyles` folder among the places where the desktop
/// keeps data of programs, else the one that would be made in the user's own place.
std::filesystem::path locateDataFolder(const std::string& named);
