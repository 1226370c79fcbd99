#include "app/CommitReport.h"

#include "app/Console.h"
#include "session/KorDSMCommit.h"

namespace {

KorString sentenceOf(const SourceCommit& commit, const StoreConflict& conflict) {
    const KorString place = KorString::format(
        "row %s of \"%s\"%s", {KorString::number(conflict.key), conflict.table->name,
                               conflict.column ? ", column \"" + conflict.column->name + "\"" : ""});
    return KorString::format(
        "Another program changed %s in \"%s\": it holds \"%s\" now and held \"%s\" before; "
        "\"%s\" was not written. Read it again and decide anew.",
        {place, commit.file, conflict.stored, conflict.before, conflict.mine});
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
