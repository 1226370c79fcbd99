#include "shell/ViewCommands.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMStyleViews.h"
#include "shell/Refusal.h"
#include "shell/WindowRefresh.h"

#include <QInputDialog>
#include <QMenu>

namespace {

constexpr int kAdd = 267;
constexpr int kRemove = 268;
constexpr int kMoveUp = 269;
constexpr int kMoveDown = 270;
constexpr int kView = 271;
constexpr int kNoRoom = 272; // "A detail style can have no more than %d views."

} // namespace

ViewCommands::ViewCommands(QWidget& window, SectionViews& sections, Navigation& navigation,
                           WindowRefresh& refresh)
    : m_window(window), m_sections(sections), m_navigation(navigation), m_refresh(refresh) {}

void ViewCommands::addTo(QMenu& menu, KorDSMDatabaseItem& item) {
    if (!KorDSMStyleViews::canChange(item))
        return;
    menu.addSeparator();
    menu.addAction(toQt(Prompts::dsm(kAdd)), this, [this, &item] { add(item); });
    if (KorDSMStyleViews::slotOf(item) < 0)
        return;
    menu.addAction(toQt(Prompts::dsm(kRemove)), this,
                   [this, &item] { show(item, KorDSMStyleViews::removeView(item), -1); });
    for (const int step : {-1, 1}) {
        QAction* move =
            menu.addAction(toQt(Prompts::dsm(step < 0 ? kMoveUp : kMoveDown)), this, [this, &item, step] {
                const int place = item.parent()->children().find(&item);
                show(item, KorDSMStyleViews::moveView(item, step), place + step);
            });
        move->setEnabled(KorDSMStyleViews::canMove(item, step));
    }
}

void ViewCommands::add(KorDSMDatabaseItem& item) {
    const KorDsmDetailStyleItem& style = *KorDSMStyleViews::styleOf(item);
    if (!KorDSMStyleViews::hasRoom(style))
        return refuse(&m_window, KorString::format(Prompts::dsm(kNoRoom),
                                                   {KorString::number(StructDetailStyle::kViewSlots)}));
    QStringList names;
    for (const KorString& name : KorDSMStyleViews::candidates())
        names << toQt(name);
    bool chosen = false;
    QString title = toQt(Prompts::dsm(kAdd));
    const QString name = QInputDialog::getItem(&m_window, title.remove(u'…').trimmed(),
                                               toQt(Prompts::dsm(kView)), names, 0, false, &chosen);
    if (!chosen || name.isEmpty())
        return;
    const bool isStyle = &item == &style;
    const int place = isStyle ? style.children().length() : style.children().find(&item) + 1;
    show(item, KorDSMStyleViews::addView(item, fromQt(name)), place);
}

// Shows the views of the item's style anew, and selects the one at a place, or the style itself.
void ViewCommands::show(KorDSMDatabaseItem& item, const std::vector<KorDSMRowChange>& changes, int place) {
    if (changes.empty())
        return;
    KorDsmDetailStyleItem& style = *KorDSMStyleViews::styleOf(item);
    m_refresh.follow(changes);
    m_sections.currentControl().expand(style.entry());
    const bool isThere = place >= 0 && place < style.children().length();
    m_navigation.selectEntry(isThere ? style.children()[place]->entry() : style.entry());
}
