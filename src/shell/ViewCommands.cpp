#include "shell/ViewCommands.h"

#include "controls/KorQt.h"
#include "dialogs/NewRecordQuestion.h"
#include "pages/ViewQuestion.h"
#include "services/Prompts.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMStyleViews.h"
#include "shell/CommandHelp.h"
#include "shell/Refusal.h"
#include "shell/WindowRefresh.h"

#include <QMenu>

namespace {

constexpr int kAdd = 267;
constexpr int kNew = 629; // "New view..."
constexpr int kRemove = 268;
constexpr int kMoveUp = 269;
constexpr int kMoveDown = 270;

} // namespace

ViewCommands::ViewCommands(QWidget& window, SectionViews& sections, Navigation& navigation,
                           WindowRefresh& refresh)
    : m_window(window), m_sections(sections), m_navigation(navigation), m_refresh(refresh) {}

void ViewCommands::addTo(QMenu& menu, KorDSMDatabaseItem& item) {
    if (!KorDSMStyleViews::canChange(item))
        return;
    menu.addSeparator();
    const auto add = [&](int prompt, auto act) {
        return CommandHelp::set(menu.addAction(toQt(Prompts::dsm(prompt)), this, act), prompt);
    };
    add(kAdd, [this, &item] { addChosen(item); });
    add(kNew, [this, &item] { addNew(item); });
    if (KorDSMStyleViews::slotOf(item) < 0)
        return;
    add(kRemove, [this, &item] { show(item, KorDSMStyleViews::removeView(item), -1); });
    for (const int step : {-1, 1}) {
        QAction* move = add(step < 0 ? kMoveUp : kMoveDown, [this, &item, step] {
            const int place = item.parent()->children().find(&item);
            show(item, KorDSMStyleViews::moveView(item, step), place + step);
        });
        move->setEnabled(KorDSMStyleViews::canMove(item, step));
    }
}

bool ViewCommands::hasRoom(KorDSMDatabaseItem& item) {
    const KorString full = KorDSMStyleViews::whyFull(item);
    if (!full.isEmpty())
        refuse(&m_window, full);
    return full.isEmpty();
}

void ViewCommands::addNew(KorDSMDatabaseItem& item) {
    if (!hasRoom(item))
        return;
    if (const auto wanted = askForNewRecord(kTableViewRequest, KorDSMItemSource::sourceOf(&item), &m_window))
        add(item, {KorDSMViewList::Wish::eWhat::kNew, 0, wanted->name});
}

int ViewCommands::placeBehind(KorDSMDatabaseItem& item) {
    const KorDsmDetailStyleItem& style = *KorDSMStyleViews::styleOf(item);
    return &item == &style ? style.children().length() : style.children().find(&item) + 1;
}

void ViewCommands::addChosen(KorDSMDatabaseItem& item) {
    if (!hasRoom(item))
        return;
    if (const auto wish = askForView(&m_window))
        add(item, *wish);
}

void ViewCommands::add(KorDSMDatabaseItem& item, const KorDSMViewList::Wish& wish) {
    const int place = placeBehind(item);
    KorString error;
    show(item, KorDSMStyleViews::add(item, wish, error), place);
    if (!error.isEmpty())
        refuse(&m_window, error);
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
