#pragma once

#include "model/items/KorDSMDatabaseItem.h"
#include "session/KorDSMCopyWish.h"
#include "session/KorDSMRecordCommands.h"

#include <optional>

/// Records as others use them: what refers to the record of an item that is shown below its user.
namespace KorDSMRecordUse {

/// The cell with which the record that an item hangs below, or one of its parts, uses the item's record.
struct Use {
    RowRef row;
    const Column* column = nullptr;
    KorString name; ///< of the record that the item hangs below
};

/// Nothing for an item that is filed, or hangs below something else than a record that uses its own.
std::optional<Use> userOf(const KorDSMDatabaseItem& item);

/// The same for what an item or what hangs below it edits in place: with which cell the record of the item,
/// or the one that it hangs below, uses the target.
std::optional<Use> userOf(const KorDSMDatabaseItem& item, RowRef target);

/// The name of the record that the cell refers to; empty where it refers to none.
KorString targetName(SourceId source, const Use& use);

/// Copies the item's record under a new name and lets its user, and nobody else, use the copy: one step of
/// undo, after the question where the user itself is shared.
KorDSMRecordCommands::Outcome copyForUser(const KorDSMDatabaseItem& item, const KorString& name);

/// Makes a record of the kind that a reference cell wants, or a copy of the one it has, and lets the cell
/// refer to it, as one step.
KorDSMRecordCommands::Outcome makeFor(SourceId source, const Use& use, const KorString& name,
                                      std::int32_t group);
/// With a wish, which is meant for the original or one of its parts, it is written to the copy too.
KorDSMRecordCommands::Outcome copyFor(SourceId source, const Use& use, const KorString& name,
                                      const std::optional<KorDSMCopyWish>& wish = {});
/// Deletes the record that the cell has, which then has none, as one step. Refused where anything else uses
/// the record.
KorDSMRecordCommands::Outcome removeFor(SourceId source, const Use& use);

} // namespace KorDSMRecordUse
