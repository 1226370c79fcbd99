#include "dialogs/KorDSMDialogConfirmation.h"

#include "controls/KorControls.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorListCtrl.h"
#include "controls/KorMnemonics.h"
#include "controls/KorOwnColors.h"
#include "controls/KorQt.h"
#include "dialogs/UsageList.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMSharedRecord.h"
#include "session/KorDSMValueText.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

namespace {

constexpr int kTemplate = 2019;
constexpr int kModifyRadio = 1212;
constexpr int kRunName = 1238;
constexpr int kInfo = 1239;
constexpr int kDontAsk = 1240;
constexpr int kUnfold = 1241;
constexpr int kUsers = 1242;
constexpr int kWhole = 1243;
constexpr int kOnlyHere = 1244;
constexpr int kCopyForOne = 623; // "A copy for "%s" alone..."
constexpr int kSharedPicture = 1082;

// Dark blue on a light ground; where the ground is dark, as light a blue as is needed to read it.
QColor runNameColour(const QPalette& palette) {
    const QColor darkBlue(0, 0, 150);
    return palette.color(QPalette::Window).lightness() < 128 ? QColor(140, 170, 255) : darkBlue;
}

} // namespace

KorDSMDialogConfirmation::KorDSMDialogConfirmation(eTableType table, const KorOdbcKey& key, QWidget* parent,
                                                   const KorString& user)
    : KorDSMDialog(kTemplate, parent) {
    KorDSMSharedRecord record = KorDSMSharedRecord::of(table, key);
    OnInitDialog(record);
    offerCopy(user);
    showUsers(std::move(record.users));
}

// Beside the choices: it is done at once, and nothing is changed for the others.
void KorDSMDialogConfirmation::offerCopy(const KorString& user) {
    auto* button = KorControls::find<QPushButton>(this, kOnlyHere);
    button->setVisible(!user.isEmpty());
    button->setText(KorMnemonics::literal(
        toQt(KorString::format(Prompts::dsm(kCopyForOne), {KorDSMValueText::shortName(user)}))));
    connect(button, &QPushButton::clicked, this, [this] {
        m_action = kMakeCopy;
        accept();
    });
}

void KorDSMDialogConfirmation::showUsers(std::vector<KorDSMUsage> users) {
    auto* list = KorControls::find<KorListCtrl>(this, kUsers);
    auto* button = KorControls::find<QToolButton>(this, kUnfold);
    const bool hasUsers = !users.empty();
    (new UsageList(list, std::move(users), this))->foldBehind(button);
    button->setChecked(hasUsers);
}

void KorDSMDialogConfirmation::OnInitDialog(const KorDSMSharedRecord& record) {
    setWindowTitle(toQt(Prompts::ups(33905)));
    if (auto* info = KorControls::find<KorInfoCtrl>(this, kInfo))
        info->setInfo({}, kSharedPicture);
    setCaption(1235, KorString::format(Prompts::ups(33911), {record.kind}));
    setCaption(1236, 33906);
    setCaption(1211, 33907);
    setCaption(kRunName, KorDSMValueText::shortName(record.name));
    setCaption(kWhole, record.whole);
    KorControls::find(this, kWhole)->setVisible(!record.isNamed);
    setCaption(kModifyRadio, KorString::format(Prompts::ups(33912), {record.kind}));
    setCaption(1213, 33908);
    setCaption(1237, 33909);
    setCaption(1214, 33910);
    setCaption(kDontAsk, 19798);
    setCaption(2, 21017);
    new KorOwnColors(KorControls::find(this, kRunName), [](QPalette& own, const QPalette& around) {
        own.setColor(QPalette::WindowText, runNameColour(around));
    });
    for (const eAction action : {kModify, kMakeCopy, kCancelModification})
        if (auto* radio = KorControls::find<QRadioButton>(this, kModifyRadio + action))
            connect(radio, &QRadioButton::clicked, this, [this, action] { m_action = action; });
    if (auto* modify = KorControls::find<QRadioButton>(this, kModifyRadio))
        modify->setChecked(true);
    if (auto* dontAsk = KorControls::find<QCheckBox>(this, kDontAsk))
        dontAsk->setChecked(!KorDSMSharedRecord::warningIsOn());
}

void KorDSMDialogConfirmation::accept() {
    const auto* dontAsk = KorControls::find<QCheckBox>(this, kDontAsk);
    KorDSMSharedRecord::switchWarning(!dontAsk || !dontAsk->isChecked());
    QDialog::accept();
}

int KorDSMDialogConfirmation::ask(eTableType table, const KorOdbcKey& key, QWidget* parent,
                                  const KorString& user) {
    KorDSMDialogConfirmation dialog(table, key, parent, user);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedAction() == kCancelModification)
        return KorDSMGuardedWrite::kDecline;
    return dialog.selectedAction() == kMakeCopy ? KorDSMGuardedWrite::kCopy : KorDSMGuardedWrite::kWrite;
}
