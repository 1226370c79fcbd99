#include "services/KorResources.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

namespace {

// The file that holds this code. A program that was found along PATH is known by its bare name only.
std::filesystem::path moduleFile() {
    Dl_info info{};
    dladdr(reinterpret_cast<const void*>(&KorResources::folder), &info);
    const bool hasFolder = info.dli_fname && std::strchr(info.dli_fname, '/');
    std::error_code error;
    return std::filesystem::canonical(hasFolder ? info.dli_fname : "/proc/self/exe", error);
}

std::filesystem::path findFolder() {
    const char* fromEnvironment = std::getenv("DETAILSTYLES_RESOURCES");
    if (fromEnvironment && *fromEnvironment)
        return fromEnvironment;
    std::error_code error;
    for (std::filesystem::path folder = moduleFile().parent_path(); folder.has_relative_path();
         folder = folder.parent_path())
        if (auto resources = folder / "share" / "detailstyles";
            std::filesystem::is_directory(resources, error))
            return resources;
    return DETAILSTYLES_INSTALLED_RESOURCES;
}

std::filesystem::path& current() {
    static std::filesystem::path folder = findFolder();
    return folder;
}

} // namespace

const std::filesystem::path& KorResources::folder() {
    return current();
}

void KorResources::setFolder(const std::filesystem::path& folder) {
    current() = folder;
}
