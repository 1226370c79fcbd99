#pragma once

#include "data/pending/RecoveryFile.h"
#include "session/KorDSMCommit.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Changes that were pending when the program crashed or was killed: written down beside the settings as they
/// are made, and offered at the next start.
class KorDSMRecovery {
public:
    enum class eAnswer { kYes, kNever, kNotYet };
    /// What the user is asked about.
    struct Lost {
        std::vector<KorString> steps;      ///< what was done, the latest first
        std::int64_t time = 0;             ///< of the last step, in seconds since 1970
        std::vector<std::string> replaced; ///< databases of which another file has the name now
    };
    using Ask = std::function<eAnswer(const Lost&)>;
    /// Brings changes back by a reading, shows what came of it and returns that.
    using Follow = std::function<std::vector<OutsideChange>(const KorDSMCommit::Read&)>;

    /// Begins to write down what is pending, or ends it, as the dialog factory wants it. When it cannot be
    /// written a sentence is reported to the host and `reportWaits` is called, also after the one who began
    /// it is gone.
    static void writeDown(std::function<void()> reportWaits);

    /// Offers each file that was left, once in the life of the object. What the user wants is pending again;
    /// what cannot be brought back is reported to the host.
    void offer(const Ask& ask, const Follow& follow);

private:
    void offer(RecoveryFile lost, const Ask& ask, const Follow& follow);

    bool m_offered = false;
};
