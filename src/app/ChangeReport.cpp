#include "app/ChangeReport.h"

#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "data/ScopedSource.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMValueText.h"

#include <QJsonArray>

#include <algorithm>

namespace {

// The row as it is now, or as it was when it went.
const StructRecord& recordOf(const PendingStep& step) {
    const StructRecord* row =
        StyleDatabases::current().source(step.source)->table(step.table).find(KorOdbcKey(step.key));
    return row ? *row : *step.record;
}

QJsonObject toJson(const PendingStep& step) {
    const TableSchema& table = *findTable(step.table);
    const StructRecord& record = recordOf(step);
    QJsonObject row{
        {"kind", Console::text(table.kindName())}, {"key", step.key}, {"name", Console::text(record.name)}};
    if (step.column) {
        row["column"] = Console::text(step.column->name);
        row["text"] = Console::text(KorDSMValueText::toText(table, *step.column, step.after));
    }
    return row;
}

struct WrittenCell {
    const TableSchema* table;
    const Column* column;
    CellValue value;
};

std::vector<WrittenCell> writtenCells() {
    std::vector<WrittenCell> written;
    for (const PendingStep* step : StyleDatabases::current().pending().steps())
        if (step->column)
            written.push_back({findTable(step->table), step->column, step->after});
    return written;
}

} // namespace

ChangeReport::ChangeReport(const char* command, const ChangeOptions& options)
    : m_options(options), m_document{{"command", command}, {"dryRun", options.dryRun}} {
    KorDSMGuardedWrite::addAskFunction(
        this, [](eTableType, const KorOdbcKey&) { return int(KorDSMGuardedWrite::kWrite); });
}

ChangeReport::~ChangeReport() {
    KorDSMGuardedWrite::removeAskFunction(this);
}

void ChangeReport::isAbout(SourceId source, RowRef row) {
    m_source = source;
    m_row = row;
    m_document["source"] = Console::text(SourceChoice::nameOf(source));
    m_document["kind"] = Console::text(findTable(row.table)->kindName());
    m_document["key"] = row.key;
    const StructRecord* record =
        StyleDatabases::current().source(source)->table(row.table).find(KorOdbcKey(row.key));
    if (record)
        m_document["name"] = Console::text(record->name);
}

void ChangeReport::sayCompanions() {
    for (const PendingStep* step : StyleDatabases::current().pending().steps()) {
        const TableSchema& table = *findTable(step->table);
        if (step->action == PendingStep::eAction::kAppend && RowRef{step->table, step->key} != m_row &&
            KorDSMRecordCommands::isMade(table.type))
            say(KorString::format(translated("With it came the %s \"%s\" (key %s)."),
                                  {table.rowName(), step->record->name, KorString::number(step->key)}));
    }
}

void ChangeReport::listSteps() {
    QJsonArray added;
    QJsonArray removed;
    QJsonArray changed;
    for (const PendingStep* step : StyleDatabases::current().pending().steps()) {
        const ScopedSource source(step->source);
        QJsonArray& list = step->action == PendingStep::eAction::kAppend   ? added
                           : step->action == PendingStep::eAction::kDelete ? removed
                                                                           : changed;
        list.append(toJson(*step));
    }
    m_document["added"] = added;
    m_document["removed"] = removed;
    m_document["changed"] = changed;
}

int ChangeReport::finish() {
    if (StyleDatabases::current().pending().steps().empty())
        m_sentences = {translated("It is so already: there is nothing to change.")};
    if (m_options.json)
        listSteps();
    const std::vector<WrittenCell> written = writtenCells();
    if (m_options.dryRun)
        KorDSMCommit::discard();
    else if (!keepChanges())
        return kExitFailed;
    for (const WrittenCell& cell : written)
        TypedValue::tellDoubts(*cell.table, *cell.column, cell.value);
    if (!m_options.dryRun)
        return tellStored();
    tellDryRun();
    return kExitDone;
}

// As far as it was read: what is stored may have mended it.
bool ChangeReport::noteWhole() {
    const std::vector<ReadProblem>& problems = StyleDatabases::current().source(m_source)->problems();
    const bool isWhole = std::ranges::all_of(problems, &ReadProblem::kept);
    m_document["complete"] = isWhole;
    return isWhole;
}

void ChangeReport::tellDryRun() {
    noteWhole();
    if (m_options.json)
        return Console::print(m_document);
    std::ranges::for_each(m_sentences, &Console::say);
    Console::say(translated("This was a dry run: nothing was written."));
}

int ChangeReport::tellStored() {
    const bool isWhole = noteWhole();
    if (m_options.json)
        Console::print(m_document);
    std::ranges::for_each(m_sentences, m_options.json ? &Console::noteStored : &Console::sayStored);
    return isWhole ? kExitDone : kExitFailed;
}

int ChangeReport::refuse(const KorString& sentence, eExitCode code) {
    KorDSMCommit::discard();
    Console::complain(sentence.isEmpty() ? translated("The change could not be made, so nothing was written.")
                                         : sentence);
    return code;
}
