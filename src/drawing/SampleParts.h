#pragma once

#include "base/Result.h"
#include "drawing/SamplePart.h"

#include <filesystem>

/// The sample parts of a folder.
namespace SampleParts {

/// The names of the files without their ending, in the order of the alphabet.
std::vector<std::string> names(const std::filesystem::path& folder);
/// Reads a part file. A failure names the file and the line.
Result<SamplePart> readFile(const std::filesystem::path& file);
/// Reads the part of this name, that of its file or its own, in upper or lower case. Where there is none the
/// failure names those that there are.
Result<SamplePart> read(const std::filesystem::path& folder, const std::string& name);

} // namespace SampleParts
