#pragma once

/// Reading before it is asked for, while the hand rests.
namespace KorDSMReadAhead {

/// Does one piece of it for one open source: a table or an index of the references to one, never longer than
/// that takes. Returns whether there was one.
bool step();

} // namespace KorDSMReadAhead
