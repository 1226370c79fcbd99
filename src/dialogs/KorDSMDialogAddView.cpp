#include "dialogs/KorDSMDialogAddView.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "dialogs/NewNameCheck.h"
#include "services/Prompts.h"
#include "session/KorDSMItemWords.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace {

constexpr int kTemplate = 2390;
constexpr int kRadios[] = {2391, 2392, 2393}; // in the order of eWhat
constexpr int kViewLabel = 2394;
constexpr int kView = 2395;
constexpr int kNameLabel = 2396;
constexpr int kName = 2397;
constexpr int kReason = 2398;

constexpr int kTitle = 752;
constexpr int kFirstRadioText = 753;
constexpr int kViewText = 756;
constexpr int kNameText = 234;

// Categories are listed without views, too.
bool hasView(const VELComboTree& views, KorTreeHandle parent) {
    for (int i = 0; i < views.childCount(parent); ++i) {
        const KorTreeHandle entry = views.getChildAt(parent, i);
        if (entry->selectable || hasView(views, entry))
            return true;
    }
    return false;
}

} // namespace

KorDSMDialogAddView::KorDSMDialogAddView(const Fill& fill, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_view(KorControls::find<VELComboTree>(this, kView)) {
    setWindowTitle(toQt(Prompts::dsm(kTitle)));
    setCaption(1, 33740);
    setCaption(2, 33741);
    setCaption(kViewLabel, kViewText, "DSM");
    setCaption(kNameLabel, kNameText, "DSM");
    fill(*m_view);
    const bool hasViews = hasView(*m_view, nullptr);
    m_check =
        new NewNameCheck(KorControls::find<QLineEdit>(this, kName), KorControls::find<QLabel>(this, kReason),
                         KorControls::find<QPushButton>(this, 1), this);
    for (int i = 0; i < 3; ++i) {
        auto* radio = KorControls::find<QRadioButton>(this, kRadios[i]);
        setCaption(kRadios[i], kFirstRadioText + i, "DSM");
        radio->setEnabled(hasViews || i == static_cast<int>(Wish::eWhat::kNew));
        radio->setChecked(i == static_cast<int>(hasViews ? Wish::eWhat::kExisting : Wish::eWhat::kNew));
        connect(radio, &QRadioButton::clicked, this, &KorDSMDialogAddView::proposeName);
    }
    connect(m_view, &VELComboTree::entrySelected, this, &KorDSMDialogAddView::proposeName);
    connectButtons();
    proposeName();
    if (hasViews)
        m_view->setFocus(); // typing finds one
}

KorDSMDialogAddView::Wish::eWhat KorDSMDialogAddView::what() const {
    const auto* chosen = std::ranges::find_if(kRadios, [this](const auto& radio) {
        return KorControls::find<QRadioButton>(this, radio)->isChecked();
    });
    return static_cast<Wish::eWhat>(chosen - std::begin(kRadios));
}

KorString KorDSMDialogAddView::view() const {
    return what() == Wish::eWhat::kNew || !m_view->selectedEntry()
               ? KorString()
               : m_view->getEntryText(m_view->selectedEntry());
}

KorString KorDSMDialogAddView::name() const {
    return what() == Wish::eWhat::kExisting ? KorString() : m_check->name();
}

void KorDSMDialogAddView::proposeName() {
    auto* edit = KorControls::find<QLineEdit>(this, kName);
    const bool isMade = what() != Wish::eWhat::kExisting;
    const bool isReady = what() == Wish::eWhat::kNew || !view().isEmpty();
    const auto naming = KorDSMNaming::of(KorDSMDefines::kViewRequest, view(), true);
    m_check->setTaken(isMade && naming ? naming->isTaken : KorDSMNaming().isTaken);
    edit->setText(isMade && isReady && naming ? toQt(naming->name) : QString());
    edit->setEnabled(isMade && isReady);
    m_view->setEnabled(what() != Wish::eWhat::kNew);
    m_check->check();
    if (!isMade || !isReady)
        KorControls::find<QLabel>(this, kReason)->clear();
    KorControls::find<QPushButton>(this, 1)->setEnabled(isReady);
}
