#pragma once

#include "data/store/FileIdentity.h"

#include <string>
#include <string_view>

/// With what the names of databases on a server begin; others are file names.
inline constexpr std::string_view kServerPrefix = "server:";

/// Whether a store of this name is a database on a server.
inline bool isServerName(std::string_view name) {
    return name.starts_with(kServerPrefix);
}

/// What tells the database of this name apart from all others, wherever the program was started.
inline std::string databasePlace(const std::string& name) {
    return isServerName(name) ? name : resolvedPath(name);
}
