#include "shell/SourcesCommand.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogPassword.h"
#include "dialogs/KorDSMDialogSources.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "session/DataFolder.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/CommandHelp.h"
#include "shell/LockNotice.h"
#include "shell/Reports.h"
#include "shell/ServerWatch.h"
#include "shell/WhenFree.h"
#include "shell/WindowRefresh.h"

#include <QMenu>

namespace {

constexpr int kDatabases = 1020;
constexpr int kCountsLater = 1046; // "Changes of %s are not stored yet: ..."

} // namespace

void SourcesCommand::addTo(QMenu& menu, const KorDSMDatabaseItem& item) {
    if (item.type() != KorDSMDefines::kDatabaseContent && item.type() != KorDSMDefines::kAddInContent)
        return;
    menu.addSeparator();
    CommandHelp::set(menu.addAction(toQt(Prompts::dsm(kDatabases)), this,
                                    [this] { whenFree(this, [this] { choose(); }); }),
                     kDatabases);
}

void SourcesCommand::choose() {
    KorDSMDialogSources dialog(KOSettings::getInstance().dataFolder(), &m_window);
    new LockNotice(dialog.saidLine()); // the dialog owns it
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_moved.insert(dialog.moved().begin(), dialog.moved().end());
    follow();
    for (const SourceId id : m_moved)
        KorHostReport::add(KorString::format(Prompts::dsm(kCountsLater), {KorDSMWhereUsed::sourceName(id)}));
    m_reports.show();
}

void SourcesCommand::follow() {
    DataFolder folder(KOSettings::getInstance().dataFolder());
    {
        const KorDSMBusy busy;
        if (!folder.openAnew(m_moved))
            return;
        askForPasswords(folder, &m_window);
    }
    for (const KorString& problem : folder.problems())
        KorHostReport::add(problem);
    m_refresh.reload();
    m_servers.begin();
    m_reports.show();
}

void SourcesCommand::askForPasswords(DataFolder& folder, QWidget* parent) {
    while (!folder.refused().empty()) {
        const DataFolder::Refused refused = folder.refused().front();
        const auto open = [&](const ServerAddress& server) { return folder.openRefused(server); };
        const bool isKnown = KorDSMPasswords::current().isGiven(refused.server); // of another source there
        if (!(isKnown && open(refused.server)) &&
            !KorDSMDialogPassword::ask(refused.server, refused.error, open, parent))
            folder.leaveRefused();
    }
}
