#pragma once

/// A line type that the host draws without a file.
struct HostLinetype {
    int id; ///< by which records name it
    const char* name;
    const char* pattern; ///< as in line type files
};

namespace HostLinetypes {

inline constexpr HostLinetype kAll[] = {
    {1, "CONTINUOUS", "A,1"}, {2, "DASH", "A,6,-3"},          {3, "LONG_DASH", "A,12,-4"},
    {4, "DOT", "A,0,-1.5"},   {5, "DASH_DOT", "A,9,-2,0,-2"}, {6, "DASH_DOT_DOT", "A,9,-2,0,-2,0,-2"},
};

} // namespace HostLinetypes
