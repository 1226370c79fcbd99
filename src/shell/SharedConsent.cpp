#include "shell/SharedConsent.h"

#include "base/EditorSession.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "session/KorDSMGuardedWrite.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

struct Visit {
    RowRef record;
    std::vector<RowRef> agreed;
};

struct Offers {
    std::map<const QWidget*, SharedConsent::CopyOffer> byWindow;
};

SharedConsent::CopyOffer offerOf(const QWidget& window) {
    const auto& offers = EditorSession::currentPart<Offers>().byWindow;
    const auto offer = offers.find(&window);
    return offer == offers.end() ? SharedConsent::CopyOffer() : offer->second;
}

} // namespace

void SharedConsent::offerCopy(QWidget& window, CopyOffer offer) {
    if (offer.user)
        EditorSession::currentPart<Offers>().byWindow[&window] = std::move(offer);
    else
        EditorSession::currentPart<Offers>().byWindow.erase(&window);
}

int SharedConsent::ask(RowRef shared, QWidget& window) {
    std::vector<RowRef>& agreed = EditorSession::currentPart<Visit>().agreed;
    if (std::ranges::find(agreed, shared) != agreed.end())
        return KorDSMGuardedWrite::kWrite;
    const CopyOffer offer = offerOf(window);
    const int answer = KorDSMDialogConfirmation::ask(shared.table, KorOdbcKey(shared.key), &window,
                                                     offer.user ? offer.user(shared) : KorString());
    if (answer == KorDSMGuardedWrite::kCopy && offer.make)
        offer.make(shared);
    if (answer == KorDSMGuardedWrite::kWrite)
        EditorSession::currentPart<Visit>().agreed.push_back(shared);
    return answer;
}

void SharedConsent::visit(RowRef record) {
    Visit& visit = EditorSession::currentPart<Visit>();
    if (visit.record != record)
        visit = {record, {}};
}
