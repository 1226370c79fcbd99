#include "shell/CompactCommand.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMCompaction.h"
#include "session/KorDSMItemSource.h"
#include "shell/ApplyState.h"
#include "shell/CommandHelp.h"
#include "shell/Refusal.h"
#include "shell/RightSide.h"

#include <QMenu>
#include <QMessageBox>

namespace {

constexpr int kCompact = 480;

} // namespace

void CompactCommand::addTo(QMenu& menu, const KorDSMDatabaseItem& item) {
    if (!KorDSMCompaction::isFor(item))
        return;
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    menu.addSeparator();
    CommandHelp::set(menu.addAction(toQt(Prompts::dsm(kCompact)), this, [this, source] { compact(source); }),
                     kCompact);
}

void CompactCommand::compact(SourceId source) {
    RightSide::finishEditing();
    const auto planned = KorDSMCompaction::plan(source);
    if (!planned)
        return refuse(&m_window, planned.error);
    const KorDSMCompaction::Plan& plan = planned.value;
    const QString caption = toQt(Prompts::dsm(kCompact)).remove(u'…').trimmed();
    if (plan.parts == 0) {
        QMessageBox::information(&m_window, caption, toQt(plan.sentence));
        return;
    }
    if (QMessageBox::question(&m_window, caption, toQt(plan.sentence)) != QMessageBox::Yes)
        return;
    if (KorDSMCompaction::run(source))
        m_applyState.setModified(true);
    else
        refuse(&m_window, {});
}
