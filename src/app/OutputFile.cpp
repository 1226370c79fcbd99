#include "app/OutputFile.h"

#include "base/Translation.h"
#include "data/store/FileIdentity.h"
#include "data/store/StoreFault.h"

#include <filesystem>
#include <fstream>
#include <string_view>

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

// With wrong settings no source is open that would say what the file is.
KorString OutputFile::hindranceOfPicture(const std::string& file, bool overwrite) {
    if (const KorString other = hindrance(file, overwrite); !other.isEmpty())
        return other;
    constexpr std::string_view kHead = "SQLite format 3";
    std::string head(kHead.size(), '\0');
    std::ifstream(file, std::ios::binary).read(head.data(), static_cast<std::streamsize>(head.size()));
    return head == kHead ? KorString::format(translated("\"%s\" is a database and is never replaced by a "
                                                        "picture; choose another file name."),
                                             {file})
                         : KorString();
}
