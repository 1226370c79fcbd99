#include "app/CommitReport.h"

#include "app/Console.h"
#include "base/Translation.h"
#include "session/KorDSMCommit.h"

namespace {

KorString sentenceOf(const SourceCommit& commit, const StoreConflict& conflict) {
    const KorString kind = conflict.table->rowName();
    const KorString key = KorString::number(conflict.key);
    if (!conflict.column)
        return KorString::format(
            translated("Another program changed or deleted the %s with the key %s in \"%s\", "
                       "so nothing was written. Read it again and decide anew."),
            {kind, key, commit.file});
    return KorString::format(
        translated(
            "Another program changed the column \"%s\" of the %s with the key %s in \"%s\": it holds %s now "
            "and held %s before; %s was not written. Read it again and decide anew."),
        {conflict.column->name, kind, key, commit.file, conflict.stored, conflict.before, conflict.mine});
}

} // namespace

bool keepChanges() {
    const KorDSMCommit::Outcome outcome = KorDSMCommit::keepAndClose(true);
    for (const SourceCommit& commit : outcome.failed) {
        if (!commit.error.empty())
            Console::complain(commit.error);
        for (const StoreConflict& conflict : commit.conflicts)
            Console::complain(sentenceOf(commit, conflict));
    }
    return outcome.ok();
}
