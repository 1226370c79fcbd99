#include "services/KorTextFile.h"

#include "base/FileFailure.h"
#include "base/TemporaryFile.h"
#include "base/WriteAll.h"

#include <cerrno>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace KorTextFile {

bool readLines(const fs::path& file, std::vector<KorString>& lines, std::uintmax_t largest) {
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > largest)
        return false;
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return false;
    lines.clear();
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (lines.empty() && line.starts_with("\xEF\xBB\xBF"))
            line.erase(0, 3);
        lines.emplace_back(line);
    }
    return !stream.bad();
}

namespace {

// Returns 0, or the errno.
int writeInto(int descriptor, const std::string& text, const fs::path& original) {
    struct stat status {};
    const bool keepsMode =
        ::stat(original.c_str(), &status) != 0 || ::fchmod(descriptor, status.st_mode & 07777) == 0;
    return keepsMode && writeAll(descriptor, text) ? 0 : errno != 0 ? errno : EIO;
}

Result<> failed(const fs::path& file, int code) {
    return fileNotWritten(file, std::error_code(code, std::generic_category()));
}

} // namespace

Result<> replace(const fs::path& file, const std::string& text, bool mayReplace) {
    std::error_code error;
    const fs::path target = fs::is_symlink(file, error) ? fs::weakly_canonical(file, error) : file;
    if (const fs::file_status present = fs::symlink_status(target, error); // a link to nothing is one still
        fs::exists(present) && !fs::is_regular_file(present))
        return failed(file, fs::is_directory(present) ? EISDIR : EEXIST);
    fs::create_directories(target.parent_path(), error);
    removeLeftTemporaryFiles(target.parent_path().string(),
                             [&](const std::string& name, int) { return target.filename() == name; });
    TemporaryFile temporary; // of its own: two programs may write at the same time
    int code = temporary.create(target.string(), 0644);
    if (code == 0)
        code = writeInto(temporary.handle(), text, target);
    if (code == 0)
        code = temporary.publish(target.string(), mayReplace);
    return code == 0 ? Result<>() : failed(file, code);
}

KorString lineList(const std::vector<int>& numbers) {
    constexpr std::size_t kMost = 5;
    std::string text;
    for (std::size_t i = 0; i < numbers.size() && i < kMost; ++i)
        text += (i > 0 ? ", " : "") + std::to_string(numbers[i]);
    return KorString(numbers.size() > kMost ? text + ", ..." : text);
}

} // namespace KorTextFile
