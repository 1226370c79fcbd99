#pragma once

#include "base/KorString.h"

#include <filesystem>

/// The bitmap store: pictures of the bitmap library by number, and pictures of the module by name.
class KordoBitmaps {
public:
    static constexpr const char* kLibrary = "KorDetailBitmaps.dll";

    /// Picture file of a bitmap of the library. Empty for another library, or when there is no such number.
    static std::filesystem::path ReadDIBFromDll(const KorString& library, int number);
    /// Absolute path of a picture file given by name below the resources; absolute paths stay.
    static std::filesystem::path pictureFile(const KorString& name);
};
