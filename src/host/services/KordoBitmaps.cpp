#include "services/KordoBitmaps.h"

#include "services/KorResources.h"

namespace fs = std::filesystem;

namespace {

fs::path existing(const fs::path& file) {
    std::error_code ignored;
    return fs::exists(file, ignored) ? file : fs::path();
}

fs::path bitmapFile(int number) {
    return existing(KorResources::folder() / "bitmaps" / (std::to_string(number) + ".svg"));
}

} // namespace

fs::path KordoBitmaps::ReadDIBFromDll(const KorString& library, int number) {
    return library == kLibrary ? bitmapFile(number) : fs::path();
}

fs::path KordoBitmaps::pictureFile(const KorString& name) {
    return name.isEmpty() ? fs::path() : existing(KorResources::folder() / name.toStdString());
}
