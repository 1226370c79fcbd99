#pragma once

#include "base/Result.h"

#include <filesystem>
#include <vector>

/// Small text files in UTF-8.
namespace KorTextFile {

/// All lines without their line breaks (LF or CR LF), and without a byte order mark. Returns false when the
/// file cannot be read, is no ordinary file (a pipe would keep the program waiting, a device may never end),
/// or is larger than `largest` bytes.
bool readLines(const std::filesystem::path& file, std::vector<KorString>& lines,
               std::uintmax_t largest = 16U << 20);

/// Replaces the file's content as a whole: a temporary file beside it is written, synced and renamed. Makes
/// the folder when it is missing, keeps the file's permissions, and follows a symbolic link. Never replaces
/// anything but an ordinary file, and where `mayReplace` is false nothing at all. After a failure the old
/// file is untouched.
Result<> replace(const std::filesystem::path& file, const std::string& text, bool mayReplace = true);

/// Line numbers as a report names them: "3, 8, 12"; after the fifth, dots.
KorString lineList(const std::vector<int>& numbers);

} // namespace KorTextFile
