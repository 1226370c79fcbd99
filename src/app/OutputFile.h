#pragma once

#include "base/KorString.h"

/// Files that the user names for a command to write.
namespace OutputFile {

/// Why `file` must not be written, as a sentence for the user; empty when it may be. A file that is there is
/// replaced only with `overwrite`; what is no ordinary file and a database that is open here never are.
KorString hindrance(const std::string& file, bool overwrite);
/// The same of a picture, which never replaces a database.
KorString hindranceOfPicture(const std::string& file, bool overwrite);

} // namespace OutputFile
