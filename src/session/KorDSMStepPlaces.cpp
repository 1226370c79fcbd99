#include "session/KorDSMStepPlaces.h"

#include "session/KorDSMUndo.h"

void KorDSMStepPlaces::note(const KorDSMDatabaseItem* shown) {
    const int step = KorDSMUndo::lastStep();
    if (step > 0 && shown && shown->record())
        m_places.try_emplace(step, *shown);
}

KorDSMDatabaseItem* KorDSMStepPlaces::find(KorDSMDataStructure& structure, int step) const {
    const auto place = m_places.find(step);
    return place == m_places.end() ? nullptr : place->second.find(structure);
}

void KorDSMStepPlaces::renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys) {
    for (auto& [step, place] : m_places)
        place.renumber(source, newKeys);
}
