#pragma once

#include "data/StyleDatabases.h"

#include <functional>
#include <vector>

/// The three ways in which pending changes end. Each walks all 48 table types in ascending order.
class KorDSMCommit {
public:
    /// What could not be kept; empty when all is stored.
    struct Outcome {
        std::vector<SourceCommit> failed;

        bool ok() const { return failed.empty(); }
    };

    /// Keeps the changes for good. `applyEnabled` says whether changes were pending at all. On failure
    /// nothing but the stored part is ended: the rest stays pending and the editor should stay open.
    static Outcome keepAndClose(bool applyEnabled);
    /// Keeps the changes and goes on.
    static Outcome keepAndGoOn();
    /// Takes the changes back that were not kept.
    static void discard();
    /// Whether another program seems to have changed a database since it was read.
    static bool isChangedOutside();
    /// Reads the sources again that another program changed.
    static std::vector<OutsideChange> readChanged();
    /// Reads sources again, or brings changes back, and says what came of it.
    using Read = std::function<std::vector<OutsideChange>()>;
    /// Given what reading sources again brought, says of which conflicts this program's change is kept.
    using ChooseMine = std::function<std::vector<OutsideChange>(const std::vector<OutsideChange>&)>;
    /// Reads, and makes what was pending when another program changed the same data again, as one step of
    /// undo: it is stored by the next commit. Where there are conflicts `choose` is asked first; there is no
    /// moment, before or while it is asked, at which a crash would lose any of mine. What hung on rows that
    /// are gone is lost. Returns what was read.
    static std::vector<OutsideChange> settle(const Read& read, const ChooseMine& choose);
};
