#pragma once

#include "base/Result.h"

#include <filesystem>
#include <system_error>

/// The failure to write a file, with the system's reason.
Result<> fileNotWritten(const std::filesystem::path& file, const std::error_code& error);
