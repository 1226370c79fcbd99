#include "pages/ViewQuestion.h"

#include "dialogs/KorDSMDialogAddView.h"
#include "operations/CurrentRows.h"
#include "pages/SelectionFills.h"

std::optional<KorDSMViewList::Wish> askForView(QWidget* parent) {
    KorDSMDialogAddView dialog(
        [](VELComboTree& views) { SelectionFills::fill(SelectionFills::kViewRequests, views); }, parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    KorDSMViewList::Wish wish{dialog.what(), 0, dialog.name()};
    if (const StructRecord* view = CurrentRows::find(kTableViewRequest, dialog.view()))
        wish.view = view->key;
    const bool isWhole =
        wish.what == KorDSMViewList::Wish::eWhat::kExisting ? wish.view != 0 : !wish.name.isEmpty();
    return isWhole ? std::optional(wish) : std::nullopt;
}
