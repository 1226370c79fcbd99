#include "shell/PreviewCommands.h"

#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "shell/CommandHelp.h"
#include "shell/PreviewPane.h"

#include <QAction>

namespace {

struct Command {
    int tool; // and picture
    int prompt;
    const char* key;
};
constexpr Command kCommands[] = {
    {PreviewPane::kFit, 1160, "Ctrl+0"},      {PreviewPane::kActualSize, 1161, "Ctrl+1"},
    {PreviewPane::kZoomIn, 1162, "Ctrl++"},   {PreviewPane::kZoomOut, 1163, "Ctrl+-"},
    {PreviewPane::kBefore, 1164, "Shift+F9"}, {PreviewPane::kPlace, 1165, "Ctrl+F9"},
};

} // namespace

PreviewCommands::PreviewCommands(QWidget& window, const std::function<void(int tool)>& press) {
    for (const Command& command : kCommands) {
        auto* action =
            new QAction(KorPictures::bitmap(command.tool), toQt(Prompts::dsm(command.prompt)), this);
        QList<QKeySequence> keys = {QKeySequence(QLatin1String(command.key))};
        if (command.tool == PreviewPane::kZoomIn) // where + needs the shift key
            keys << QKeySequence(Qt::CTRL | Qt::Key_Equal);
        action->setShortcuts(keys);
        CommandHelp::setPlace(*action, QStringLiteral("_Style_Preview"));
        connect(action, &QAction::triggered, this, [press, tool = command.tool] { press(tool); });
        window.addAction(action);
        m_actions << action;
        if (command.tool == PreviewPane::kBefore)
            m_comparison = action;
    }
}

void PreviewCommands::setEnabled(bool isShown, bool isComparable) {
    for (QAction* action : m_actions)
        action->setEnabled(isShown && (action != m_comparison || isComparable));
}
