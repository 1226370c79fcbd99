#include "model/KorProgressCtrl.h"

#include "base/EditorSession.h"
#include "model/KorDSMMessages.h"

namespace {

constexpr int kNotShown = -2;
constexpr int kNothingYet = -1;

struct Progress {
    KorString text;
    int percent = kNotShown;
};

Progress& progress() {
    return EditorSession::currentPart<Progress>();
}

void tell(DsmProgress::eState state, int percent = 0) {
    DsmProgress message;
    message.state = state;
    message.percent = percent;
    message.text = progress().text;
    KorDSMMainWindow::sendMessage(message);
}

} // namespace

void KorProgressCtrl::activate(const KorString& text) {
    progress() = {text, kNothingYet};
    tell(DsmProgress::kStart);
}

void KorProgressCtrl::setPercentage(int percent, int step) {
    const int reached = percent + step;
    if (progress().percent == kNotShown || progress().percent == reached)
        return;
    progress().percent = reached;
    tell(DsmProgress::kStep, reached);
}

void KorProgressCtrl::reset() {
    progress() = {};
    tell(DsmProgress::kDone, 100);
}
