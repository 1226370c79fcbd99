#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMCompaction.h"
#include "shell/KorDSMMainDialog.h"

#include <QMenu>
#include <QMessageBox>

// The command of a source that removes the parts whose record does not exist.

namespace {

constexpr int kCompact = 480;

} // namespace

void KorDSMMainDialog::addCompactCommand(QMenu& menu, const KorDSMDatabaseItem& item) {
    if (!KorDSMCompaction::isFor(item))
        return;
    const SourceId id = KorDSMItemSource::sourceOf(&item);
    menu.addSeparator();
    menu.addAction(toQt(Prompts::dsm(kCompact)), this, [this, id] { compact(id); });
}

void KorDSMMainDialog::compact(SourceId id) {
    finishCurrentPage();
    const KorDSMCompaction::Plan plan = KorDSMCompaction::plan(id);
    if (!plan.refusal.isEmpty())
        return refuse(plan.refusal);
    const QString caption = toQt(Prompts::dsm(kCompact)).remove(u'…').trimmed();
    if (plan.parts == 0) {
        QMessageBox::information(this, caption, toQt(plan.sentence));
        return;
    }
    if (QMessageBox::question(this, caption, toQt(plan.sentence)) != QMessageBox::Yes)
        return;
    if (!KorDSMCompaction::run(id))
        return refuse({});
    setModified(true);
}
