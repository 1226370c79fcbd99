#include "services/KorTextFile.h"

#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace KorTextFile {

bool readLines(const fs::path& file, std::vector<KorString>& lines) {
    std::error_code error;
    std::ifstream stream(file, std::ios::binary);
    if (!stream || fs::is_directory(file, error))
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

bool writeSynced(const fs::path& file, const std::string& text) {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (descriptor < 0)
        return false;
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(descriptor, text.data() + done, text.size() - done);
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    const bool synced = done == text.size() && ::fsync(descriptor) == 0;
    return ::close(descriptor) == 0 && synced;
}

} // namespace

bool replace(const fs::path& file, const std::string& text) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    fs::path temporary = file;
    temporary += ".new";
    if (writeSynced(temporary, text)) {
        fs::rename(temporary, file, error);
        if (!error)
            return true;
    }
    fs::remove(temporary, error);
    return false;
}

} // namespace KorTextFile
