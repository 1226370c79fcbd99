#include "data/StyleDatabases.h"

#include "base/EditorSession.h"
#include "base/KorAssert.h"
#include "base/Translation.h"
#include "data/CellRules.h"
#include "data/RowClosure.h"
#include "data/WriteRefusal.h"

#include <algorithm>
#include <utility>

/// The instances of a session, the one in use last. The session has one of its own, made when none is there
/// that is asked for.
struct StyleDatabases::InUse {
    std::shared_ptr<std::vector<StyleDatabases*>> instances =
        std::make_shared<std::vector<StyleDatabases*>>();
    std::unique_ptr<StyleDatabases> own;
};

StyleDatabases::StyleDatabases() : m_instances(EditorSession::currentPart<InUse>().instances) {
    m_instances->push_back(this);
}

StyleDatabases::~StyleDatabases() {
    std::erase(*m_instances, this);
}

StyleDatabases& StyleDatabases::current() {
    InUse& inUse = EditorSession::currentPart<InUse>();
    if (inUse.instances->empty())
        inUse.own = std::make_unique<StyleDatabases>();
    return *inUse.instances->back();
}

void StyleDatabases::addSource(SourceId id, std::unique_ptr<StyleStore> store) {
    closeSource(id);
    m_sources[id] = std::make_unique<StyleSource>(id, std::move(store));
}

void StyleDatabases::closeSource(SourceId id) {
    m_pending.forget(id);
    m_written.erase(id);
    m_unknown.erase(id);
    m_news.erase(id);
    m_sources.erase(id);
}

StyleSource* StyleDatabases::source(SourceId id) {
    const auto it = m_sources.find(id);
    return it == m_sources.end() ? nullptr : it->second.get();
}

std::vector<SourceId> StyleDatabases::sources() const {
    std::vector<SourceId> ids;
    for (const auto& [id, source] : m_sources)
        ids.push_back(id);
    return ids;
}

bool StyleDatabases::isEditable(SourceId id) {
    StyleSource* open = source(id);
    return open && !open->isReadOnly() && (m_ownerMode || id == SourceId::user());
}

std::string StyleDatabases::whyTooNew(SourceId id) {
    StyleSource* open = source(id);
    return open && (m_ownerMode || id == SourceId::user()) ? open->store().whyTooNew() : std::string();
}

std::string StyleDatabases::whyNotEditable(SourceId id) {
    StyleSource* open = source(id);
    return open && (m_ownerMode || id == SourceId::user()) ? open->store().whyReadOnly() : std::string();
}

namespace {

// The reading of the table that says which values the column may hold.
Result<> judgedBy(StyleSource& source, const TableSchema& table, const Column& column) {
    if (column.isReference())
        return source.readingOf(column.target);
    return column.number == 1 ? source.readingOf(table.type) : Result<>();
}

// What would come of writing a cell of the row `key`. What `held` holds in it already is taken.
WriteResult judge(StyleSource& source, const TableSchema& table, const Column& column, std::int32_t key,
                  const StructRecord* held, const CellValue& value) {
    if (held && value == column.read(held))
        return {};
    if (Result<> known = judgedBy(source, table, column); !known)
        return WriteRefusal::incomplete(std::move(known));
    const eCellFault fault = faultOf(source, table, column, key, value);
    return fault == eCellFault::kNone ? WriteResult() : WriteRefusal::unfit(table, column, value, fault);
}

} // namespace

WriteResult StyleDatabases::setCell(eTableType type, KorOdbcKey key, int number, const CellValue& value) {
    StyleSource* open = here();
    const TableSchema* schema = findTable(type);
    const Column* column = schema ? schema->column(number) : nullptr;
    if (!open)
        return WriteRefusal::notOpen();
    if (!column)
        return WriteRefusal::noColumn();
    if (!isEditable())
        return WriteRefusal::readOnly(whyNotEditable(open->id()));
    const StructRecord* row = open->table(type).find(key);
    if (!row)
        return WriteRefusal::noRow();
    WriteResult verdict = judge(*open, *schema, *column, key, row, value);
    return verdict.isFailed() ? verdict : writeCell(*open, type, key, *column, value);
}

