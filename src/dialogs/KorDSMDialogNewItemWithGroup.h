#pragma once

#include "dialogs/KorDSMDialog.h"

class KorComboBitmap;
class NewNameCheck;
struct KorDSMFiledNaming;

/// Asks for the name of a new detail style, annotation strategy, dimension request or qualifier set, and for
/// the category or group into which it goes. Names that exist already are refused while the user types.
class KorDSMDialogNewItemWithGroup : public KorDSMDialog {
    Q_OBJECT

public:
    /// `itemType` is 2, 7, 11 or 14; another one is a programming error and leaves the dialog without labels
    /// and groups. The field starts with a name made from `name`, or from what such records are called when
    /// that is empty; the group `group` is chosen, or the first one when there is no such group.
    KorDSMDialogNewItemWithGroup(int itemType, const KorString& name, const KorString& group,
                                 QWidget* parent);

    /// The name in the field, without blanks at its ends. It can be empty: the caller then does nothing.
    KorString name() const;
    /// Name of the chosen group; empty when the source has none.
    KorString groupName() const;
    /// Key of the chosen group's row; 0 when the source has none.
    int groupKey() const;

private:
    void fillGroups(const KorDSMFiledNaming& naming, const KorString& chosen);

    NewNameCheck* m_check = nullptr;
    KorComboBitmap* m_groups;
};
