#pragma once

#include "session/KorDSMRecovery.h"

class QWidget;

/// Asks the user about changes that were pending when the program crashed or was killed.
class RecoveryOffer {
public:
    /// `window` asks, and must outlive the object; `follow` shows what was brought back.
    RecoveryOffer(QWidget& window, KorDSMRecovery::Follow follow)
        : m_window(window), m_follow(std::move(follow)) {}
    RecoveryOffer(const RecoveryOffer&) = delete;
    RecoveryOffer& operator=(const RecoveryOffer&) = delete;

    /// Asks about all that was left, once.
    void look();

private:
    QWidget& m_window;
    KorDSMRecovery::Follow m_follow;
    KorDSMRecovery m_recovery;
};
