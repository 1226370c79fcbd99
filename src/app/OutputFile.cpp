#include "app/OutputFile.h"

#include "base/Translation.h"
#include "data/store/FileIdentity.h"

#include <filesystem>

namespace fs = std::filesystem;

KorString OutputFile::hindrance(const std::string& file, bool overwrite) {
    constexpr std::size_t kLongestName = 255 - 32; // the new file has a longer one until it is whole
    std::error_code error;
    const fs::file_status named = fs::symlink_status(file, error);
    if (error == std::errc::filename_too_long || fs::path(file).filename().native().size() > kLongestName)
        return KorString::format(translated("The file name \"%s\" is too long; choose a shorter one."),
                                 {file});
    if (!fs::exists(named))
        return {};
    const fs::file_status status = fs::status(file, error); // behind a link
    if (fs::exists(status) && !fs::is_regular_file(status))
        return KorString::format(
            translated("\"%s\" is no ordinary file and is never replaced; choose another file name."),
            {file});
    if (const auto present = fileIdentity(file); present && OpenFiles::contains(*present))
        return faultSentence(eStoreFault::kOpenHere, file);
    if (!overwrite)
        return KorString::format(
            translated("The file \"%s\" exists already; choose another name, or give --overwrite."), {file});
    return {};
}
