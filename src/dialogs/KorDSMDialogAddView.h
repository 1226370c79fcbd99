#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMViewList.h"

#include <functional>

class NewNameCheck;
class VELComboTree;

/// Asks which view is to be added to a style: one that exists, chosen in the tree of categories, a copy of
/// such a one, or a new one.
class KorDSMDialogAddView : public KorDSMDialog {
    Q_OBJECT

public:
    using Wish = KorDSMViewList::Wish;
    /// Puts the views of the current source into the tree; each entry's name is that of its view.
    using Fill = std::function<void(VELComboTree& views)>;

    KorDSMDialogAddView(const Fill& fill, QWidget* parent);

    /// What was chosen; only the name of the view, not its key.
    Wish::eWhat what() const;
    KorString view() const;
    /// Of the copy or the new view, without blanks at its ends.
    KorString name() const;

private:
    void proposeName();

    VELComboTree* m_view;
    NewNameCheck* m_check = nullptr;
};
