#pragma once

#include "base/Result.h"
#include "records/KorDSNDefinitions.h"

#include <filesystem>

/// A style database that the user opens beside those of the data folder, such as one that came by mail. It is
/// one more source that can only be read: what is wanted of it is copied.
namespace KorDSMOpenedFile {

/// Opens the file and returns its source; that of a file that is open already, under whatever name, is found.
/// Fails with a sentence where it is no style database or cannot be read. Sections show it when they are
/// loaded the next time.
Result<SourceId> open(const std::filesystem::path& file);

/// Loads the sections anew, and remembers the first detail style of the source as the selected entry, or the
/// source itself where it has none.
void select(SourceId source);

} // namespace KorDSMOpenedFile
