#include "model/KorDSMMessages.h"

#include "base/EditorSession.h"
#include "model/KorDSMBusy.h"
#include "services/KorHostPost.h"

#include <algorithm>
#include <vector>

void KorMessageReceivers::onMessage(const KorMessage& message) {
    const auto it = m_receivers.find(message.number);
    if (it != m_receivers.end())
        it->second(message);
}

namespace KorDSMMainWindow {

namespace {

// A target that comes later can have the address of one that is gone.
struct Added {
    int number = 0;
    KorMessageTarget* target = nullptr;
};
struct Targets {
    std::vector<Added> added;
    int lastNumber = 0;
};

std::vector<Added>& targets() {
    return EditorSession::currentPart<Targets>().added;
}

} // namespace

KorMessageTarget* get() {
    return targets().empty() ? nullptr : targets().back().target;
}

void add(KorMessageTarget* target) {
    remove(target);
    targets().push_back({++EditorSession::currentPart<Targets>().lastNumber, target});
}

void remove(const KorMessageTarget* target) {
    std::erase_if(targets(), [target](const Added& added) { return added.target == target; });
}

void sendMessage(const KorMessage& message) {
    if (KorMessageTarget* target = get())
        target->onMessage(message);
}

void post(std::shared_ptr<const KorMessage> message) {
    if (targets().empty())
        return;
    const auto deliver = [message = std::move(message), number = targets().back().number] {
        const auto it = std::ranges::find(targets(), number, &Added::number);
        if (it != targets().end())
            it->target->onMessage(*message);
    };
    KorHostPost::post([deliver] { KorDSMBusy::whenFree(deliver); });
}

} // namespace KorDSMMainWindow
