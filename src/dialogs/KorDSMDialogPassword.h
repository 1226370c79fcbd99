#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMPasswords.h"

/// Asks for the password of a server that does not let the user in, and whether it is to be kept where there
/// is a keyring.
class KorDSMDialogPassword : public KorDSMDialog {
    Q_OBJECT

public:
    /// Numbers of the field and of the check box.
    static constexpr int kPassword = 2463, kKeep = 2464;

    /// `reason` is the sentence that says why; `user` who logs in, empty where nothing says it.
    KorDSMDialogPassword(const std::string& reason, const std::string& user, QWidget* parent);

    /// Asks until `open` gets in with the address, whose password is the one typed by then, and remembers
    /// that. `open` returns why it did not get in, which is `reason` at first. Returns whether it did before
    /// the user gave up.
    static bool ask(ServerAddress server, std::string reason,
                    const std::function<Result<>(const ServerAddress&)>& open, QWidget* parent);

private:
    std::string password() const;
    bool keeps() const;
};
