#pragma once

struct KorTreeEntry;

/// An entry of a tree control, opaque outside of the control library: tree items keep it without knowing
/// any toolkit. It stays valid until the entry is deleted; null means "no entry".
using KorTreeHandle = KorTreeEntry*;
