#pragma once

#include "data/StyleDatabases.h"
#include "model/KorDSMRowChange.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

/// The three ways in which pending changes end. Each walks all 48 table types in ascending order.
class KorDSMCommit {
public:
    /// What could not be kept; empty when all is stored.
    struct Report {
        std::vector<SourceCommit> failed;
        std::vector<std::string> unread = {}; ///< why sources that did not fail could not be read again
        bool isAsked = false;                 ///< something is to be decided anew, and was asked about

        bool ok() const { return failed.empty() && !isAsked; }
    };

    /// Keeps the changes for good. `applyEnabled` says whether changes were pending at all. On failure
    /// nothing but the stored part is ended: the rest stays pending and the editor should stay open.
    static Report keepAndClose(bool applyEnabled);
    /// Keeps the changes and goes on.
    static Report keepAndGoOn();
    /// Reads by `read`, which also asks, and keeps the changes by `keep`. Where others store something in
    /// between, what they stored is read and it is tried again, as long as nothing is to be decided.
    static Report readAndKeep(const std::function<std::vector<OutsideChange>()>& read,
                              const std::function<Report()>& keep);
    /// One sentence for each source of which it is not known yet whether its last change was stored: taking
    /// it back does not change that. Empty for none.
    static KorString whatMayBeStored();
    /// Takes the changes back that were not kept, and reports the above.
    static void discard();
    /// Whether another program seems to have changed a database since it was read.
    static bool isChangedOutside();
    /// Reads the sources again that another program changed.
    static std::vector<OutsideChange> readChanged();
    /// The same as far as that is known already: no server is asked whether there is something.
    static std::vector<OutsideChange> readNoticed();
    static bool isNoticed();
    /// The rows that are shown otherwise after these; none where one of them read everything.
    static std::optional<std::vector<KorDSMRowChange>> rowsOf(const std::vector<OutsideChange>& changes);
    /// Reads sources again, or brings back what stands in another log, and says what came of it.
    class Read {
    public:
        /// `broughtBack` is that log, or null.
        template <typename Function>
        Read(Function read, const PendingLog* broughtBack = nullptr)
            : m_read(std::move(read)), m_broughtBack(broughtBack) {}
        std::vector<OutsideChange> operator()() const { return m_read(); }
        const PendingLog* broughtBack() const { return m_broughtBack; }

    private:
        std::function<std::vector<OutsideChange>()> m_read;
        const PendingLog* m_broughtBack;
    };
    /// Given what reading sources again brought, says of which conflicts this program's change is kept.
    using ChooseMine = std::function<std::vector<OutsideChange>(const std::vector<OutsideChange>&)>;
    /// Reads, and asks `choose` where there are conflicts; what is kept of mine is made again, as the
    /// commands that it came from. Until that is done the log's observer hears of nothing: after a crash all
    /// that was pending is compared anew, and the same is asked and told. What hung on rows that are gone is
    /// lost. What turns out to be stored counts as applied. Returns what was read.
    static std::vector<OutsideChange> settle(const Read& read, const ChooseMine& choose);
};
