#include "shell/UsageViews.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemSource.h"
#include "shell/CommandHelp.h"
#include "shell/Navigation.h"
#include "shell/WhenFree.h"

#include <QMenu>

namespace {

constexpr int kWhereUsed = 262; // "Where used..."

} // namespace

UsageViews::UsageViews(QWidget& window, KorDSMDataStructure& structure, Navigation& navigation)
    : m_window(window), m_structure(structure), m_navigation(navigation) {}

void UsageViews::tellOf(const std::vector<KorDSMUsage>& users) {
    KorDSMDialogInUse dialog(KorDSMItemCommands::inUseText(), users, &m_window);
    dialog.exec();
    if (dialog.chosen())
        goTo(*dialog.chosen());
}

void UsageViews::addTo(QMenu& menu, KorDSMDatabaseItem& item) {
    if (!item.record() || item.tableType() == kNoTable)
        return;
    menu.addSeparator();
    connect(CommandHelp::set(menu.addAction(toQt(Prompts::dsm(kWhereUsed))), kWhereUsed), &QAction::triggered,
            this, [this, &item] { list(item); });
}

void UsageViews::list(const KorDSMDatabaseItem& item) {
    auto* dialog = new KorDSMDialogWhereUsed(item.getDisplayName(), KorDSMItemSource::sourceOf(&item),
                                             {item.tableType(), item.recordKey()}, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &KorDSMDialogWhereUsed::usageChosen, this, waiting(this, &UsageViews::goTo));
    dialog->show();
}

void UsageViews::goTo(const KorDSMUsage& usage) {
    if (KorDSMDatabaseItem* user = KorDSMWhereUsed::findItem(m_structure, usage.source, usage.row))
        m_navigation.goToItem(*user);
}
