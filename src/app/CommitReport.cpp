#include "app/CommitReport.h"

#include "app/Console.h"
#include "base/EditorSession.h"
#include "data/StyleDatabases.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMConflictWords.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

struct CommandRuns {
    int left = 0;                 // of the command
    bool again = false;           // it judged by what is not stored any more
    std::set<SourceId> overtaken; // where that was
};

CommandRuns& runs() {
    return EditorSession::currentPart<CommandRuns>();
}

bool isOutdated(StyleSource& source) {
    return source.isOutdated() || source.store().changedOutside();
}

// Whether the command can be run again upon what another program stored; otherwise tells what conflicts, in
// the words of the editor. What does not hold any more is judged when the command runs again.
bool canRunAgain(const SourceCommit& commit, const OutsideChange& change) {
    const bool isDecided = std::ranges::none_of(change.conflicts, [](const OutsideConflict& conflict) {
        return conflict.reason.isEmpty(); // both changed it
    });
    if (runs().left > 0 && change.error.empty() && isDecided)
        return true;
    Console::complain(commit.error);
    if (!change.error.empty())
        Console::complain(change.error);
    for (const OutsideConflict& conflict : change.conflicts)
        Console::complain(KorDSMConflictWords::of(commit.source, conflict).sentence());
    return false;
}

// Where several programs store at once each might be overtaken again and again: on a server the next run has
// its turn before it reads, and others wait until it has ended. Of several sources none is kept from others:
// that would be for as long as the turn in the next one is waited for.
void takeTurn() {
    std::set<SourceId> overtaken = std::exchange(runs().overtaken, {});
    const auto storeOf = [](SourceId id) -> StyleStore& {
        return StyleDatabases::current().source(id)->store();
    };
    std::erase_if(overtaken, [&](SourceId id) { return !storeOf(id).isOnServer(); });
    if (overtaken.size() != 1)
        return;
    if (StyleStore& store = storeOf(*overtaken.begin()); store.begin())
        store.acknowledge();
}

void endTurns() {
    StyleDatabases& databases = StyleDatabases::current();
    for (const SourceId id : databases.sources())
        databases.source(id)->store().rollback();
}

} // namespace

bool keepChanges() {
    const KorDSMCommit::Report outcome = KorDSMCommit::keepAndClose(true);
    bool isKept = true;
    bool runsAgain = true;
    for (const SourceCommit& commit : outcome.failed) {
        if (!isOutdated(*StyleDatabases::current().source(commit.source))) {
            Console::complain(commit.error);
            isKept = runsAgain = false;
            continue;
        }
        const OutsideChange change = StyleDatabases::current().refresh(commit.source);
        if (change.wasStored)
            continue;
        isKept = false;
        runs().overtaken.insert(commit.source);
        runsAgain = canRunAgain(commit, change) && runsAgain;
    }
    runs().again = !isKept && runsAgain;
    return isKept;
}

int judgedAnew(const std::function<int()>& command) {
    constexpr int kMostRuns = 5;
    for (runs().left = kMostRuns - 1;; --runs().left) {
        runs().again = false;
        const int code = command();
        endTurns();
        if (!runs().again)
            return code;
        KorDSMCommit::discard();
        StyleDatabases& databases = StyleDatabases::current();
        for (const SourceId id :
             databases.sources()) // so that new rows get the keys that they would have got
            databases.source(id)->dropTables();
        takeTurn();
    }
}
