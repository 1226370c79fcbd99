#include "shell/ViewCommands.h"

#include "controls/KorQt.h"
#include "dialogs/NewRecordQuestion.h"
#include "services/Prompts.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMStyleViews.h"
#include "shell/Refusal.h"
#include "shell/WindowRefresh.h"

#include <QInputDialog>
#include <QMenu>

namespace {

constexpr int kAdd = 267;
constexpr int kNew = 629; // "New view..."
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
    menu.addAction(toQt(Prompts::dsm(kNew)), this, [this, &item] { addNew(item); });
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

bool ViewCommands::hasRoom(KorDSMDatabaseItem& item) {
    if (KorDSMStyleViews::hasRoom(*KorDSMStyleViews::styleOf(item)))
        return true;
    refuse(&m_window,
           KorString::format(Prompts::dsm(kNoRoom), {KorString::number(StructDetailStyle::kViewSlots)}));
    return false;
}

void ViewCommands::addNew(KorDSMDatabaseItem& item) {
    if (!hasRoom(item))
        return;
    const auto wanted = askForNewRecord(kTableViewRequest, KorDSMItemSource::sourceOf(&item), &m_window);
    if (!wanted)
        return;
    const int place = placeBehind(item);
    KorString error;
    show(item, KorDSMStyleViews::addNewView(item, wanted->name, error), place);
    if (!error.isEmpty())
        refuse(&m_window, error);
}

int ViewCommands::placeBehind(KorDSMDatabaseItem& item) {
    const KorDsmDetailStyleItem& style = *KorDSMStyleViews::styleOf(item);
    return &item == &style ? style.children().length() : style.children().find(&item) + 1;
}

void ViewCommands::add(KorDSMDatabaseItem& item) {
    if (!hasRoom(item))
        return;
    QStringList names;
    for (const KorString& name : KorDSMStyleViews::candidates())
        names << toQt(name);
    bool chosen = false;
    QString title = toQt(Prompts::dsm(kAdd));
    const QString name = QInputDialog::getItem(&m_window, title.remove(u'…').trimmed(),
                                               toQt(Prompts::dsm(kView)), names, 0, false, &chosen);
    if (!chosen || name.isEmpty())
        return;
    const int place = placeBehind(item);
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
