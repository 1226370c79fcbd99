#include "data/store/LeftJournal.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <optional>

namespace {

constexpr std::size_t kCounterAt = 24; // in a database file's first page: counts its commits
constexpr std::size_t kPageSizeAt = 16;
constexpr std::size_t kHeaderSize = 28;
using Header = std::array<unsigned char, kHeaderSize>;

std::uint32_t numberAt(const unsigned char* bytes) {
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U |
           bytes[3];
}

/// One segment's head: a segment is written through to the disk before the database is changed.
struct Segment {
    std::uint32_t records = 0;
    std::uint32_t pagesBefore = 0; ///< the database's size in pages, as it was
    std::uint32_t sectorSize = 0;
    std::uint32_t pageSize = 0;

    std::uint64_t recordSize() const { return std::uint64_t{pageSize} + 8; }
    std::uint64_t endFrom(std::uint64_t start) const {
        const std::uint64_t end = start + sectorSize + records * recordSize();
        return (end + sectorSize - 1) / sectorSize * sectorSize;
    }
};

bool readAt(std::ifstream& stream, std::uint64_t offset, unsigned char* bytes, std::size_t count) {
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(offset));
    return static_cast<bool>(stream.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count)));
}

std::optional<Segment> readSegment(std::ifstream& stream, std::uint64_t offset) {
    constexpr std::array<unsigned char, 8> kMagic = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};
    Header header{};
    if (!readAt(stream, offset, header.data(), header.size()) ||
        !std::equal(kMagic.begin(), kMagic.end(), header.begin()))
        return std::nullopt;
    const Segment segment{numberAt(&header[8]), numberAt(&header[16]), numberAt(&header[20]),
                          numberAt(&header[24])};
    const bool usable = segment.sectorSize >= 32 && segment.sectorSize <= 65536 && segment.pageSize >= 512 &&
                        segment.pageSize <= 65536;
    return usable ? std::optional(segment) : std::nullopt;
}

// The commit counter of the first page as the journal has it.
std::optional<std::uint32_t> counterIn(std::ifstream& stream) {
    std::uint64_t start = 0;
    for (auto segment = readSegment(stream, start); segment; segment = readSegment(stream, start)) {
        for (std::uint32_t i = 0; i < segment->records; ++i) {
            const std::uint64_t record = start + segment->sectorSize + i * segment->recordSize();
            std::array<unsigned char, 4 + kCounterAt + 4> bytes{};
            if (!readAt(stream, record, bytes.data(), bytes.size()))
                return std::nullopt;
            if (numberAt(bytes.data()) == 1)
                return numberAt(&bytes[4 + kCounterAt]);
        }
        start = segment->endFrom(start);
    }
    return std::nullopt;
}

} // namespace

bool isJournalOfAnotherFile(const std::string& journal, sqlite3* db) {
    std::ifstream stream(journal, std::ios::binary);
    const auto first = stream ? readSegment(stream, 0) : std::nullopt;
    if (!first)
        return false;
    const auto counter = counterIn(stream);
    sqlite3_file* file = nullptr;
    Header header{};
    sqlite3_int64 size = 0;
    int atWork = 0;
    if (sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || !file->pMethods ||
        file->pMethods->xCheckReservedLock(file, &atWork) != SQLITE_OK || atWork != 0 ||
        file->pMethods->xRead(file, header.data(), header.size(), 0) != SQLITE_OK ||
        file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        return false;
    const std::uint32_t written = std::uint32_t{header[kPageSizeAt]} << 8U | header[kPageSizeAt + 1];
    if ((written == 1 ? 65536 : written) != first->pageSize)
        return true;
    const sqlite3_int64 before = static_cast<sqlite3_int64>(first->pagesBefore) * first->pageSize;
    if (first->records == 0) // nothing was changed yet
        return size != before;
    if (!counter) // a change that was far from its end, when files only grow
        return size < before;
    const std::uint32_t now = numberAt(&header[kCounterAt]);
    return now != *counter && now != *counter + 1;
}
