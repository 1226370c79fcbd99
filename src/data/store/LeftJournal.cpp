#include "data/store/LeftJournal.h"

#include "data/store/DatabaseFile.h"
#include "data/store/SqliteHandle.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>

namespace {

constexpr std::size_t kPageSizeAt = 16; // in a database file's first page
constexpr std::size_t kCounterAt = 24;  // counts the commits
constexpr std::size_t kMarkAt = 40;     // the number of the schema
constexpr std::size_t kHeaderSize = 44;
constexpr std::uint32_t kLeastMark = 0x10000; // a schema that nobody marked was not changed that often
constexpr sqlite3_int64 kJournalNumberAt = 12;

using Bytes = std::span<unsigned char>;

std::uint32_t numberAt(const unsigned char* bytes) {
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U |
           bytes[3];
}

bool hasFailed(int read) {
    return read != SQLITE_OK && read != SQLITE_IOERR_SHORT_READ;
}

/// Which commit of which file a first page is of.
struct Stamp {
    explicit Stamp(const unsigned char* page)
        : counter(numberAt(page + kCounterAt)), mark(numberAt(page + kMarkAt)) {}
    bool operator==(const Stamp&) const = default;

    std::uint32_t counter;
    std::uint32_t mark;
};

/// One segment's head: a segment is written through to the disk before the database is changed.
struct Segment {
    std::uint32_t records = 0;
    std::uint32_t number = 0;      ///< random
    std::uint32_t pagesBefore = 0; ///< the database's size in pages, as it was
    std::uint32_t sectorSize = 0;
    std::uint32_t pageSize = 0;

    std::uint64_t recordSize() const { return std::uint64_t{pageSize} + 8; }
    std::uint64_t recordAt(std::uint64_t start, std::uint32_t record) const {
        return start + sectorSize + record * recordSize();
    }
    std::uint64_t endFrom(std::uint64_t start) const {
        const std::uint64_t end = recordAt(start, records);
        return (end + sectorSize - 1) / sectorSize * sectorSize;
    }
};

class JournalFile {
public:
    explicit JournalFile(const std::string& path)
        : m_handle(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)),
          m_failed(m_handle < 0 && errno != ENOENT) {
        struct stat status {};
        if (m_handle >= 0 && fstat(m_handle, &status) == 0)
            m_size = static_cast<std::uint64_t>(status.st_size);
    }
    ~JournalFile() {
        if (m_handle >= 0)
            ::close(m_handle);
    }
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    /// Whether something could not be read that is there.
    bool hasFailed() const { return m_failed; }

    bool read(std::uint64_t offset, Bytes bytes) {
        const ssize_t count = pread(m_handle, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        m_failed = m_failed || (count < 0 && m_handle >= 0);
        return count == static_cast<ssize_t>(bytes.size());
    }

    std::optional<Segment> segmentAt(std::uint64_t offset) {
        constexpr std::array<unsigned char, 8> kMagic = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};
        constexpr std::uint32_t kToTheEnd = 0xFFFFFFFF; // of a program that did not wait for the disk
        std::array<unsigned char, 28> header{};
        if (!read(offset, header) || !std::equal(kMagic.begin(), kMagic.end(), header.begin()))
            return std::nullopt;
        Segment segment{numberAt(&header[8]), numberAt(&header[12]), numberAt(&header[16]),
                        numberAt(&header[20]), numberAt(&header[24])};
        if (segment.sectorSize < 32 || segment.sectorSize > 65536 || segment.pageSize < 512 ||
            segment.pageSize > 65536)
            return std::nullopt;
        const std::uint64_t records = offset + segment.sectorSize;
        if (segment.records == kToTheEnd)
            segment.records =
                m_size <= records ? 0 : static_cast<std::uint32_t>((m_size - records) / segment.recordSize());
        return segment;
    }

private:
    int m_handle;
    bool m_failed;
    std::uint64_t m_size = 0;
};

