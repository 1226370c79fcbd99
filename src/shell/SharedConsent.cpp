#include "shell/SharedConsent.h"

#include "base/EditorSession.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "session/KorDSMGuardedWrite.h"

#include <algorithm>
#include <vector>

namespace {

struct Visit {
    RowRef record;
    std::vector<RowRef> agreed;
};

} // namespace

int SharedConsent::ask(RowRef shared, QWidget& window) {
    std::vector<RowRef>& agreed = EditorSession::currentPart<Visit>().agreed;
    if (std::ranges::find(agreed, shared) != agreed.end())
        return KorDSMGuardedWrite::kWrite;
    const int answer = KorDSMDialogConfirmation::ask(shared.table, KorOdbcKey(shared.key), &window);
    if (answer == KorDSMGuardedWrite::kWrite)
        EditorSession::currentPart<Visit>().agreed.push_back(shared);
    return answer;
}

void SharedConsent::visit(RowRef record) {
    Visit& visit = EditorSession::currentPart<Visit>();
    if (visit.record != record)
        visit = {record, {}};
}
