#include "model/KorProgressCtrl.h"

#include <utility>

namespace {
KorProgressCtrl::Display g_display;
int g_percent = -1;
} // namespace

void KorProgressCtrl::install(Display display) {
    g_display = std::move(display);
    g_percent = -1;
}

void KorProgressCtrl::activate(const KorString& text) {
    g_percent = -1;
    if (g_display.activate)
        g_display.activate(text);
}

void KorProgressCtrl::setPercentage(int percent, int step) {
    const int reached = percent + step;
    if (reached == g_percent)
        return;
    g_percent = reached;
    if (g_display.setPercentage)
        g_display.setPercentage(reached);
}

void KorProgressCtrl::reset() {
    g_percent = -1;
    if (g_display.reset)
        g_display.reset();
}
