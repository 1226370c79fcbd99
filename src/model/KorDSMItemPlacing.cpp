#include "model/KorDSMItemPlacing.h"

namespace KorDSMItemPlacing {

void sortCategories(KorDSMDatabaseItem& addIn) {
    std::stable_sort(addIn.children().begin(), addIn.children().end(),
                     [](const KorDSMDatabaseItem* a, const KorDSMDatabaseItem* b) {
                         return a->record()->name.compare(b->record()->name) < 0;
                     });
}

void sortGroups(KorDSMDatabaseItem& addIn) {
    std::stable_sort(addIn.children().begin(), addIn.children().end(),
                     [](const KorDSMDatabaseItem* a, const KorDSMDatabaseItem* b) {
                         return a->recordKey() < b->recordKey();
                     });
}

} // namespace KorDSMItemPlacing
