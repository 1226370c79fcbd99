#include "data/pending/RecoveryFile.h"

#include "base/Translation.h"
#include "base/WriteAll.h"
#include "data/pending/RecoveryName.h"
#include "data/store/DatabaseName.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <map>
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

// The lock, if the file has no owner and is still there; nobody waits for it. An empty file of a proven name
// holds nothing, or belongs to a program that waits for its lock now and makes another one.
int lockedDescriptor(const fs::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return -1;
    struct stat status {};
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::fstat(descriptor, &status) == 0 &&
        status.st_nlink > 0) {
        if (status.st_size > 0)
            return descriptor;
        if (RecoveryName::isProven(file.filename().string()))
            ::unlink(file.c_str());
    }
    ::close(descriptor);
    return -1;
}

// Whether the source holds all of the change of one table.
bool isStored(StyleSource& source, const TableChange& change) {
    const StyleTable& table = source.table(change.table->type);
    const auto find = [&](std::int32_t key) { return table.find(KorOdbcKey(key)); };
    return std::ranges::all_of(change.cells,
                               [&](const CellChange& cell) {
                                   const StructRecord* row = find(cell.key);
                                   return row && cell.column->read(row) == cell.wanted;
                               }) &&
           std::ranges::all_of(change.appended,
                               [&](const StructRecord* record) {
                                   const StructRecord* row = find(record->key);
                                   return row && table.rows().equal(*row, *record);
                               }) &&
           std::ranges::none_of(change.deleted, find, &StructRecord::key);
}

// Whether a commit of which nothing is known but that it began took place. It stored all or nothing: the
// database has its mark, or holds all of it although others stored something since. When in doubt, no.
bool wasStored(StyleSource& source, PendingLog& changes, const RecoveryText::Storing& storing) {
    if (storing.mark != 0 && source.store().holdsMark(storing.mark))
        return true;
    bool isAny = false;
    for (const auto& [id, type] : storing.places) {
        const TableChange change = changes.netChange(id, type);
        isAny = isAny || !change.isEmpty();
        if (!source.readingOf(type) || !isStored(source, change))
            return false;
    }
    return isAny;
}

} // namespace

std::vector<RecoveryFile> RecoveryFile::abandonedIn(const fs::path& folder) {
    std::vector<RecoveryFile> files;
    std::error_code error;
    std::vector<std::pair<fs::file_time_type, fs::path>> found;
    for (auto it = fs::directory_iterator(folder, error); !error && it != fs::directory_iterator();
         it.increment(error))
        if (RecoveryName::isPossible(it->path().filename().string()) && isOrdinaryFile(it->path())) {
            std::error_code ignored;
            found.emplace_back(fs::last_write_time(it->path(), ignored), it->path());
        }
    std::ranges::sort(found);
    for (const auto& [time, file] : found)
        if (const int descriptor = lockedDescriptor(file); descriptor >= 0)
            files.push_back(RecoveryFile(file, descriptor));
    return withoutTakenOver(std::move(files));
}

std::vector<RecoveryFile> RecoveryFile::withoutTakenOver(std::vector<RecoveryFile> files) {
    std::vector<RecoveryText::TakenOver> all;
    const auto idOf = [](const RecoverySource& source) { return idOfMissing(source.number); };
    for (const RecoveryFile& file : files)
        std::ranges::copy(file.parsed(idOf).takenOver, std::back_inserter(all));
    std::vector<RecoveryFile> left;
    for (RecoveryFile& file : files) {
        const std::string name = file.file().filename().string();
        const RecoveryText::Seal seal = all.empty() ? RecoveryText::kNoSeal : file.parsed(idOf).seal;
        std::vector<std::string> databases;
        for (const RecoveryText::TakenOver& other : all)
            if (other.file == name && other.seal == seal)
                databases.push_back(other.database);
        if (databases.empty() || !file.leave(databases))
            left.push_back(std::move(file));
    }
    return left;
}

RecoveryFile::RecoveryFile(fs::path file, int descriptor)
    : m_file(std::move(file)), m_descriptor(descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) == 0)
        m_time = status.st_mtime;
}

