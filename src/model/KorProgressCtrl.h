#pragma once

#include "base/KorString.h"

/// The progress display of the window, as the loader sees it: the window is told by `DsmProgress`. While
/// there is none, progress is dropped.
class KorProgressCtrl {
public:
    /// Shows the display with this text.
    static void activate(const KorString& text);
    /// 0 to 100. A `step` other than 0 announces the record that leads there; only changes are passed on.
    static void setPercentage(int percent, int step);
    static void reset();
};
