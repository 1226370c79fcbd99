#pragma once

#include "session/KorDSMEditedList.h"

#include <QKeySequence>

class QWidget;

/// What can be done with a list that is edited where it stands: by its button, its key or its menu.
struct PartListCommand {
    int button;
    int bitmap; ///< 0: only in the menu
    int prompt;
    QKeySequence key;
    bool needsRows;
    bool needsOrder;
    bool onlyReads;
    /// Does it with the selected rows; `window` is the one that asks. Without rows selected in the outcome
    /// they stay selected.
    KorDSMEditedList::Outcome (*act)(KorDSMEditedList& list, const KorDSMEditedList::Keys& rows,
                                     QWidget& window);

    /// All, in the order of buttons and menu.
    static const std::vector<PartListCommand>& all();
    /// Writes one column of the selected rows as the copied ones have it.
    static KorDSMEditedList::Outcome pasteColumn(KorDSMEditedList& list, const KorDSMEditedList::Keys& rows,
                                                 const Column& column, QWidget& window);
};
