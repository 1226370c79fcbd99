#include "dialogs/KorDSMDialogNewItem.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "dialogs/NewNameCheck.h"
#include "session/KorDSMItemWords.h"

#include <QAbstractButton>
#include <QBoxLayout>
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
    : KorDSMDialog(kTemplate, parent) {
    OnInitDialog(itemType, initialName, proposeName);
}

void KorDSMDialogNewItem::OnInitDialog(int itemType, const KorString& initialName, bool proposeName) {
    setCaption(1, 33740);
    setCaption(2, 33741);
    auto* edit = KorControls::find<QLineEdit>(this, kName);
    std::optional<KorDSMNaming> naming = KorDSMNaming::of(itemType, initialName, proposeName);
    if (KorAssert::check(naming.has_value(), "false")) {
        setWindowTitle(toQt(naming->title));
        setCaption(kLabel, naming->label);
    } else {
        naming.emplace().name = initialName;
    }
    edit->setText(toQt(naming->name));
    edit->selectAll();
    m_check = new NewNameCheck(edit, KorControls::find<QLabel>(this, kReason),
                               KorControls::find<QAbstractButton>(this, 1), this);
    m_check->setTaken(std::move(naming->isTaken));
    if (proposeName)
        m_check->check();
}

void KorDSMDialogNewItem::introduce(const KorString& sentence) {
    auto* introduction = new QLabel(toQt(sentence));
    introduction->setWordWrap(true);
    static_cast<QBoxLayout*>(layout())->insertWidget(0, introduction);
}

KorString KorDSMDialogNewItem::name() const {
    return m_check->name();
}
