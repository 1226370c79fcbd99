#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// The content of a file, empty when there is none.
inline std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void writeBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

/// A folder that lasts as long as the test.
class TempFolder {
public:
    TempFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "detailstyles-XXXXXX";
        m_path = mkdtemp(pattern.data());
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& path() const { return m_path; }
    std::string file(const std::string& name) const { return (m_path / name).string(); }
    /// How many files and folders lie in it.
    int count() const {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator(m_path), {}));
    }

    /// Writes a file, making the folders that it needs, and returns its path.
    std::filesystem::path write(const std::filesystem::path& name, const std::string& content) const {
        const std::filesystem::path file = m_path / name;
        std::filesystem::create_directories(file.parent_path());
        writeBytes(file, content);
        return file;
    }
    std::string read(const std::filesystem::path& name) const { return bytesOf(m_path / name); }

private:
    std::filesystem::path m_path;
};
