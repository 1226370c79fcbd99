#pragma once

#include "records/TableSchema.h"

#include <filesystem>

/// The names that a data folder has, read from its files alone: nothing is made, changed or waited for, and
/// what cannot be read has none. For help while a command line is typed.
class StoredNames {
public:
    /// `data` as the option --data names it; empty: the desktop's.
    explicit StoredNames(const std::string& data);

    /// Sources, as the command line names them.
    std::vector<std::string> sources() const;
    /// What the rows of a table in a source, or in all of them, are called on the screen, each once, in the
    /// order of the alphabet.
    std::vector<std::string> records(const TableSchema& table, const std::string& source) const;

private:
    /// The database files by the names of their sources.
    std::vector<std::pair<std::string, std::filesystem::path>> files() const;

    std::filesystem::path m_folder;
};
