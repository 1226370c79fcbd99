#pragma once

#include <string>

/// What came of a call of a database driver.
struct OdbcError {
    enum class eKind {
        kNone, ///< it was done
        kNoManager,
        kNoDriver,
        kNotReached,
        kLogin,
        kNoPassword,
        kNoDatabase,
        kNoSchema, ///< or no table
        kRights,
        kLocked,
        kKeyTaken,
        kLost,   ///< the line broke
        kFrozen, ///< no answer came in time, or the user gave up; the line is given up too
        kBusy,   ///< no answer came yet; it is still waited for
        kOther,
    };

    eKind kind = eKind::kNone;
    std::string message = {}; ///< of the driver, in one line

    explicit operator bool() const { return kind != eKind::kNone; }
    /// Whether the server does not let the user in, who may have another password.
    bool isRefusal() const { return kind == eKind::kLogin || kind == eKind::kNoPassword; }
    /// Whether there is no server, or none that answers.
    bool isSilence() const { return kind == eKind::kNotReached || kind == eKind::kFrozen; }
    /// Whether the connection is of no use any more.
    bool isLineGone() const { return kind == eKind::kLost || kind == eKind::kFrozen; }

    /// What the driver says: an SQLSTATE and a message. `isConnecting` tells that there was no connection
    /// yet.
    static OdbcError of(const std::string& state, const std::string& message, bool isConnecting);
};
