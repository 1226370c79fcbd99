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

/// Names of parts, each with the words that say for which styles it is.
using Words = std::vector<std::pair<std::string, std::vector<std::string>>>;
/// Of all parts of the folder that can be read.
Words words(const std::filesystem::path& folder);
/// The name of the part that suits a style best: whose word occurs first in one of these texts, tried in
/// their order; of several the longest word. The first part where none does; empty without any.
std::string suiting(const Words& parts, const std::vector<std::string>& texts);

} // namespace SampleParts
