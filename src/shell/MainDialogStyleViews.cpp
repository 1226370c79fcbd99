#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMStyleViews.h"
#include "shell/KorDSMMainDialog.h"

#include <QInputDialog>
#include <QMenu>

// Which views a detail style has: commands of the context menu.

namespace {

constexpr int kAdd = 267;
constexpr int kRemove = 268;
constexpr int kMoveUp = 269;
constexpr int kMoveDown = 270;
constexpr int kView = 271;
constexpr int kNoRoom = 272; // "A detail style can have no more than %d views."

} // namespace

void KorDSMMainDialog::addViewCommands(QMenu& menu, KorDSMDatabaseItem& item) {
    if (!KorDSMStyleViews::canChange(item))
        return;
    menu.addSeparator();
    menu.addAction(toQt(Prompts::dsm(kAdd)), this, [this, &item] { addView(item); });
    if (KorDSMStyleViews::slotOf(item) < 0)
        return;
    menu.addAction(toQt(Prompts::dsm(kRemove)), this,
                   [this, &item] { changeViews(item, KorDSMStyleViews::remove(item), -1); });
    for (const int step : {-1, 1}) {
        QAction* move =
            menu.addAction(toQt(Prompts::dsm(step < 0 ? kMoveUp : kMoveDown)), this, [this, &item, step] {
                const int place = item.m_pParent->children().find(&item);
                changeViews(item, KorDSMStyleViews::move(item, step), place + step);
            });
        move->setEnabled(KorDSMStyleViews::canMove(item, step));
    }
}

void KorDSMMainDialog::addView(KorDSMDatabaseItem& item) {
    const KorDsmDetailStyleItem& style = *KorDSMStyleViews::styleOf(item);
    if (!KorDSMStyleViews::hasRoom(style))
        return refuse(
            KorString::format(Prompts::dsm(kNoRoom), {KorString::number(StructDetailStyle::kViewSlots)}));
    QStringList names;
    for (const KorString& name : KorDSMStyleViews::candidates())
        names << toQt(name);
    bool chosen = false;
    QString title = toQt(Prompts::dsm(kAdd));
    const QString name = QInputDialog::getItem(this, title.remove(u'…').trimmed(), toQt(Prompts::dsm(kView)),
                                               names, 0, false, &chosen);
    if (!chosen || name.isEmpty())
        return;
    const bool isStyle = &item == &style;
    const int place = isStyle ? style.children().length() : style.children().find(&item) + 1;
    changeViews(item, KorDSMStyleViews::add(item, fromQt(name)), place);
}

// Shows the views of the item's style anew, and selects the one at a place, or the style itself.
void KorDSMMainDialog::changeViews(KorDSMDatabaseItem& item, const std::vector<KorDSMRowChange>& changes,
                                   int place) {
    if (changes.empty())
        return;
    KorDsmDetailStyleItem& style = *KorDSMStyleViews::styleOf(item);
    followChanges(changes);
    currentTree().control()->expand(style.m_hTreeItem);
    const bool isThere = place >= 0 && place < style.children().length();
    selectEntry(isThere ? style.children()[place]->m_hTreeItem : style.m_hTreeItem);
}
