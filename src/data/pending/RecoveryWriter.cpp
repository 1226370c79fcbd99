#include "data/pending/RecoveryWriter.h"

#include "base/Translation.h"
#include "base/WriteAll.h"
#include "data/StyleDatabases.h"
#include "data/pending/RecoveryFile.h"
#include "data/pending/RecoveryName.h"
#include "data/store/DatabaseName.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <limits>
#include <utility>

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

void RecoveryWriter::changed(std::span<const PendingPlace> forgotten, std::span<const PendingCommand> made) {
    m_beforeStoring.reset();
    if (isUpToDate() ? write(forgotten, made) : rewrite())
        return settleTakenOver();
    m_unwritten += made.size();
    m_isOld = m_isOld || !forgotten.empty();
}

void RecoveryWriter::takenBack() {
    m_beforeStoring.reset();
    if (m_isOld) {
        if (rewrite())
            settleTakenOver();
    } else if (m_unwritten > 0) {
        --m_unwritten;
    } else {
        std::vector<Mark>& commands = m_file.commands;
        if (!commands.empty())
            commands.pop_back();
        const bool isShort = !commands.empty() && shorten(commands.back());
        if (isShort || append(RecoveryText::undo(), {}) || rewrite())
            return;
        remove(); // it would bring back what was taken back
        m_isOld = true;
    }
}

void RecoveryWriter::emptied() {
    settleTakenOver();
    m_beforeStoring.reset();
    remove();
    m_unwritten = 0;
    m_isOld = m_isTold = false;
}

// Where it cannot be written nothing else needs to be done: what is stored is found to be so.
void RecoveryWriter::storing(std::span<const PendingPlace> places, std::uint32_t mark) {
    if (!isUpToDate())
        return;
    const Mark before = m_file.end;
    std::string names;
    std::string lines = RecoveryText::begin({});
    for (const auto& [source, table] : places)
        lines += RecoveryText::storing(numberOf(source, names), table, mark);
    if (append(names + lines + RecoveryText::end(), {}))
        m_beforeStoring = before;
}

void RecoveryWriter::notStored() {
    if (!m_beforeStoring || shorten(*std::exchange(m_beforeStoring, {})))
        return;
    if (!append(RecoveryText::begin({}) + RecoveryText::end(), {}))
        rewrite();
}

void RecoveryWriter::takeOver(std::shared_ptr<RecoveryFile> file) {
    m_takenOver.push_back(std::move(file));
}

void RecoveryWriter::settleTakenOver() {
    for (const auto& file : m_takenOver)
        file->settle();
    m_takenOver.clear();
}

// Adds the line that names the source to `names` when the file does not name it yet.
int RecoveryWriter::numberOf(SourceId id, std::string& names) {
    StyleSource* source = m_databases.source(id);
    const std::string name = source ? source->store().name() : std::string();
    const auto [place, isNew] =
        m_file.numbers.try_emplace({id, name}, static_cast<int>(m_file.numbers.size()) + 1);
    if (isNew) {
        const std::string path = databasePlace(name);
        names += RecoveryText::source({place->second, fileStamp(path), path});
    }
    return place->second;
}

// A cell that stays as it is tells the name of a row, for the case that the row is deleted by the time the
// file is read.
std::string RecoveryWriter::nameLine(int number, const PendingStep& step, RowRef row, const KorString& name) {
    const Column* column = findTable(row.table)->column(1);
    return RecoveryText::step(
        number, {step.source, row.table, PendingStep::eAction::kCell, row.key, column, name, name, {}});
}

// Steps know a changed row by its key alone.
std::string RecoveryWriter::nameOfChanged(const PendingStep& step, int number, std::set<RowRef>& told) const {
    StyleSource* source = m_databases.source(step.source);
    const RowRef row{step.table, step.key};
    const bool isCell = step.action == PendingStep::eAction::kCell && step.column->number != 1;
    const StructRecord* record =
        isCell && source ? source->table(row.table).find(KorOdbcKey(row.key)) : nullptr;
    return record && told.insert(row).second ? nameLine(number, step, row, record->name) : std::string();
}

// What is filed in a group or is a part knows the key of that alone; where that is pending itself its steps
// tell its name.
std::string RecoveryWriter::namesAbove(const PendingStep& step, int number, std::set<RowRef>& told) const {
    StyleSource* source = m_databases.source(step.source);
    std::string lines;
    if (step.action != PendingStep::eAction::kAppend || !source)
        return lines;
    for (const Column& column : findTable(step.table)->columns) {
        if (!column.isReference() || column.role == eReferenceRole::kUses)
            continue;
        const RowRef above{column.target, column.integerIn(step.record.get())};
        const auto isOfIt = [&](const PendingStep* other) {
            return other->source == step.source && RowRef{other->table, other->key} == above;
        };
        const StructRecord* record = source->table(above.table).find(KorOdbcKey(above.key));
        const PendingLog& pending = m_databases.pending();
        if (!record || !told.insert(above).second ||
            (pending.hasPending(step.source, above.table) && std::ranges::any_of(pending.steps(), isOfIt)))
            continue;
        lines += nameLine(number, step, above, record->name);
    }
    return lines;
}

std::string RecoveryWriter::linesOf(std::span<const PendingStep> steps, std::string& names,
                                    std::set<RowRef>& told) {
    for (const PendingStep& step : steps)
        if (step.action == PendingStep::eAction::kAppend)
            told.insert({step.table, step.key});
    std::string lines;
    for (const PendingStep& step : steps) {
        const int number = numberOf(step.source, names);
        lines += RecoveryText::step(number, step) + nameOfChanged(step, number, told) +
                 namesAbove(step, number, told);
    }
    return lines;
}

