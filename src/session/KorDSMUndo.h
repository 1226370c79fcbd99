#pragma once

#include "model/KorDSMDataStructure.h"
#include "model/KorDSMRowChange.h"

#include <initializer_list>
#include <vector>

class PendingLog;

/// Takes pending writes back and brings them again, in all sources, until they are kept. A step is what one
/// command or one edit wrote.
namespace KorDSMUndo {

/// Whether anything is written that is not kept yet, in any source.
bool isPending();
/// Whether there is a step that can be taken back or brought again: not while it is to be found out what
/// became of a commit of it.
bool canUndo();
bool canRedo();
/// What the menu says, as: Undo change of Title position of "Beam A". Only "Undo" or "Redo" with nothing
/// behind it when there is no step.
KorString undoText();
KorString redoText();
/// What the steps did, as: change of Title position of "Beam A"; the one taken back or brought again first
/// comes first. No more than `most` of them.
std::vector<KorString> undoSteps(std::size_t most);
std::vector<KorString> redoSteps(std::size_t most);
/// The same for what stands in another log of the open sources.
std::vector<KorString> stepsOf(const PendingLog& log, std::size_t most);

/// The number of the step that would be taken back next, which no other ever has; 0 for none.
int lastStep();
/// How many steps of all rows stand.
std::size_t stepCount();
/// What was done to the rows by the steps that stand since there were `before` of them, each row once.
std::vector<KorDSMRowChange> changesSince(std::size_t before);

/// Take back, or bring again, one step. They return the rows that are different now, each once, in the order
/// in which the step reached them; none when there is no step. The main dialog is told whether changes are
/// left to be applied (message 1042).
std::vector<KorDSMRowChange> undo();
std::vector<KorDSMRowChange> redo();

/// Takes back, without a trace, the steps that were made since there were `before` of them.
void takeBackTo(std::size_t before);

/// The item to show after a step that made these changes: the first of `preferred` whose pages show one of
/// them, else the first that can be found, in the section of the last of `preferred` where records of that
/// one changed; where none of these can be found, that item. A part is shown by its whole, too; a row that is
/// gone by its group or its whole alone. Null for none; `preferred` may hold nulls.
KorDSMDatabaseItem* itemOf(KorDSMDataStructure& structure, const std::vector<KorDSMRowChange>& changes,
                           std::initializer_list<KorDSMDatabaseItem*> preferred = {});

} // namespace KorDSMUndo
