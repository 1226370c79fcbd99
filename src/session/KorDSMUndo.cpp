#include "session/KorDSMUndo.h"

#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMMessages.h"
#include "services/Prompts.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>
#include <map>
#include <span>

namespace KorDSMUndo {

namespace {

constexpr int kUndo = 240;   // "Undo %s"
constexpr int kRedo = 241;   // "Redo %s"
constexpr int kNoUndo = 273; // "Undo", while there is no step
constexpr int kNoRedo = 274;
constexpr int kChange = 242;        // "change of %s of "%s""
constexpr int kChangeOfPart = 1363; // "change of %s of an entry of "%s""
constexpr int kCreation = 243;      // "creation of "%s""
constexpr int kDeletion = 244;      // "deletion of "%s""

PendingLog& pending() {
    return StyleDatabases::current().pending();
}

// The row in its table, or as the log appended it: what stands in another log is in no table.
const StructRecord* rowOf(const PendingLog& log, SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    if (const StructRecord* record = source ? source->table(row.table).find(KorOdbcKey(row.key)) : nullptr)
        return record;
    for (const PendingStep* step : log.steps())
        if (step->record && step->source == id && step->table == row.table && step->key == row.key)
            return step->record.get();
    return nullptr;
}

// The row of a step, whether it is in its table at present or not.
const StructRecord* recordOf(const PendingLog& log, const PendingStep& step) {
    return step.record ? step.record.get() : rowOf(log, step.source, {step.table, step.key});
}

const StructRecord* wholeOf(const PendingLog& log, const PendingStep& step, const StructRecord& part) {
    for (const Column& column : findTable(step.table)->columns)
        if (column.isReference() && column.role == eReferenceRole::kPartOf)
            return rowOf(log, step.source, {column.target, column.integerIn(&part)});
    return nullptr;
}

// The step that says what the command was about: a record that came or went, rather than its parts.
const PendingStep& principal(std::span<const PendingStep> steps) {
    const auto step = std::ranges::find_if(steps, [](const PendingStep& candidate) {
        return candidate.action != PendingStep::eAction::kCell &&
               !belongsToOthers(*findTable(candidate.table));
    });
    return step == steps.end() ? steps.front() : *step;
}

KorString describe(const PendingStep& step, const StructRecord& record, const StructRecord* whole) {
    const TableSchema& table = *findTable(step.table);
    const bool isCell = step.action == PendingStep::eAction::kCell;
    if (isCell && whole && !KorDSMValueText::isNameGiven(table, record.name))
        return KorString::format(
            Prompts::dsm(kChangeOfPart),
            {KorDSMValueText::columnCaption(table, *step.column), KorDSMValueText::shortName(whole->name)});
    if (isCell)
        return KorString::format(Prompts::dsm(kChange), {KorDSMValueText::columnCaption(table, *step.column),
                                                         KorDSMValueText::shortName(record.name)});
    if (whole)
        return KorString::format(Prompts::dsm(kChange), {KorDSMValueText::tableCaption(table),
                                                         KorDSMValueText::shortName(whole->name)});
    const int text = step.action == PendingStep::eAction::kAppend ? kCreation : kDeletion;
    return KorString::format(Prompts::dsm(text), {KorDSMValueText::shortName(record.name)});
}

// Commands name their groups; what is only labelled with the name of a record tells what it did itself.
KorString describe(const PendingLog& log, const PendingCommand& command) {
    const PendingStep& step = principal(command.steps);
    const StructRecord* record = recordOf(log, step);
    if (!record && command.label.isEmpty()) {
        StructRecord gone;
        gone.name = KorString::format("%s [%s]", {KorDSMValueText::tableCaption(*findTable(step.table)),
                                                  KorString::number(std::int64_t{step.key})});
        return describe(step, gone, nullptr);
    }
    if (!record)
        return KorDSMValueText::shortName(command.label);
    const StructRecord* whole = wholeOf(log, step, *record);
    const bool isName = command.label == record->name || (whole && command.label == whole->name);
    return command.label.isEmpty() || isName ? describe(step, *record, whole) : command.label;
}

std::vector<KorString> describe(const PendingLog& log, const std::vector<PendingCommand>& commands) {
    std::vector<KorString> texts;
    for (const PendingCommand& command : commands)
        texts.push_back(describe(log, command));
    return texts;
}

KorString menuText(int prompt, int promptWithoutStep, const std::vector<KorString>& steps) {
    return steps.empty() ? Prompts::dsm(promptWithoutStep)
                         : KorString::format(Prompts::dsm(prompt), {steps.front()});
}

// What was done to the rows, when all steps of the group have been applied.
std::vector<KorDSMRowChange> changesOf(const std::vector<const PendingStep*>& steps) {
    std::vector<KorDSMRowChange> changes;
    std::map<std::pair<SourceId, RowRef>, std::size_t> places;
    for (const PendingStep* each : steps) {
        const PendingStep& step = *each;
        const RowRef row{step.table, step.key};
        const auto [place, isNew] = places.try_emplace({step.source, row}, changes.size());
        if (isNew)
            changes.push_back({step.source, row, KorDSMRowChange::eKind::kChanged, {}, {}});
        KorDSMRowChange& change = changes[place->second];
        if (step.action == PendingStep::eAction::kCell) {
            if (!change.changedColumn(step.column->number))
                change.columns.push_back(step.column);
            continue;
        }
        change.record = step.record;
        StyleSource* source = StyleDatabases::current().source(step.source);
        const bool isThere = source && source->table(step.table).find(KorOdbcKey(step.key));
        change.kind = isThere ? KorDSMRowChange::eKind::kAppended : KorDSMRowChange::eKind::kDeleted;
    }
    return changes;
}

std::vector<KorDSMRowChange> applied(const std::vector<PendingStep>& steps) {
    if (steps.empty())
        return {};
    DsmSetModified message;
    message.modified = isPending();
    KorDSMMainWindow::sendMessage(message);
    std::vector<const PendingStep*> pointers;
    for (const PendingStep& step : steps)
        pointers.push_back(&step);
    return changesOf(pointers);
}

} // namespace

bool isPending() {
    return !pending().isEmpty();
}

bool canUndo() {
    return StyleDatabases::current().canUndo();
}

bool canRedo() {
    return StyleDatabases::current().canRedo();
}

KorString undoText() {
    return menuText(kUndo, kNoUndo, undoSteps(1));
}

KorString redoText() {
    return menuText(kRedo, kNoRedo, redoSteps(1));
}

std::vector<KorString> undoSteps(std::size_t most) {
    return stepsOf(pending(), most);
}

std::vector<KorString> redoSteps(std::size_t most) {
    return describe(pending(), pending().redoable(most));
}

std::vector<KorString> stepsOf(const PendingLog& log, std::size_t most) {
    return describe(log, log.undoable(most));
}

int lastStep() {
    return pending().undoableGroup();
}

std::size_t stepCount() {
    return pending().steps().size();
}

std::vector<KorDSMRowChange> changesSince(std::size_t before) {
    std::vector<const PendingStep*> steps = pending().steps();
    steps.erase(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(std::min(before, steps.size())));
    return changesOf(steps);
}

std::vector<KorDSMRowChange> undo() {
    return applied(StyleDatabases::current().undo());
}

std::vector<KorDSMRowChange> redo() {
    return applied(StyleDatabases::current().redo());
}

void takeBackTo(std::size_t before) {
    while (stepCount() > before && canUndo())
        undo();
    StyleDatabases::current().pending().forgetTakenBack();
}

namespace {

RowRef above(const StructRecord& record, eTableType table, bool (*isMeant)(eReferenceRole)) {
    for (const Column& column : findTable(table)->columns)
        if (column.isReference() && isMeant(column.role))
            return {column.target, column.integerIn(&record)};
    return {};
}

RowRef wholeOf(const KorDSMRowChange& change) {
    StyleSource* source = StyleDatabases::current().source(change.source);
    const StructRecord* record =
        source ? source->table(change.row.table).find(KorOdbcKey(change.row.key)) : nullptr;
    return record ? above(*record, change.row.table,
                          [](eReferenceRole role) { return role == eReferenceRole::kPartOf; })
                  : RowRef();
}

// The row by which the change is shown: of one that is gone, what it stood in; of a part that came, its
// whole.
RowRef placeOfChange(const KorDSMRowChange& change) {
    if (change.kind == KorDSMRowChange::eKind::kDeleted)
        return above(*change.record, change.row.table,
                     [](eReferenceRole role) { return role != eReferenceRole::kUses; });
    const RowRef whole = change.kind == KorDSMRowChange::eKind::kAppended ? wholeOf(change) : RowRef();
    return whole.key > 0 ? whole : change.row;
}

bool isShownBy(const KorDSMDatabaseItem& item, const KorDSMRowChange& change) {
    return KorDSMWhereUsed::isEditor(item, placeOfChange(change)) ||
           (change.kind != KorDSMRowChange::eKind::kDeleted &&
            (KorDSMWhereUsed::isEditor(item, change.row) ||
             KorDSMWhereUsed::isEditor(item, wholeOf(change))));
}

} // namespace

namespace {

// The section in which rows of the table are filed, or are groups.
const KorDSMSection* sectionOf(eTableType table) {
    for (const KorDSMFamily& family : KorDSMFamilies::all())
        if (family.table == table || (family.filedBy == table && family.isFiled()))
            return KorDSMFamilies::sectionOf(family);
    return nullptr;
}

KorDSMDatabaseItem* findAmong(KorDSMDataStructure& structure,
                              const std::vector<const KorDSMRowChange*>& changes) {
    constexpr std::size_t kMostLookedAt = 50; // an import changes thousands of rows
    for (const KorDSMRowChange* change : std::span(changes).first(std::min(changes.size(), kMostLookedAt)))
        if (KorDSMDatabaseItem* item =
                KorDSMWhereUsed::findEditor(structure, change->source, placeOfChange(*change)))
            return item;
    return nullptr;
}

} // namespace

KorDSMDatabaseItem* itemOf(KorDSMDataStructure& structure, const std::vector<KorDSMRowChange>& changes,
                           std::initializer_list<KorDSMDatabaseItem*> preferred) {
    for (KorDSMDatabaseItem* item : preferred)
        if (item && std::ranges::any_of(changes, [item, source = KorDSMItemSource::sourceOf(item)](
                                                     const KorDSMRowChange& change) {
                return change.source == source && isShownBy(*item, change);
            }))
            return item;
    // What came along with it stands in other sections.
    KorDSMDatabaseItem* home = nullptr;
    for (KorDSMDatabaseItem* item : preferred)
        home = item ? item : home;
    const KorDsmSectionItem* section = home ? KorDSMItemPath::sectionOf(*home) : nullptr;
    std::vector<const KorDSMRowChange*> here;
    std::vector<const KorDSMRowChange*> all;
    for (const KorDSMRowChange& change : changes) {
        all.push_back(&change);
        const KorDSMSection* own = sectionOf(change.row.table);
        if (own && section && own->section == section->section())
            here.push_back(&change);
    }
    std::ranges::stable_partition(here, [](const KorDSMRowChange* change) { // before their groups
        const KorDSMFamily* family = KorDSMFamilies::of(change->row.table);
        return !family || !family->isGroup();
    });
    if (KorDSMDatabaseItem* item = findAmong(structure, here))
        return item;
    return here.empty() ? findAmong(structure, all) : home;
}

} // namespace KorDSMUndo
