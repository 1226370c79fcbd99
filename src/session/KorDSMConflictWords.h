#pragma once

#include "data/OutsideChanges.h"

/// What another program and this one did to the same thing, in the words in which pages show it: scales as
/// ratios, lengths in the unit of their database, references by name, slots as a list, labels without their
/// formats. One line each; long texts are cut to where the two values differ.
struct KorDSMConflictWords {
    KorString record;   ///< kind, name, and what the record is part of or filed under
    KorString property; ///< caption of the column; of a new row that all of it is meant
    KorString before;   ///< what was stored when it was changed here; empty where that is not known
    KorString mine;
    KorString stored;   ///< empty where `reason` says why there is nothing
    KorString reason;   ///< one sentence why mine cannot be kept; empty when the user can choose
    KorString storedBy; ///< as "anna, 2026-11-26 10:42", who stored that; empty where it is not known
    KorString outcome;  ///< one sentence what becomes of mine then; empty where the reason says it

    bool canChoose() const { return reason.isEmpty(); }
    /// What stands beside mine: the value that is stored, or why mine is not kept and what becomes of it.
    KorString beside() const;

    /// Words a conflict of this source, which must be open.
    static KorDSMConflictWords of(SourceId source, const OutsideConflict& conflict);
    /// The same as one sentence, for where nobody can choose.
    KorString sentence() const;
};
