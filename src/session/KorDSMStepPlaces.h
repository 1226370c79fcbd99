#pragma once

#include "session/KorDSMPlace.h"

/// Where the user was when what is pending was done, so that undo and redo lead back there.
class KorDSMStepPlaces {
public:
    /// To be told after each write of the item whose pages are shown, null for none, and of the template
    /// number of the page in sight.
    void note(const KorDSMDatabaseItem* shown, int page);

    /// The item, null where that is not known or not there, and its page, 0 where there was none.
    struct Place {
        KorDSMDatabaseItem* item = nullptr;
        int page = 0;
    };
    /// Where the step was done, whose number is one of `KorDSMUndo::lastStep`.
    Place find(KorDSMDataStructure& structure, int step) const;
    /// See `KorDSMPlace::renumber`.
    void renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys);

private:
    struct Noted {
        KorDSMPlace place;
        int page;
    };
    std::map<int, Noted> m_places; // by the step
};
