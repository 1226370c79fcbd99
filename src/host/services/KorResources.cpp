#include "services/KorResources.h"

#include <cstdlib>

namespace {

std::filesystem::path& current() {
    static std::filesystem::path folder = [] {
        const char* fromEnvironment = std::getenv("DETAILSTYLES_RESOURCES");
        return std::filesystem::path(fromEnvironment ? fromEnvironment : "");
    }();
    return folder;
}

} // namespace

const std::filesystem::path& KorResources::folder() {
    return current();
}

void KorResources::setFolder(const std::filesystem::path& folder) {
    current() = folder;
}
