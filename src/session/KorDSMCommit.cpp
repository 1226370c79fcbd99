#include "session/KorDSMCommit.h"

#include "data/StyleDatabases.h"
#include "data/pending/ReplayedCommands.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMDialogFactory.h"
#include "operations/KorOdbcMan.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "session/KorDSMWhereUsed.h"
#include "session/PendingGroup.h"

#include <algorithm>

namespace {

constexpr int kMayBeStored = 1090; // "... dropping it does not take that back."

KorDSMCommit::Report walk(int (*setStatus)(eTableType, KorOdbcMan::eCopyDepth)) {
    const KorDSMBusy busy;
    {
        const StyleDatabases::CommitWalk oneTransaction(StyleDatabases::current());
        for (int table = 0; table < kNumberOfTableTypes; ++table)
            setStatus(static_cast<eTableType>(table), KorOdbcMan::kThisRow);
    }
    KorDSMCommit::Report outcome;
    bool keptSome = false;
    for (const SourceCommit& commit : StyleDatabases::current().commitReport()) {
        keptSome = keptSome || commit.kept;
        if (!commit.kept)
            outcome.failed.push_back(commit);
    }
    // What one source stored is in its database, whatever became of the others.
    if (!outcome.ok() && keptSome)
        KorOdbcMan::m_DSMReloadInfo = KorOdbcMan::m_DSMResetDetViewRequestCache = 1;
    return outcome;
}

// Something is stored while the editor goes on.
void noteApplied() {
    KorDSMDataStructure::m_bApplyWasPressed = true;
    KorOdbcMan::m_DSMReloadInfo = KorOdbcMan::m_DSMResetDetViewRequestCache = 1;
}

std::size_t countConflicts(const std::vector<OutsideChange>& changes) {
    std::size_t count = 0;
    for (const OutsideChange& change : changes)
        count += change.conflicts.size();
    return count;
}

/// Notes what the rows of all sources were before they were changed, and tells those that are different.
class Journals {
public:
    explicit Journals(StyleDatabases& databases) : m_databases(databases) {
        for (const SourceId id : databases.sources())
            databases.source(id)->keepJournal(&m_journals[id]);
    }
    ~Journals() {
        for (const auto& [id, journal] : m_journals)
            if (StyleSource* source = m_databases.source(id))
                source->keepJournal(nullptr);
    }
    Journals(const Journals&) = delete;
    Journals& operator=(const Journals&) = delete;

    void complete(OutsideChange& change) const {
        const RowJournal& journal = m_journals.at(change.source);
        if (!change.rows || !journal.isWhole)
            return change.rows.reset();
        for (const auto& [row, before] : journal.before) {
            const RowArray& rows = m_databases.source(change.source)->table(row.table).rows();
            const StructRecord* now = rows.find(row.key);
            if (before && now ? !rows.equal(*before, *now) : before || now)
                change.rows->push_back({row, before, now ? rows.copyOf(now) : nullptr});
        }
    }

private:
    StyleDatabases& m_databases;
    std::map<SourceId, RowJournal> m_journals;
};

KorDSMRowChange changeOf(SourceId source, const RowDifference& difference) {
    KorDSMRowChange change{source, difference.row, KorDSMRowChange::eKind::kChanged, {}, {}};
    if (!difference.before || !difference.after) {
        change.kind = difference.after ? KorDSMRowChange::eKind::kAppended : KorDSMRowChange::eKind::kDeleted;
        change.record = difference.after ? difference.after : difference.before;
        return change;
    }
    for (const Column& column : findTable(difference.row.table)->columns)
        if (column.read(difference.before.get()) != column.read(difference.after.get()))
            change.columns.push_back(&column);
    return change;
}

// What is still in use can be deleted once what uses it is.
void keepMine(const std::vector<OutsideChange>& changes) {
    std::vector<std::pair<SourceId, const OutsideConflict*>> left;
    for (const OutsideChange& change : changes)
        for (const OutsideConflict& conflict : change.conflicts)
            left.emplace_back(change.source, &conflict);
    const auto isKept = [](const auto& each) {
        return StyleDatabases::current().keepMine(each.first, *each.second).isStored();
    };
    while (std::erase_if(left, isKept) > 0)
        ;
}

} // namespace

KorDSMCommit::Report KorDSMCommit::keepAndClose(bool applyEnabled) {
    Report outcome = walk(&KorOdbcMan::setStatusOnOK);
    if (!outcome.ok())
        return outcome;
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    structure.setUpdateStatus(KorOdbcCompactDetailsTables::m_bCompactPerformed
                                  ? KorDSMDataStructure::kReloadRequested
                                  : KorDSMDataStructure::kUpToDate);
    KorOdbcCompactDetailsTables::m_bCompactPerformed = false;
    KorOdbcMan::m_DSMReloadInfo = 1;
    if (applyEnabled)
        KorOdbcMan::m_DSMResetDetViewRequestCache = 1;
    return outcome;
}

