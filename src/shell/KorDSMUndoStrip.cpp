#include "shell/KorDSMUndoStrip.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorMnemonics.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "session/KorDSMUndo.h"
#include "shell/CommandHelp.h"

#include <QAction>
#include <QMenu>
#include <QToolButton>

namespace {

// Places of undo and redo; the ids of the buttons come after 0.
constexpr int kUndo = 0;
constexpr int kRedo = 1;
constexpr int kUndoBitmap = 1611;
constexpr int kRedoBitmap = 1612;
constexpr std::size_t kMostNamed = 20;

} // namespace

KorDSMUndoStrip::KorDSMUndoStrip(KorButtonGroup* buttons) : QObject(buttons), m_buttons(buttons) {
    add(kUndo, kUndoBitmap, "Ctrl+Z");
    add(kRedo, kRedoBitmap, "Ctrl+Shift+Z");
    connect(m_buttons, &KorButtonGroup::buttonPressed, this, [this](int id) { want(id - 1, 1); });
    update();
}

void KorDSMUndoStrip::add(int index, int bitmap, const char* key) {
    m_buttons->addButton(index + 1, {}, KorPictures::bitmap(bitmap));
    auto* menu = new QMenu(m_buttons);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, index] { fillMenu(*menu, index); });
    m_buttons->setButtonMenu(index + 1, menu);
    auto* action = new QAction(KorPictures::bitmap(bitmap), QString(), this);
    action->setShortcut(QKeySequence(QString::fromLatin1(key)));
    connect(action, &QAction::triggered, this, [this, index] { want(index, 1); });
    m_buttons->window()->addAction(action);
    const QString help =
        CommandHelp::placeOf(index == kUndo ? QStringLiteral("undo") : QStringLiteral("redo"));
    CommandHelp::setPlace(*action, help);
    CommandHelp::setPlace(*m_buttons->button(index + 1), help);
    m_actions[static_cast<std::size_t>(index)] = action;
}

void KorDSMUndoStrip::want(int index, int steps) {
    if (index == kUndo)
        Q_EMIT undoWanted(steps);
    else
        Q_EMIT redoWanted(steps);
}

void KorDSMUndoStrip::fillMenu(QMenu& menu, int index) {
    menu.clear();
    int steps = 0;
    for (const KorString& step :
         index == kUndo ? KorDSMUndo::undoSteps(kMostNamed) : KorDSMUndo::redoSteps(kMostNamed)) {
        const QAction* action = menu.addAction(KorMnemonics::literal(toQt(step)));
        connect(action, &QAction::triggered, this, [this, index, number = ++steps] { want(index, number); });
    }
}

void KorDSMUndoStrip::update() {
    for (const int index : {kUndo, kRedo}) {
        const bool possible = index == kUndo ? KorDSMUndo::canUndo() : KorDSMUndo::canRedo();
        const KorString text = index == kUndo ? KorDSMUndo::undoText() : KorDSMUndo::redoText();
        QAction* action = m_actions[static_cast<std::size_t>(index)];
        action->setEnabled(possible);
        action->setText(KorMnemonics::literal(toQt(text)));
        m_buttons->enableButton(index + 1, possible);
        m_buttons->setButtonText(index + 1, text, action->shortcut());
    }
}
