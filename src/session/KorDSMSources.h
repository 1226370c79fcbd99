#pragma once

#include "model/KorDSMDataStructure.h"

#include <vector>

/// The sources of a section, as the user chooses among them: databases, add-ins, and the categories or groups
/// in these.
namespace KorDSMSources {

/// One that can be chosen.
struct Entry {
    KorString path; ///< names from the database down, with the delimiter between them
    int image = -1;
    KorDSMDatabaseItem* node = nullptr;
    bool operator==(const Entry&) const = default;
};
/// The picture of an item: of an add-in its own, once it was added to the pictures.
int imageOf(const KorDSMDatabaseItem& item);
/// All of a section, in the order in which they are shown. A single add-in of a database has no level of its
/// own.
std::vector<Entry> entriesOf(KorDsmSectionItem& section, const KorString& delimiter);
/// The path under which the database, add-in or group is found there.
KorString pathOf(const KorDsmSectionItem& section, const KorDSMDatabaseItem* node,
                 const KorString& delimiter);

/// The section's current source; the standard one where that is gone, such as an add-in that is no longer
/// installed. Null where nothing is loaded.
KorDsmAddInContentItem* current(KorDSMDataStructure& structure, KorDSMDefines::eViewSections section);
/// The category or group of the source in which something was selected last, or else the source itself.
const KorDSMDatabaseItem& rememberedGroup(const KorDSMDataStructure& structure,
                                          KorDSMDefines::eViewSections section,
                                          KorDsmAddInContentItem& source);

} // namespace KorDSMSources
