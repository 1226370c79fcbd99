#include "dialogs/KorDSMDialogInUse.h"

#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "dialogs/UsageList.h"
#include "services/Prompts.h"

#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace {

constexpr int kTemplate = 2353;
constexpr int kPicture = 2354;
constexpr int kText = 2355;
constexpr int kUnfold = 2356;
constexpr int kList = 2357;

} // namespace

KorDSMDialogInUse::KorDSMDialogInUse(const KorString& text, std::vector<KorDSMUsage> users, QWidget* parent)
    : KorDSMDialog(kTemplate, parent) {
    setWindowTitle(toQt(Prompts::ups(33522)));
    setCaption(1, 33740);
    setCaption(kText, text);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    if (auto* picture = KorControls::find<QLabel>(this, kPicture))
        picture->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(size));
    auto* list = new UsageList(KorControls::find<KorListCtrl>(this, kList), std::move(users), this);
    list->foldBehind(KorControls::find<QToolButton>(this, kUnfold));
    connect(list, &UsageList::chosen, this, [this](const KorDSMUsage& usage) {
        m_chosen = usage;
        reject();
    });
}
