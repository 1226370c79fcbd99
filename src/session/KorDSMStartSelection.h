#pragma once

#include "records/KorDSNDefinitions.h"
#include "records/KorOdbcKey.h"

/// With which entry the editor opens.
namespace KorDSMStartSelection {

/// Loads the sections and remembers a detail style as the selected entry. Returns false when the sections do
/// not show it, such as a style without a category.
bool select(SourceId source, const KorOdbcKey& style);

/// The same with the first style that the sections show of the source, or with the source where there is
/// none.
void selectFirst(SourceId source);

} // namespace KorDSMStartSelection
