#include "data/pending/RecoveryFile.h"

#include "base/Translation.h"
#include "data/store/FileIdentity.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr off_t kLargest = 256 << 20;

// The sources of a file that are not open have ids of their own, which no database can have.
SourceId idOfMissing(int number) {
    return {KorDSNDefinitions::kLast, static_cast<eIndex>(number)};
}

bool isOrdinaryFile(const fs::path& file) {
    struct stat status {};
    return ::lstat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// The lock, if the file has no owner and is still there; nobody waits for it. An empty file holds nothing, or
// belongs to a program that waits for its lock now and makes another one.
int lockedDescriptor(const fs::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return -1;
    struct stat status {};
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::fstat(descriptor, &status) == 0 &&
        status.st_nlink > 0) {
        if (status.st_size > 0)
            return descriptor;
        ::unlink(file.c_str());
    }
    ::close(descriptor);
    return -1;
}

// Whether a commit of these tables of one source took place, of which nothing is known but that it began: it
// stored all of the change or nothing. What other programs stored since may hide some of it.
bool wasStored(StyleSource& source, PendingLog& changes, const std::vector<PendingPlace>& storing) {
    int stored = 0;
    const auto count = [&stored](bool isStored) { stored += isStored ? 1 : -1; };
    for (const auto& [id, type] : storing) {
        if (!source.readingOf(type))
            return false;
        const StyleTable& table = source.table(type);
        const TableChange change = changes.netChange(id, type);
        for (const CellChange& cell : change.cells)
            if (const StructRecord* row = table.find(KorOdbcKey(cell.key)))
                if (const CellValue now = cell.column->read(row); now == cell.wanted || now == cell.stored)
                    count(now == cell.wanted);
        for (const StructRecord* record : change.appended) {
            const StructRecord* row = table.find(KorOdbcKey(record->key));
            count(row && row->name == record->name);
        }
        for (const StructRecord* record : change.deleted)
            count(!table.find(KorOdbcKey(record->key)));
    }
    return stored > 0;
}

} // namespace

std::vector<RecoveryFile> RecoveryFile::abandonedIn(const fs::path& folder) {
    std::vector<RecoveryFile> files;
    std::error_code error;
    std::vector<std::pair<fs::file_time_type, fs::path>> found;
    for (auto it = fs::directory_iterator(folder, error); !error && it != fs::directory_iterator();
         it.increment(error))
        if (it->path().filename().string().starts_with("recovery-") && isOrdinaryFile(it->path())) {
            std::error_code ignored;
            found.emplace_back(fs::last_write_time(it->path(), ignored), it->path());
        }
    std::ranges::sort(found);
    for (const auto& [time, file] : found)
        if (const int descriptor = lockedDescriptor(file); descriptor >= 0)
            files.push_back(RecoveryFile(file, descriptor));
    return files;
}

RecoveryFile::RecoveryFile(fs::path file, int descriptor)
    : m_file(std::move(file)), m_descriptor(descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) == 0)
        m_time = status.st_mtime;
}

RecoveryFile::RecoveryFile(RecoveryFile&& other) noexcept
    : m_file(std::move(other.m_file)), m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_time(other.m_time), m_changes(std::move(other.m_changes)), m_settled(std::move(other.m_settled)),
      m_end(other.m_end), m_seal(other.m_seal), m_missing(std::move(other.m_missing)),
      m_readOnly(std::move(other.m_readOnly)), m_replaced(std::move(other.m_replaced)) {}

RecoveryFile::~RecoveryFile() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool RecoveryFile::readText(std::string& text) const {
    struct stat status {};
    if (::fstat(m_descriptor, &status) != 0 || status.st_size > kLargest)
        return false;
    text.resize(static_cast<std::size_t>(status.st_size));
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count =
            ::pread(m_descriptor, text.data() + done, text.size() - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

StoreResult RecoveryFile::read(StyleDatabases& databases) {
    std::vector<std::pair<SourceId, RecoverySource>> named;
    const auto idOf = [&](const RecoverySource& source) {
        SourceId found = idOfMissing(source.number);
        for (const SourceId id : databases.sources())
            if (resolvedPath(databases.source(id)->store().name()) == source.path) {
                if (databases.isEditable(id))
                    found = id;
                else
                    m_readOnly.push_back(source.path);
            }
        named.emplace_back(found, source);
        return found;
    };
    std::string text;
    RecoveryText::Parsed parsed;
    if (readText(text))
        parsed = RecoveryText::parse(text, idOf);
    if (!parsed.changes)
        return StoreResult::failure(KorString::format(
            translated(
                "The file \"%s\" with the changes of an earlier run is damaged or of another version, so "
                "they were not offered; delete it when you do not need them."),
            {m_file.string()}));
    m_changes = std::move(parsed.changes);
    m_end = static_cast<off_t>(parsed.size);
    m_seal = parsed.seal;
    for (const auto& [id, source] : named)
        sort(id, source);
    std::erase_if(m_readOnly, [this](const std::string& path) {
        return std::ranges::find(m_missing, path) == m_missing.end();
    });
    leaveStored(databases, parsed.storing);
    return {};
}

void RecoveryFile::sort(SourceId id, const RecoverySource& source) {
    if (!m_changes->hasPending(id))
        return;
    if (id.dsn == KorDSNDefinitions::kLast) {
        m_missing.push_back(source.path);
        m_changes->forget(id);
        return;
    }
    if (fileStamp(source.path) != source.stamp)
        m_replaced.push_back(source.path);
    for (const TableSchema& table : allTables())
        if (m_changes->hasPending(id, table.type))
            m_settled += RecoveryText::forgotten(source.number, table.type);
}

void RecoveryFile::leaveStored(StyleDatabases& databases, const std::vector<PendingPlace>& storing) {
    if (storing.empty() || !databases.source(storing.front().first) ||
        !wasStored(*databases.source(storing.front().first), *m_changes, storing))
        return;
    for (const auto& [id, table] : storing)
        m_changes->forget(id, table);
}

void RecoveryFile::settle() {
    if (m_missing.empty()) {
        ::unlink(m_file.c_str());
        return;
    }
    // Where this fails the changes are offered once more, and found to be made.
    const std::string lines =
        RecoveryText::sealed(RecoveryText::begin({}) + m_settled + RecoveryText::end(), m_seal);
    if (::ftruncate(m_descriptor, m_end) == 0)
        m_end += std::max<ssize_t>(0, ::pwrite(m_descriptor, lines.data(), lines.size(), m_end));
}