WriteResult StyleDatabases::writeCell(StyleSource& source, eTableType type, KorOdbcKey key,
                                      const Column& column, const CellValue& value) {
    const CellValue before = column.read(source.table(type).find(key));
    if (!source.setCell(type, key, column, value))
        return WriteRefusal::unfit(*findTable(type), column, value, eCellFault::kWrongType);
    PendingStep step{source.id(), type, PendingStep::eAction::kCell, key, &column, before, {}, {}};
    step.after = column.read(source.table(type).find(key));
    step.mends = source.isUnreadable(key, column);
    if (!step.mends && step.after == before)
        return {WriteResult::kUnchanged};
    m_pending.record(std::move(step));
    return {};
}

WriteResult StyleDatabases::store(eTableType type, const StructRecord& record) {
    StyleSource* open = here();
    const TableSchema* schema = findTable(type);
    if (!open)
        return WriteRefusal::notOpen();
    if (!schema)
        return WriteRefusal::noRow();
    if (!isEditable())
        return WriteRefusal::readOnly(whyNotEditable(open->id()));
    const KorOdbcKey key(record.key);
    const StructRecord* row = open->table(type).find(key);
    if (!row)
        return WriteRefusal::noRow();
    for (const Column& column : schema->columns)
        if (WriteResult verdict = judge(*open, *schema, column, key, row, column.read(&record));
            verdict.isFailed())
            return verdict;
    m_pending.beginGroup(record.name);
    WriteResult result{WriteResult::kUnchanged};
    for (const Column& column : schema->columns)
        if (writeCell(*open, type, key, column, column.read(&record)) == WriteResult::kWritten)
            result.kind = WriteResult::kWritten;
    m_pending.endGroup();
    return result;
}

WriteResult StyleDatabases::append(eTableType type, StructRecord& record) {
    StyleSource* open = here();
    const TableSchema* schema = findTable(type);
    if (!open)
        return WriteRefusal::notOpen();
    if (!schema)
        return WriteRefusal::noRow();
    if (!isEditable())
        return WriteRefusal::readOnly(whyNotEditable(open->id()));
    const StructRecord* original = open->table(type).find(KorOdbcKey(record.key));
    for (const Column& column : schema->columns)
        if (WriteResult verdict = judge(*open, *schema, column, 0, column.number == 1 ? nullptr : original,
                                        column.read(&record));
            verdict.isFailed())
            return verdict;
    return appendStored(type, record);
}

WriteResult StyleDatabases::appendStored(eTableType type, StructRecord& record) {
    StyleSource* open = here();
    if (!open)
        return WriteRefusal::notOpen();
    if (!findTable(type))
        return WriteRefusal::noRow();
    if (!isEditable())
        return WriteRefusal::readOnly(whyNotEditable(open->id()));
    const KorOdbcKey original(record.key);
    const bool isCopy = open->table(type).find(original) != nullptr;
    if (Result<> known = isCopy ? open->complete() : open->readingOf(type); !known)
        return WriteRefusal::incomplete(std::move(known));
    if (std::string why = isCopy ? whyNotCopied(*open, {type, original}) : open->whyFull(type); !why.empty())
        return WriteRefusal::full(std::move(why));
    m_pending.beginGroup(record.name);
    appendRow(*open, type, record);
    if (isCopy)
        copyParts(*open, type, original, record.key);
    m_pending.endGroup();
    return {};
}

// The table must have a key left.
void StyleDatabases::appendRow(StyleSource& source, eTableType type, StructRecord& record) {
    StyleTable& table = source.table(type);
    record.key = table.unusedKey();
    source.insert(type, record);
    m_pending.record({source.id(),
                      type,
                      PendingStep::eAction::kAppend,
                      record.key,
                      nullptr,
                      {},
                      {},
                      table.rows().copyOf(&record)});
}

void StyleDatabases::copyParts(StyleSource& source, eTableType type, KorOdbcKey from, std::int32_t to) {
    for (const Referrer& part : partsOf(source, {type, from})) {
        StyleTable& table = source.table(part.table->type);
        const auto copy = table.rows().copyOf(table.find(KorOdbcKey(part.key)));
        part.column->integerIn(copy.get()) = to;
        appendRow(source, part.table->type, *copy);
    }
}

void StyleDatabases::removeRow(StyleSource& source, eTableType type, KorOdbcKey key) {
    for (const Referrer& part : partsOf(source, {type, key}))
        removeRow(source, part.table->type, KorOdbcKey(part.key));
    const auto copy = source.table(type).rows().copyOf(source.table(type).find(key));
    source.remove(type, key);
    m_pending.record({source.id(), type, PendingStep::eAction::kDelete, key, nullptr, {}, {}, copy});
}

