#pragma once

#include <string>
#include <utility>

/// What came of a write to a row. A write that failed, was declined or asked for a copy changed nothing.
struct WriteResult {
    enum eKind : int {
        kWritten = 1,
        kUnchanged = 2, ///< what was to be written is there already
        kDeclined = 3,  ///< the user was asked, and does not want it
        kMakeCopy = 4,  ///< the user was asked, and wants a copy to be made and changed instead
        kFailed = 0,    ///< no such row or column, or a value that does not fit
        kReadOnlySource = -1,
        kIncompleteSource = -2, ///< a table could not be read, so it cannot be judged
    };

    eKind kind = kWritten;
    std::string error = {}; ///< of the last three kinds: one sentence for the user; otherwise empty

    bool operator==(eKind other) const { return kind == other; }
    /// Whether the row holds now what was to be written.
    bool isStored() const { return kind == kWritten || kind == kUnchanged; }
    bool isFailed() const { return kind < kWritten; }
    /// As operations with integer results return it: exactly 1 for a value that is stored, a failure below 1.
    int code() const { return isFailed() ? kind : isStored() ? 1 : 0; }
};
