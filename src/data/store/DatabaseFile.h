#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <span>

/// The file of an open database by the engine's own handle, so that no other handle is opened and closed,
/// which would drop the locks. Valid as long as the connection.
class DatabaseFile {
public:
    explicit DatabaseFile(sqlite3* db) {
        if (!db || sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &m_file) != SQLITE_OK ||
            !m_file->pMethods)
            m_file = nullptr;
    }

    /// Whether some connection, of this process or another one, is changing it.
    bool isBeingWritten() const {
        int atWork = 0;
        return m_file && m_file->pMethods->xCheckReservedLock(m_file, &atWork) == SQLITE_OK && atWork != 0;
    }
    /// Returns an SQLite result code: SQLITE_IOERR_SHORT_READ, with zeros behind, where the file ends before.
    int read(std::uint64_t offset, std::span<unsigned char> bytes) const {
        return m_file ? m_file->pMethods->xRead(m_file, bytes.data(), static_cast<int>(bytes.size()),
                                                static_cast<sqlite3_int64>(offset))
                      : SQLITE_IOERR_READ;
    }
    /// In bytes; none where it cannot be told.
    std::optional<std::uint64_t> size() const {
        sqlite3_int64 bytes = 0;
        if (!m_file || m_file->pMethods->xFileSize(m_file, &bytes) != SQLITE_OK)
            return std::nullopt;
        return static_cast<std::uint64_t>(bytes);
    }

private:
    sqlite3_file* m_file = nullptr;
};
