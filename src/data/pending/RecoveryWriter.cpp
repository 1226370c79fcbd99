#include "data/pending/RecoveryWriter.h"

#include "base/Translation.h"
#include "base/WriteAll.h"
#include "data/StyleDatabases.h"
#include "data/store/FileIdentity.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

// A program that looks for files without an owner may hold the lock for a moment, and remove the file while
// it is empty.
bool lockNew(int descriptor) {
    while (::flock(descriptor, LOCK_EX) != 0)
        if (errno != EINTR)
            return true; // no locks on this file system
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

} // namespace

RecoveryWriter::RecoveryWriter(std::filesystem::path folder, StyleDatabases& databases, Tell tell)
    : m_folder(std::move(folder)), m_databases(databases), m_tell(std::move(tell)) {}

RecoveryWriter::~RecoveryWriter() {
    close();
}

void RecoveryWriter::changed(std::span<const PendingPlace> forgotten, const PendingCommand& made) {
    if (m_isAbandoned)
        return;
    if (m_unwritten > 0) {
        ++m_unwritten;
        return forgotten.empty() ? void() : abandon();
    }
    std::string names = m_size == 0 ? RecoveryText::head() : std::string();
    std::string lines;
    for (const auto& [source, table] : forgotten)
        lines += RecoveryText::forgotten(numberOf(source, names), table);
    for (const PendingStep& step : made.steps)
        lines += RecoveryText::step(numberOf(step.source, names), step);
    if (!forgotten.empty() || made.steps.size() > 1 || !made.label.isEmpty())
        lines = RecoveryText::begin(made.label) + lines + RecoveryText::end();
    if (append(names + lines))
        return;
    m_unwritten = 1;
    if (!forgotten.empty() || m_size == 0)
        abandon();
}

// Adds the line that names the source to `names` when the file does not name it yet.
int RecoveryWriter::numberOf(SourceId id, std::string& names) {
    StyleSource* source = m_databases.source(id);
    const std::string name = source ? source->store().name() : std::string();
    const auto [place, isNew] = m_numbers.try_emplace({id, name}, static_cast<int>(m_numbers.size()) + 1);
    if (isNew) {
        const std::string path = resolvedPath(name);
        names += RecoveryText::source({place->second, fileStamp(path), path});
    }
    return place->second;
}

void RecoveryWriter::takenBack() {
    if (m_unwritten > 0)
        --m_unwritten;
    else if (!m_isAbandoned && !append(RecoveryText::undo()))
        abandon();
}

void RecoveryWriter::emptied() {
    abandon();
    m_unwritten = 0;
    m_isAbandoned = false;
}

void RecoveryWriter::open() {
    std::error_code ignored;
    std::filesystem::create_directories(m_folder, ignored);
    const std::string name = "recovery-" + std::to_string(::getpid());
    // The number of a process that crashed may come again.
    for (int i = 1; m_descriptor < 0; ++i) {
        m_file = m_folder / (i == 1 ? name : name + "-" + std::to_string(i));
        m_descriptor =
            ::open(m_file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (m_descriptor < 0 && errno != EEXIST)
            return;
        if (m_descriptor >= 0 && !lockNew(m_descriptor))
            close();
    }
}

bool RecoveryWriter::append(const std::string& lines) {
    if (m_descriptor < 0)
        open();
    RecoveryText::Seal seal = m_seal;
    const std::string written = RecoveryText::sealed(lines, seal);
    if (m_descriptor >= 0 && writeAll(m_descriptor, written)) {
        m_size += written.size();
        m_seal = seal;
        return true;
    }
    m_tell(KorString::format(
        translated("The file \"%s\" cannot be written, so changes that are not stored would be "
                   "lost in a crash; apply them, and check the disk."),
        {m_file.string()}));
    if (m_descriptor >= 0 && ::ftruncate(m_descriptor, static_cast<off_t>(m_size)) != 0)
        m_size = 0;
    return false;
}

void RecoveryWriter::abandon() {
    if (m_descriptor >= 0)
        ::unlink(m_file.c_str());
    close();
    m_isAbandoned = true;
}

void RecoveryWriter::close() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_size = 0;
    m_seal = RecoveryText::kNoSeal;
    m_numbers.clear();
}
