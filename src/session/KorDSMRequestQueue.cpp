#include "session/KorDSMRequestQueue.h"

#include "operations/KorOdbcMan.h"
#include "services/KorExchangeUtilities.h"

namespace {

KorExchangeQueue& queue() {
    int status = 0;
    return KorExchangeUtilities::getNamedQueue(KorDSMRequestQueue::kQueue, status, 0);
}

} // namespace

int KorDSMRequestQueue::wantedKey() {
    return queue().getInt(kKey);
}

void KorDSMRequestQueue::put(int key) {
    queue().push(kKey, key);
    queue().push(kDSN, static_cast<int>(KorOdbcMan::getCurrentDSN()));
    queue().push(kIndex, static_cast<int>(KorOdbcMan::getCurrentAddIn()));
}
