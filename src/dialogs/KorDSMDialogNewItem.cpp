#include "dialogs/KorDSMDialogNewItem.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "dialogs/NewItemKinds.h"
#include "dialogs/NewNameCheck.h"
#include "operations/KorDetailTableDependencies.h"
#include "services/Prompts.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr int kTemplate = 1004;
constexpr int kName = 1015;
constexpr int kLabel = 1016;
constexpr int kReason = 1017;

} // namespace

KorDSMDialogNewItem::KorDSMDialogNewItem(int itemType, const KorString& initialName, bool proposeName,
                                         QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_itemType(itemType) {
    OnInitDialog(initialName, proposeName);
}

void KorDSMDialogNewItem::OnInitDialog(const KorString& initialName, bool proposeName) {
    setCaption(1, 33740);
    setCaption(2, 33741);
    auto* edit = KorControls::find<QLineEdit>(this, kName);
    const NewItemKind* kind = findNewItemKind(m_itemType);
    KorAssert::check(kind != nullptr, "false");
    KorString proposal = initialName;
    KorArray<KorString> existing;
    if (kind) {
        setWindowTitle(toQt(Prompts::ups(kind->titlePrompt ? kind->titlePrompt : kind->labelPrompt)));
        setCaption(kLabel, kind->labelPrompt);
        kind->existingNames(existing);
        if (proposeName && kind->defaultNameTable != kNoTable)
            KorDetailTableDependencies::GetDefaultNameForRow(kind->defaultNameTable, proposal);
    }
    edit->setText(toQt(proposal));
    edit->selectAll();
    m_check = new NewNameCheck(edit, KorControls::find<QLabel>(this, kReason),
                               KorControls::find<QAbstractButton>(this, 1), this);
    m_check->setExistingNames(std::move(existing));
    if (proposeName)
        m_check->check();
}

KorString KorDSMDialogNewItem::name() const {
    return m_check->name();
}