RecoveryFile::RecoveryFile(RecoveryFile&& other) noexcept
    : m_file(std::move(other.m_file)), m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_time(other.m_time), m_changes(std::move(other.m_changes)), m_databases(std::move(other.m_databases)),
      m_settled(std::move(other.m_settled)), m_end(other.m_end), m_isCutOff(other.m_isCutOff),
      m_seal(other.m_seal), m_missing(std::move(other.m_missing)), m_readOnly(std::move(other.m_readOnly)),
      m_replaced(std::move(other.m_replaced)) {}

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

RecoveryText::Parsed RecoveryFile::parsed(const RecoveryText::SourceNames& idOf) const {
    std::string text;
    return readText(text) ? RecoveryText::parse(text, idOf) : RecoveryText::Parsed();
}

// Takes the changes of these databases from the file, all where one has no name. Returns whether the file is
// gone, as nothing is left in it.
bool RecoveryFile::leave(const std::vector<std::string>& databases) {
    std::map<SourceId, RecoverySource> named;
    const RecoveryText::Parsed content = parsed([&named](const RecoverySource& source) {
        return named.emplace(idOfMissing(source.number), source).first->first;
    });
    const auto isMeant = [&databases](const std::string& path) {
        return std::ranges::any_of(
            databases, [&](const std::string& database) { return database.empty() || database == path; });
    };
    std::string lines;
    bool isEmpty = true;
    for (const auto& [id, source] : named)
        for (const TableSchema& table : allTables())
            if (content.changes && content.changes->hasPending(id, table.type)) {
                if (isMeant(source.path))
                    lines += RecoveryText::forgotten(source.number, table.type);
                else
                    isEmpty = false;
            }
    m_end = static_cast<off_t>(content.size);
    m_seal = content.seal;
    if (!isEmpty) {
        append(lines);
        return false;
    }
    ::unlink(m_file.c_str());
    return true;
}

bool RecoveryFile::append(const std::string& lines) {
    const std::string text =
        RecoveryText::sealed(RecoveryText::begin({}) + lines + RecoveryText::end(), m_seal);
    if (::ftruncate(m_descriptor, m_end) != 0 || ::lseek(m_descriptor, m_end, SEEK_SET) != m_end ||
        !writeAll(m_descriptor, text))
        return false;
    m_end += static_cast<off_t>(text.size());
    return true;
}

std::vector<RecoveryText::TakenOver> RecoveryFile::takenOver() const {
    std::vector<RecoveryText::TakenOver> all;
    for (const std::string& database : m_databases)
        all.push_back({m_file.filename().string(), m_seal, database});
    return all;
}

Result<> RecoveryFile::read(StyleDatabases& databases) {
    std::vector<std::pair<SourceId, RecoverySource>> named;
    const auto idOf = [&](const RecoverySource& source) {
        SourceId found = idOfMissing(source.number);
        for (const SourceId id : databases.sources())
            if (databasePlace(databases.source(id)->store().name()) == source.path) {
                if (databases.isEditable(id))
                    found = id;
                else
                    m_readOnly.push_back(source.path);
            }
        named.emplace_back(found, source);
        return found;
    };
    RecoveryText::Parsed content = parsed(idOf);
    if (!content.changes)
        return Result<>::failure(KorString::format(
            translated(
                "The file \"%s\" with the changes of an earlier run is damaged or of another version, so "
                "they were not offered; delete it when you do not need them."),
            {m_file.string()}));
    m_changes = std::move(content.changes);
    m_isCutOff = content.isCutOff;
    m_end = static_cast<off_t>(content.size);
    m_seal = content.seal;
    for (const auto& [id, source] : named)
        sort(id, source);
    std::erase_if(m_readOnly, [this](const std::string& path) {
        return std::ranges::find(m_missing, path) == m_missing.end();
    });
    leaveStored(databases, content.storing);
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
    m_databases.push_back(source.path);
    for (const TableSchema& table : allTables())
        if (m_changes->hasPending(id, table.type))
            m_settled += RecoveryText::forgotten(source.number, table.type);
}

void RecoveryFile::leaveStored(StyleDatabases& databases, const RecoveryText::Storing& storing) {
    StyleSource* source = storing.places.empty() ? nullptr : databases.source(storing.places.front().first);
    if (!source || !wasStored(*source, *m_changes, storing))
        return;
    for (const auto& [id, table] : storing.places)
        m_changes->forget(id, table);
}

// Where this fails the changes are offered once more, and found to be made.
void RecoveryFile::settle() {
    if (m_missing.empty())
        ::unlink(m_file.c_str());
    else
        append(m_settled);
}
