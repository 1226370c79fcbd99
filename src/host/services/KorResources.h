#pragma once

#include <filesystem>

/// Where the files that are not code lie: prompts, pictures, help topics, samples.
class KorResources {
public:
    /// The folder; until `setFolder` it is the one that the environment variable DETAILSTYLES_RESOURCES
    /// names, else the one beside the module or program, else where the program was to be installed.
    static const std::filesystem::path& folder();
    static void setFolder(const std::filesystem::path& folder);
};
