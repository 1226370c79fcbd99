#include "shell/SourcesCommand.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogSources.h"
#include "services/KOSettings.h"
#include "services/Prompts.h"
#include "session/DataFolder.h"

#include <QInputDialog>
#include <QMenu>

namespace {

constexpr int kDatabases = 1020;
constexpr int kPassword = 1025;  // caption
constexpr int kNotStored = 1026; // "... The password is kept until the editor ends."

} // namespace

void SourcesCommand::addTo(QMenu& menu, const KorDSMDatabaseItem& item) {
    if (item.type() != KorDSMDefines::kDatabaseContent && item.type() != KorDSMDefines::kAddInContent)
        return;
    menu.addSeparator();
    menu.addAction(toQt(Prompts::dsm(kDatabases)), this, [this] {
        const std::string folder = KOSettings::getInstance().getPathData().toStdString();
        KorDSMDialogSources(folder, &m_window).exec();
    });
}

void SourcesCommand::askForPasswords(DataFolder& folder) {
    while (!folder.refused().empty()) {
        const QString reason = QString::fromStdString(folder.refused().front().error);
        bool isGiven = false;
        const QString password =
            QInputDialog::getText(nullptr, toQt(Prompts::dsm(kPassword)),
                                  reason + QStringLiteral("\n\n") + toQt(Prompts::dsm(kNotStored)),
                                  QLineEdit::Password, {}, &isGiven);
        if (!isGiven)
            return;
        static_cast<void>(folder.openRefused(password.toStdString()));
    }
}