KorDSMCommit::Report KorDSMCommit::keepAndGoOn() {
    Report outcome = walk(&KorOdbcMan::setStatusOnUpdate);
    if (!outcome.ok())
        return outcome;
    KorDSMDialogFactory::getDSMDataStructure().setUpdateStatus(KorDSMDataStructure::kUpToDate);
    noteApplied();
    return outcome;
}

namespace {

bool isReadAgain(const SourceCommit& failed, const std::vector<OutsideChange>& read) {
    const auto found = std::ranges::find(read, failed.source, &OutsideChange::source);
    return found != read.end() && found->ok();
}

} // namespace

KorDSMCommit::Report KorDSMCommit::readAndKeep(const std::function<std::vector<OutsideChange>()>& read,
                                               const std::function<Report()>& keep) {
    constexpr int kMostTries = 5;
    Report outcome;
    std::map<SourceId, std::string> unread;
    for (int tries = 0; tries == 0 || !outcome.ok(); ++tries) {
        const std::vector<OutsideChange> changes = read();
        const auto isAmongThem = [&](const SourceCommit& failed) { return isReadAgain(failed, changes); };
        for (const OutsideChange& change : changes)
            if (!change.ok())
                unread[change.source] = change.error;
        if (countConflicts(changes) > 0) {
            std::erase_if(outcome.failed, isAmongThem);
            outcome.isAsked = true;
            break;
        }
        if (tries == kMostTries || (tries > 0 && std::ranges::none_of(outcome.failed, isAmongThem)))
            break;
        outcome = keep();
    }
    for (const SourceCommit& commit : outcome.failed)
        unread.erase(commit.source);
    for (const auto& [source, why] : unread)
        outcome.unread.push_back(why);
    return outcome;
}

KorString KorDSMCommit::whatMayBeStored() {
    KorString all;
    for (const SourceId id : StyleDatabases::current().unknownOutcomes()) {
        const KorString sentence =
            KorString::format(Prompts::dsm(kMayBeStored), {KorDSMWhereUsed::sourceName(id)});
        all = all.isEmpty() ? sentence : KorString::format("%s\n%s", {all, sentence});
    }
    return all;
}

void KorDSMCommit::discard() {
    const KorDSMBusy busy;
    if (const KorString left = whatMayBeStored(); !left.isEmpty())
        KorHostReport::add(left);
    const PendingLog::Hold together(StyleDatabases::current().pending());
    for (int table = 0; table < kNumberOfTableTypes; ++table)
        KorOdbcMan::setStatusOnCancel(static_cast<eTableType>(table), KorOdbcMan::kThisRow);
    KorOdbcCompactDetailsTables::m_bCompactPerformed = false;
    KorOdbcMan::m_DSMReloadInfo = 1;
}

bool KorDSMCommit::isChangedOutside() {
    return StyleDatabases::current().isChangedOutside();
}

std::vector<OutsideChange> KorDSMCommit::readChanged() {
    return StyleDatabases::current().refreshChanged();
}

std::vector<OutsideChange> KorDSMCommit::readNoticed() {
    return StyleDatabases::current().refreshNoticed();
}

bool KorDSMCommit::isNoticed() {
    return StyleDatabases::current().isNoticed();
}

std::optional<std::vector<KorDSMRowChange>> KorDSMCommit::rowsOf(const std::vector<OutsideChange>& changes) {
    std::vector<KorDSMRowChange> rows;
    for (const OutsideChange& change : changes) {
        if (!change.ok())
            continue; // what was read before is shown still
        if (!change.rows)
            return std::nullopt;
        for (const RowDifference& difference : *change.rows)
            rows.push_back(changeOf(change.source, difference));
    }
    return rows;
}

std::vector<OutsideChange> KorDSMCommit::settle(const Read& read, const ChooseMine& choose) {
    StyleDatabases& databases = StyleDatabases::current();
    const PendingLog::Hold untilAnswered(databases.pending());
    const Journals journals(databases);
    ReplayedCommands commands(databases, read.broughtBack());
    std::vector<OutsideChange> changes = read();
    if (countConflicts(changes) > 0) {
        const PendingGroup group({});
        const std::vector<OutsideChange> mine = choose(changes);
        keepMine(mine);
        commands.dropWhatWasMadeFor(changes, mine);
    }
    commands.settle(changes);
    if (std::ranges::any_of(changes, &OutsideChange::wasStored))
        noteApplied();
    for (OutsideChange& change : changes)
        journals.complete(change);
    return changes;
}
