#pragma once

#include "dialogs/KorDSMDialog.h"

class NewNameCheck;

/// Asks for the name of an item that is about to be created or renamed. Names of the same kind that exist
/// already in the current source are refused while the user types.
class KorDSMDialogNewItem : public KorDSMDialog {
    Q_OBJECT

public:
    /// `itemType` is a `KorDSMDefines::eItemType`, or 8 (annotation type), 22 (view arrangement) or 30
    /// (clipping strategy); another one is a programming error and leaves the dialog without a label. With
    /// `proposeName` the field starts with a free name made from `initialName` (from what such records are
    /// called when that is empty), where the kind has one; otherwise with `initialName` as it is.
    KorDSMDialogNewItem(int itemType, const KorString& initialName, bool proposeName, QWidget* parent);

    /// Says above the field why it is asked for.
    void introduce(const KorString& sentence);

    /// The name in the field, without blanks at its ends. It can be empty: the caller then does nothing.
    KorString name() const;

private:
    void OnInitDialog(int itemType, const KorString& initialName, bool proposeName);

    NewNameCheck* m_check = nullptr;
};
