#include "shell/StripButton.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "shell/CommandHelp.h"

#include <QAction>
#include <QToolButton>

QAction* addStripButton(KorButtonGroup& strip, const StripButton& button) {
    const KorString text = Prompts::ups(button.prompt);
    const QIcon icon = KorPictures::bitmap(button.bitmap);
    const QKeySequence key(QString::fromLatin1(button.key));
    strip.addButton(button.id, text, icon);
    strip.setButtonText(button.id, text, key);
    auto* action = CommandHelp::set(new QAction(icon, toQt(text), &strip), button.prompt);
    CommandHelp::set(strip.button(button.id), button.prompt);
    action->setShortcut(key);
    QObject::connect(action, &QAction::triggered, strip.button(button.id), &QToolButton::click);
    strip.window()->addAction(action);
    return action;
}
