#pragma once

#include "base/KorString.h"

#include <functional>

/// The progress display of the host, as the loader sees it. The window that shows it installs itself; without
/// one, progress is dropped.
class KorProgressCtrl {
public:
    struct Display {
        std::function<void(const KorString& text)> activate;
        std::function<void(int percent)> setPercentage;
        std::function<void()> reset;
    };

    static void install(Display display);

    /// Shows the display with this text.
    static void activate(const KorString& text);
    /// 0 to 100. A `step` other than 0 announces the record that leads there; only changes are passed on.
    static void setPercentage(int percent, int step);
    static void reset();
};
