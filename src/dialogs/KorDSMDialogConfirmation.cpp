#include "dialogs/KorDSMDialogConfirmation.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "data/StyleDatabases.h"
#include "dialogs/UsageList.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMMessages.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMValueText.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QToolButton>

#include <map>

namespace {

constexpr int kTemplate = 2019;
constexpr int kModifyRadio = 1212;
constexpr int kRunName = 1238;
constexpr int kInfo = 1239;
constexpr int kDontAsk = 1240;
constexpr int kUnfold = 1241;
constexpr int kUsers = 1242;
constexpr int kSharedPicture = 1082;
constexpr int kWarningOption = 2; // index in the options menu

const std::map<eTableType, int>& kindPrompts() {
    static const std::map<eTableType, int> prompts = {
        {kTableViewArrangeStrategy, 33538}, {kTableViewRequest, 33570},     {kTableReprMap, 33580},
        {kTableSystemAndBox, 33772},        {kTableViewDimStrategy, 33610}, {kTableLengthClip, 33759},
        {kTableAnnotationStrategy, 33790},  {kTableAnnotationType, 33800},  {kTableArrangerControl, 33805},
        {kTableArrangerStrategy, 33805},    {kTableDimRequest, 33625},      {kTablePointSelection, 33645},
        {kTableQualifierSet, 33665},
    };
    return prompts;
}

// Dark blue on a light ground; where the ground is dark, as light a blue as is needed to read it.
QColor runNameColour(const QPalette& palette) {
    const QColor darkBlue(0, 0, 150);
    return palette.color(QPalette::Window).lightness() < 128 ? QColor(140, 170, 255) : darkBlue;
}

} // namespace

KorDSMDialogConfirmation::KorDSMDialogConfirmation(eTableType table, const KorOdbcKey& key, QWidget* parent)
    : KorDSMDialog(kTemplate, parent) {
    OnInitDialog(prepareTexts(table, key));
    showUsers(table, key);
}

void KorDSMDialogConfirmation::showUsers(eTableType table, const KorOdbcKey& key) {
    auto* list = KorControls::find<KorListCtrl>(this, kUsers);
    auto* button = KorControls::find<QToolButton>(this, kUnfold);
    std::vector<KorDSMUsage> users;
    if (findTable(table))
        users = KorDSMWhereUsed::usagesUpToSharing(StyleDatabases::current().currentSource(), {table, key});
    const bool hasUsers = !users.empty();
    (new UsageList(list, std::move(users), this))->foldBehind(button);
    button->setChecked(hasUsers);
}

KorDSMDialogConfirmation::Texts KorDSMDialogConfirmation::prepareTexts(eTableType table,
                                                                       const KorOdbcKey& key) const {
    Texts texts;
    const bool initialized = KorAssert::check(table != kNoTable && key.isValid(),
                                              "0 && _T(\"The messages were not initialized\")");
    const auto prompt = kindPrompts().find(table);
    if (!initialized || prompt == kindPrompts().end()) {
        texts.kind = "item";
        return texts;
    }
    texts.kind = Prompts::ups(prompt->second);
    StyleSource* source = StyleDatabases::current().here();
    if (const StructRecord* row = source ? source->table(table).find(key) : nullptr)
        texts.runName = row->getRunBezeichnung();
    return texts;
}

void KorDSMDialogConfirmation::OnInitDialog(const Texts& texts) {
    setWindowTitle(toQt(Prompts::ups(33905)));
    if (auto* info = KorControls::find<KorInfoCtrl>(this, kInfo))
        info->setInfo({}, kSharedPicture);
    setCaption(1235, KorString::format(Prompts::ups(33911), {texts.kind}));
    setCaption(1236, 33906);
    setCaption(1211, 33907);
    setCaption(kRunName, KorDSMValueText::shortName(texts.runName));
    setCaption(kModifyRadio, KorString::format(Prompts::ups(33912), {texts.kind}));
    setCaption(1213, 33908);
    setCaption(1237, 33909);
    setCaption(1214, 33910);
    setCaption(kDontAsk, 19798);
    setCaption(2, 21017);
    if (auto* name = KorControls::find<QLabel>(this, kRunName)) {
        QPalette palette = name->palette();
        palette.setColor(QPalette::WindowText, runNameColour(palette));
        name->setPalette(palette);
    }
    for (const eAction action : {kModify, kMakeCopy, kCancelModification})
        if (auto* radio = KorControls::find<QRadioButton>(this, kModifyRadio + action))
            connect(radio, &QRadioButton::clicked, this, [this, action] { m_action = action; });
    if (auto* modify = KorControls::find<QRadioButton>(this, kModifyRadio))
        modify->setChecked(true);
    if (auto* dontAsk = KorControls::find<QCheckBox>(this, kDontAsk))
        dontAsk->setChecked(!KorDSMDialogFactory::getDSMDataStructure().getShowWarning());
}

void KorDSMDialogConfirmation::accept() {
    const auto* dontAsk = KorControls::find<QCheckBox>(this, kDontAsk);
    const bool warn = !dontAsk || !dontAsk->isChecked();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(warn);
    DsmSetOptionCheck message;
    message.index = kWarningOption;
    message.value = warn;
    KorDSMMainWindow::sendMessage(message);
    QDialog::accept();
}

int KorDSMDialogConfirmation::ask(eTableType table, const KorOdbcKey& key, QWidget* parent) {
    KorDSMDialogConfirmation dialog(table, key, parent);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedAction() == kCancelModification)
        return KorDSMGuardedWrite::kDecline;
    return dialog.selectedAction() == kMakeCopy ? KorDSMGuardedWrite::kCopy : KorDSMGuardedWrite::kWrite;
}
