#include "shell/ItemMenu.h"

#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "model/KorDSMBusy.h"
#include "services/Prompts.h"
#include "shell/CommandHelp.h"
#include "shell/CommandStrip.h"
#include "shell/KorDSMUndoStrip.h"
#include "shell/TreeSelection.h"

#include <QMenu>

namespace {

constexpr int kOpen = 498; // "Open"

} // namespace

ItemMenu::ItemMenu(QWidget& window, SectionViews& sections, RightSide& rightSide, TreeSelection& selection,
                   CommandStrip& commands, KorDSMUndoStrip& undo)
    : m_window(window), m_sections(sections), m_rightSide(rightSide), m_selection(selection),
      m_commands(commands), m_undo(undo) {
    connect(&m_sections, &SectionViews::menuWanted, this, &ItemMenu::showForTree);
    connect(&m_rightSide.list(), &ItemList::menuWanted, this, &ItemMenu::showForList);
}

void ItemMenu::showForTree(KorTreeHandle entry, const QPoint& position) {
    if (KorDSMBusy::isBusy())
        return;
    if (entry)
        m_sections.currentControl().selectItem(entry);
    // A menu is no modal window: coming back to the editor by a click on an entry must not exchange the
    // items.
    const KorDSMBusy busy;
    m_rightSide.list().selectNothing();
    QMenu menu(&m_window);
    fill(menu);
    KorMnemonics::give(menu);
    menu.exec(position);
}

void ItemMenu::showForList(const QPoint& position) {
    if (KorDSMBusy::isBusy())
        return;
    QMenu menu(&m_window);
    const std::vector<KorDSMDatabaseItem*> items = m_rightSide.list().selectedItems();
    bool opens = false;
    if (items.size() == 1) {
        QAction* open = menu.addAction(toQt(Prompts::dsm(kOpen)));
        open->setShortcut(Qt::Key_Return);
        connect(open, &QAction::triggered, this, [&opens] { opens = true; });
        menu.setDefaultAction(open);
        menu.addSeparator();
    }
    fill(menu);
    KorMnemonics::give(menu);
    {
        const KorDSMBusy busy; // as for the menu of the tree
        menu.exec(position);
    }
    if (opens)
        m_rightSide.list().open(*items.front());
}

void ItemMenu::fill(QMenu& menu) {
    CommandHelp::serve(menu);
    for (QAction* action : m_commands.actions())
        menu.addAction(action);
    if (KorDSMDatabaseItem* item = m_selection.subject())
        for (const AddOwn& addOwn : m_own)
            addOwn(menu, *item);
    menu.addSeparator();
    for (QAction* action : m_undo.actions())
        menu.addAction(action);
}
