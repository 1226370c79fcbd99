#pragma once

#include "session/KorDSMPlace.h"

/// Where the user was when what is pending was done, so that undo and redo lead back there.
class KorDSMStepPlaces {
public:
    /// To be told after each write of the item whose pages are shown; null for none.
    void note(const KorDSMDatabaseItem* shown);
    /// The item at which the step was done; null where that is not known or not there. `step` is a number of
    /// `KorDSMUndo::lastStep`.
    KorDSMDatabaseItem* find(KorDSMDataStructure& structure, int step) const;
    /// See `KorDSMPlace::renumber`.
    void renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys);

private:
    std::map<int, KorDSMPlace> m_places; // by the step
};
