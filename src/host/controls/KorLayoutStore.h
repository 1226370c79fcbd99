#pragma once

#include "base/KorString.h"

#include <functional>

/// Where controls keep what the user arranged: window placements, splitter positions, last active tabs.
/// The program connects it with its settings; until then texts are kept for the life of the process.
namespace KorLayoutStore {

/// Gives the text stored under a name, an empty text when there is none.
using Reader = std::function<KorString(const KorString& name)>;
using Writer = std::function<void(const KorString& name, const KorString& value)>;

/// Sets both ends; empty functions go back to keeping texts for the life of the process.
void setBackend(Reader reader, Writer writer);

KorString read(const KorString& name);
void write(const KorString& name, const KorString& value);

} // namespace KorLayoutStore
