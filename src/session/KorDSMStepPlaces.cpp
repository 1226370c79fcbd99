#include "session/KorDSMStepPlaces.h"

#include "session/KorDSMUndo.h"

void KorDSMStepPlaces::note(const KorDSMDatabaseItem* shown, int page) {
    const int step = KorDSMUndo::lastStep();
    if (step > 0 && shown && shown->parent())
        m_places.try_emplace(step, Noted{KorDSMPlace(*shown), page});
}

KorDSMStepPlaces::Place KorDSMStepPlaces::find(KorDSMDataStructure& structure, int step) const {
    const auto noted = m_places.find(step);
    return noted == m_places.end() ? Place() : Place{noted->second.place.find(structure), noted->second.page};
}

void KorDSMStepPlaces::renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys) {
    for (auto& [step, noted] : m_places)
        noted.place.renumber(source, newKeys);
}
