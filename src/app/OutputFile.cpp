#include "app/OutputFile.h"

#include "base/Translation.h"
#include "data/store/FileIdentity.h"
#include "data/store/StoreFault.h"

#include <filesystem>

namespace fs = std::filesystem;

KorString OutputFile::hindrance(const std::string& file, bool overwrite) {
    constexpr std::size_t kLongestName = 255 - 40; // the new file has a longer one until it is whole
    std::error_code error;
    const fs::file_status named = fs::symlink_status(file, error);
    if (error == std::errc::filename_too_long || fs::path(file).filename().native().size() > kLongestName)
        return KorString::format(translated("The file name \"%s\" is too long; choose a shorter one."),
                                 {file});
    if (isNeighbourName(resolvedPath(file)) || isNeighbourName(file))
        return faultSentence(eStoreFault::kNeighbour, file);
    if (const fs::path folder = fs::path(resolvedPath(file)).parent_path();
        !folder.empty() && !fs::is_directory(folder, error))
        return faultSentence(eStoreFault::kFolderMissing, file);
    if (!fs::exists(named))
        return {};
    if (!fs::is_regular_file(fs::status(file, error))) // what a link leads to, if anything
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
