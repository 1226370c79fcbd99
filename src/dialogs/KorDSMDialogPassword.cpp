#include "dialogs/KorDSMDialogPassword.h"

#include "base/Translation.h"
#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"

#include <QCheckBox>
#include <QLineEdit>

namespace {

constexpr int kTemplate = 2460;
constexpr int kReason = 2461;
constexpr int kCaption = 2462;
constexpr int kNote = 2465;

constexpr int kTitle = 1025;
constexpr int kNotStored = 1026;
constexpr int kOfUser = 1390;
constexpr int kKeepText = 1045;

} // namespace

KorDSMDialogPassword::KorDSMDialogPassword(const std::string& reason, const std::string& user,
                                           QWidget* parent)
    : KorDSMDialog(kTemplate, parent) {
    setWindowTitle(toQt(Prompts::dsm(kTitle)));
    setCaption(1, 33740);
    setCaption(2, 33741);
    setCaption(kReason, KorString(reason));
    setCaption(kCaption,
               KorString::format("%s:", {user.empty() ? Prompts::dsm(kTitle)
                                                      : KorString::format(Prompts::dsm(kOfUser), {user})}));
    setCaption(kKeep, kKeepText, "DSM");
    setCaption(kNote, kNotStored, "DSM");
    const bool canKeep = KorDSMPasswords::current().canKeep();
    KorControls::find(this, kKeep)->setVisible(canKeep);
    KorControls::find(this, kNote)->setVisible(!canKeep);
    KorControls::find(this, kPassword)->setFocus();
}

std::string KorDSMDialogPassword::password() const {
    return KorControls::find<QLineEdit>(this, kPassword)->text().toStdString();
}

bool KorDSMDialogPassword::keeps() const {
    return KorControls::find<QCheckBox>(this, kKeep)->isChecked();
}

bool KorDSMDialogPassword::ask(ServerAddress server, std::string reason,
                               const std::function<Result<>(const ServerAddress&)>& open, QWidget* parent) {
    bool keeps = false;
    while (!reason.empty()) {
        KorDSMDialogPassword dialog(reason, server.user, parent);
        KorControls::find<QCheckBox>(&dialog, kKeep)->setChecked(keeps);
        if (dialog.exec() != Accepted)
            return false;
        keeps = dialog.keeps();
        server.password = dialog.password();
        reason = open(server).error;
    }
    if (!KorDSMPasswords::current().learn(server, keeps))
        KorHostReport::add(translated("The keyring did not take the password; it is asked for again at the "
                                      "next start."));
    return true;
}
