#include "model/KorProgressCtrl.h"

#include "base/EditorSession.h"

#include <utility>

namespace {

struct Progress {
    KorProgressCtrl::Display display;
    int percent = -1;
};

Progress& progress() {
    return EditorSession::currentPart<Progress>();
}

} // namespace

void KorProgressCtrl::install(Display display) {
    progress() = {std::move(display)};
}

void KorProgressCtrl::activate(const KorString& text) {
    progress().percent = -1;
    if (progress().display.activate)
        progress().display.activate(text);
}

void KorProgressCtrl::setPercentage(int percent, int step) {
    const int reached = percent + step;
    if (std::exchange(progress().percent, reached) != reached && progress().display.setPercentage)
        progress().display.setPercentage(reached);
}

void KorProgressCtrl::reset() {
    progress().percent = -1;
    if (progress().display.reset)
        progress().display.reset();
}
