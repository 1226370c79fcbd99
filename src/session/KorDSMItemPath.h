#pragma once

#include "model/items/KorDsmAddInContentItem.h"

#include <vector>

/// Where an item stands in its section.
namespace KorDSMItemPath {

/// The items from the section down to `item`.
std::vector<KorDSMDatabaseItem*> itemsTo(KorDSMDatabaseItem& item);
/// Their texts. Elements 0 to 2 are the section, the database and the add-in.
KorArray<KorString> textsTo(KorDSMDatabaseItem& item);
/// Number of leading elements that a tree of a single source does not show.
inline constexpr int kLevelsAboveSource = 3;

/// The section that the item lies in, or null for an item outside any.
KorDsmSectionItem* sectionOf(KorDSMDatabaseItem& item);
/// The nearest category or group at or above the item, or null.
KorDSMDatabaseItem* groupOf(KorDSMDatabaseItem& item);
/// The add-in content node at or above the item; for a database node its only or first one. Null for a
/// section.
KorDsmAddInContentItem* addInOf(KorDSMDatabaseItem& item);

/// The add-in content node of a source in a section, or null.
KorDsmAddInContentItem* findAddIn(KorDsmSectionItem& section, SourceId source);

} // namespace KorDSMItemPath
