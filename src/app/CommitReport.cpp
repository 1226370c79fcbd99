#include "app/CommitReport.h"

#include "app/Console.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMConflictWords.h"

namespace {

// What is stored now is read, to be told in the words of the editor.
void tellConflicts(SourceId source) {
    const OutsideChange change = StyleDatabases::current().refresh(source);
    if (!change.error.empty())
        Console::complain(change.error);
    for (const OutsideConflict& conflict : change.conflicts)
        Console::complain(KorDSMConflictWords::of(source, conflict).sentence());
}

} // namespace

bool keepChanges() {
    const KorDSMCommit::Outcome outcome = KorDSMCommit::keepAndClose(true);
    for (const SourceCommit& commit : outcome.failed) {
        if (!commit.error.empty())
            Console::complain(commit.error);
        if (!commit.conflicts.empty())
            tellConflicts(commit.source);
    }
    return outcome.ok();
}