WriteResult StyleDatabases::remove(eTableType type, KorOdbcKey key) {
    StyleSource* open = here();
    if (!open)
        return WriteRefusal::notOpen();
    if (!isEditable())
        return WriteRefusal::readOnly(whyNotEditable(open->id()));
    const StructRecord* row = findTable(type) ? open->table(type).find(key) : nullptr;
    if (!row)
        return WriteRefusal::noRow();
    if (Result<> whole = open->complete(); !whole)
        return WriteRefusal::incomplete(std::move(whole));
    m_pending.beginGroup(row->name);
    removeRow(*open, type, key);
    m_pending.endGroup();
    return {};
}

void StyleDatabases::apply(const PendingStep& step, bool forward) {
    StyleSource* open = source(step.source);
    if (!KorAssert::check(open != nullptr, "what is pending belongs to open sources"))
        return;
    const KorOdbcKey key(step.key);
    if (step.action == PendingStep::eAction::kCell)
        open->setCell(step.table, key, *step.column, forward ? step.after : step.before);
    else if ((step.action == PendingStep::eAction::kAppend) == forward)
        open->insert(step.table, *step.record);
    else
        open->remove(step.table, key);
}

bool StyleDatabases::isOutcomeKnown(const std::vector<PendingCommand>& next) const {
    return !next.empty() && std::ranges::none_of(next.front().steps, [this](const PendingStep& step) {
        return m_unknown.contains(step.source);
    });
}

std::vector<SourceId> StyleDatabases::unknownOutcomes() const {
    std::vector<SourceId> ids;
    for (const auto& [id, tables] : m_unknown)
        ids.push_back(id);
    return ids;
}

std::vector<PendingStep> StyleDatabases::undo() {
    std::vector<PendingStep> steps = canUndo() ? m_pending.takeUndo() : std::vector<PendingStep>();
    for (const PendingStep& step : steps)
        apply(step, false);
    return steps;
}

std::vector<PendingStep> StyleDatabases::redo() {
    std::vector<PendingStep> steps = canRedo() ? m_pending.takeRedo() : std::vector<PendingStep>();
    for (const PendingStep& step : steps)
        apply(step, true);
    return steps;
}

std::vector<Referrer> StyleDatabases::users(eTableType type, KorOdbcKey key) {
    StyleSource* open = here();
    std::vector<Referrer> found = open ? open->referrersOf(type, key) : std::vector<Referrer>();
    std::erase_if(found, [](const Referrer& user) { return user.column->role != eReferenceRole::kUses; });
    return found;
}

int StyleDatabases::ownerCount(eTableType type, KorOdbcKey key) {
    StyleSource* open = here();
    std::set<std::pair<eTableType, std::int32_t>> seen;
    int owners = 0;
    if (open && !open->complete())
        return 2;
    if (open)
        countOwners(*open, type, key, seen, owners);
    return std::min(owners, 2);
}

// Follows single owners upwards; `seen` keeps records that refer to each other in a circle from being
// followed for ever. Returns false as soon as two owners are known.
bool StyleDatabases::countOwners(StyleSource& source, eTableType type, KorOdbcKey key,
                                 std::set<std::pair<eTableType, std::int32_t>>& seen, int& owners) {
    if (!seen.insert({type, key}).second)
        return true;
    std::set<std::pair<eTableType, std::int32_t>> rows;
    for (const Referrer& referrer : source.referrersOf(type, key))
        if (referrer.column->role == eReferenceRole::kUses)
            rows.insert({referrer.table->type, referrer.key});
    // A part is used by whatever its whole is used by.
    const TableSchema* schema = findTable(type);
    if (const StructRecord* row = source.table(type).find(key))
        for (const Column& column : schema->columns)
            if (column.role == eReferenceRole::kPartOf && column.isReference() && column.integerIn(row) > 0)
                rows.insert({column.target, column.integerIn(row)});
    owners = std::max(owners, static_cast<int>(rows.size()));
    if (rows.size() != 1)
        return rows.empty();
    return countOwners(source, rows.begin()->first, KorOdbcKey(rows.begin()->second), seen, owners);
}