/// What taking the journal back would do to the file.
struct TakingBack {
    std::optional<Stamp> before; ///< of the first page, as the journal has it
    bool changesPages = false;
    bool failed = false;
};

TakingBack takingBack(JournalFile& journal, const DatabaseFile& database) {
    TakingBack found;
    std::uint64_t start = 0;
    for (auto segment = journal.segmentAt(start); segment; segment = journal.segmentAt(start)) {
        std::vector<unsigned char> record(segment->recordSize());
        std::vector<unsigned char> page(segment->pageSize);
        for (std::uint32_t i = 0; i < segment->records; ++i) {
            if (!journal.read(segment->recordAt(start, i), record)) // cut off, and not taken back from here
                break;
            const std::uint64_t number = numberAt(record.data());
            const unsigned char* original = record.data() + 4;
            if (number == 1)
                found.before = Stamp(original);
            const int read = database.read((number - 1) * segment->pageSize, page);
            found.failed = found.failed || hasFailed(read);
            found.changesPages =
                found.changesPages || read != SQLITE_OK || !std::equal(page.begin(), page.end(), original);
        }
        start = segment->endFrom(start);
    }
    found.failed = found.failed || journal.hasFailed();
    return found;
}

// The first page is written before all others, since no page is written before the commit.
bool isProven(const TakingBack& taking, const Segment& first, const Stamp& now) {
    if (!taking.before)
        return false;
    const bool isWritten = now.mark == first.number && now.counter == taking.before->counter + 1;
    const bool isBefore = now == *taking.before && now.mark >= kLeastMark;
    return isWritten || isBefore;
}

int setMark(sqlite3* db, std::uint32_t mark) {
    const std::string pragma = "PRAGMA schema_version = " + std::to_string(static_cast<std::int32_t>(mark));
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    const int code = sqlite3_exec(db, pragma.c_str(), nullptr, nullptr, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    return code;
}

} // namespace

eLeftJournal judgeLeftJournal(const std::string& path, sqlite3* db) {
    JournalFile journal(path);
    const auto first = journal.segmentAt(0);
    const DatabaseFile database(db);
    if (!first || database.isBeingWritten())
        return journal.hasFailed() ? eLeftJournal::kUnreadable : eLeftJournal::kNone;
    std::array<unsigned char, kHeaderSize> header{};
    const int read = database.read(0, header);
    const auto size = database.size();
    if (hasFailed(read) || !size)
        return eLeftJournal::kUnreadable;
    const std::uint32_t written = std::uint32_t{header[kPageSizeAt]} << 8U | header[kPageSizeAt + 1];
    if (read == SQLITE_IOERR_SHORT_READ || (written == 1 ? 65536 : written) != first->pageSize)
        return eLeftJournal::kOfAnotherFile;
    const TakingBack taking = takingBack(journal, database);
    if (taking.failed)
        return eLeftJournal::kUnreadable;
    const bool changesNothing =
        !taking.changesPages && *size == std::uint64_t{first->pagesBefore} * first->pageSize;
    return changesNothing || isProven(taking, *first, Stamp(header.data())) ? eLeftJournal::kOfThisFile
                                                                            : eLeftJournal::kOfAnotherFile;
}

bool isBeingWritten(const std::string& path) {
    SqliteConnection connection;
    return connection.open(path, true) == SQLITE_OK && DatabaseFile(connection.get()).isBeingWritten();
}

int markChange(sqlite3* db) {
    sqlite3_file* journal = nullptr;
    if (sqlite3_file_control(db, "main", SQLITE_FCNTL_JOURNAL_POINTER, &journal) != SQLITE_OK || !journal ||
        !journal->pMethods)
        return SQLITE_OK;
    std::array<unsigned char, 4> number{};
    const int code = journal->pMethods->xRead(journal, number.data(), 4, kJournalNumberAt);
    return code == SQLITE_OK ? setMark(db, numberAt(number.data())) : code;
}
