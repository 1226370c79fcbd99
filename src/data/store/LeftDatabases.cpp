#include "data/store/LeftDatabases.h"

#include "base/TemporaryFile.h"
#include "data/store/SchemaHistory.h"

#include <unistd.h>

#include <array>

namespace {

// The identifier is written before anything else is.
bool isStyleDatabase(int handle) {
    constexpr off_t kIdentifierAt = 68;
    std::array<char, 16> title{};
    std::array<unsigned char, 4> id{};
    return pread(handle, title.data(), title.size(), 0) == static_cast<ssize_t>(title.size()) &&
           std::string_view(title.data(), title.size()) == std::string_view("SQLite format 3\0", 16) &&
           pread(handle, id.data(), id.size(), kIdentifierAt) == static_cast<ssize_t>(id.size()) &&
           (id[0] << 24 | id[1] << 16 | id[2] << 8 | id[3]) == SchemaHistory::kApplicationId;
}

} // namespace

void removeLeftDatabases(const std::string& folder) {
    removeLeftTemporaryFiles(folder, [](const std::string&, int handle) {
        return lseek(handle, 0, SEEK_END) == 0 || isStyleDatabase(handle);
    });
}