std::string RecoveryWriter::linesOf(const PendingCommand& made) {
    std::string names;
    std::set<RowRef> told;
    const std::string lines = linesOf(made.steps, names, told);
    const bool countTogether = std::ranges::count(lines, '\n') > 1 || !made.label.isEmpty();
    return names + (countTogether ? RecoveryText::begin(made.label) + lines + RecoveryText::end() : lines);
}

bool RecoveryWriter::write(std::span<const PendingPlace> forgotten, std::span<const PendingCommand> made) {
    if (!forgotten.empty() || !m_takenOver.empty()) {
        std::vector<RecoveryText::TakenOver> takenOver;
        for (const auto& file : m_takenOver)
            std::ranges::copy(file->takenOver(), std::back_inserter(takenOver));
        return writeTogether(forgotten, made, takenOver);
    }
    std::string lines = m_file.end.size == 0 ? RecoveryText::head() : std::string();
    std::vector<Mark> commands;
    for (const PendingCommand& command : made) {
        lines += linesOf(command);
        commands.push_back({lines.size(), {}, m_file.numbers.size()});
    }
    return append(lines, commands);
}

// All or nothing: what comes to stand may be what is forgotten, made anew.
bool RecoveryWriter::writeTogether(std::span<const PendingPlace> forgotten,
                                   std::span<const PendingCommand> made,
                                   const std::vector<RecoveryText::TakenOver>& takenOver) {
    std::string names = m_file.end.size == 0 ? RecoveryText::head() : std::string();
    std::string lines = RecoveryText::begin(made.empty() ? KorString() : made.front().label);
    for (const auto& [source, table] : forgotten)
        lines += RecoveryText::forgotten(numberOf(source, names), table);
    for (const RecoveryText::TakenOver& other : takenOver)
        lines += RecoveryText::takenOver(other);
    std::set<RowRef> told;
    for (const PendingCommand& command : made) {
        if (&command != &made.front())
            lines += RecoveryText::next(command.label);
        lines += linesOf(command.steps, names, told);
    }
    m_file.commands.clear();
    if (!append(names + lines + RecoveryText::end(), {}))
        return false;
    m_file.commands.push_back(m_file.end); // before it there is nothing to go back to
    return true;
}

// The marks hold the size of the lines up to them as they are given.
bool RecoveryWriter::append(const std::string& lines, const std::vector<Mark>& commands) {
    Mark end = m_file.end;
    std::vector<Mark> marks;
    std::string text;
    std::size_t done = 0;
    const auto seal = [&](std::size_t to) {
        text += RecoveryText::sealed(std::string_view(lines).substr(done, to - done), end.seal);
        done = to;
    };
    for (const Mark& command : commands) {
        seal(command.size);
        marks.push_back({m_file.end.size + text.size(), end.seal, command.sources});
    }
    seal(lines.size());
    if (!open() || !writeAll(m_file.descriptor, text)) {
        tellOnce();
        if (m_file.end.size == 0)
            remove();
        else if (!shorten(m_file.end))
            m_isOld = true;
        return false;
    }
    m_file.end = {m_file.end.size + text.size(), end.seal, m_file.numbers.size()};
    m_file.commands.insert(m_file.commands.end(), marks.begin(), marks.end());
    m_isTold = false;
    return true;
}

bool RecoveryWriter::open() {
    if (m_file.descriptor >= 0)
        return true;
    std::error_code ignored;
    std::filesystem::create_directories(m_folder, ignored);
    // The number of a process that crashed may come again.
    for (int i = 1; m_file.descriptor < 0; ++i) {
        m_file.path = m_folder / RecoveryName::of(::getpid(), i);
        m_file.descriptor = ::open(m_file.path.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (m_file.descriptor < 0 && errno != EEXIST)
            return false;
        if (m_file.descriptor >= 0 && !lockNew(m_file.descriptor))
            ::close(std::exchange(m_file.descriptor, -1));
    }
    return true;
}

// Takes off what was written after `end`, for which a full disk has room.
bool RecoveryWriter::shorten(const Mark& end) {
    if (m_file.descriptor >= 0 && ::ftruncate(m_file.descriptor, static_cast<off_t>(end.size)) != 0)
        return false;
    m_file.end = end;
    std::erase_if(m_file.numbers,
                  [&](const auto& named) { return named.second > static_cast<int>(end.sources); });
    return true;
}

// Writes all that stands into a new file, and removes the old one only then. The new one counts as soon as it
// is whole, and from then on the old one does not.
bool RecoveryWriter::rewrite() {
    File old = std::exchange(m_file, {});
    std::vector<PendingCommand> commands =
        m_databases.pending().undoable(std::numeric_limits<std::size_t>::max());
    std::ranges::reverse(commands);
    std::vector<RecoveryText::TakenOver> takenOver;
    for (const auto& file : m_takenOver)
        std::ranges::copy(file->takenOver(), std::back_inserter(takenOver));
    if (old.descriptor >= 0)
        takenOver.push_back({old.path.filename().string(), old.end.seal, {}});
    const bool isWritten = writeTogether({}, commands, takenOver);
    if (isWritten) {
        m_unwritten = 0;
        m_isOld = false;
        std::swap(old, m_file);
    }
    remove();
    m_file = std::move(old);
    return isWritten;
}

void RecoveryWriter::tellOnce() {
    if (std::exchange(m_isTold, true))
        return;
    m_tell(KorString::format(
        translated("The file \"%s\" cannot be written, so changes that are not stored would be "
                   "lost in a crash; apply them, and check the disk."),
        {m_file.path.string()}));
}

void RecoveryWriter::remove() {
    if (m_file.descriptor >= 0)
        ::unlink(m_file.path.c_str());
    close();
}

void RecoveryWriter::close() {
    if (m_file.descriptor >= 0)
        ::close(m_file.descriptor);
    m_file = {};
}
