#include "shell/CommandStrip.h"

#include "controls/KorButtonGroup.h"
#include "shell/StripButton.h"
#include "shell/WhenFree.h"

#include <algorithm>

CommandStrip::CommandStrip(KorButtonGroup& buttons) : m_buttons(buttons) {
    for (const ItemCommandRow& row : kItemCommandRows)
        m_actions[static_cast<std::size_t>(row.command)] =
            addStripButton(m_buttons, {row.button, row.bitmap, row.prompt, row.key});
    for (const ItemCommandRow& row : kItemCommandRows)
        action(row.command).setData(static_cast<int>(row.command));
    connect(&m_buttons, &KorButtonGroup::buttonPressed, this, [this](int id) {
        for (const ItemCommandRow& row : kItemCommandRows)
            if (const auto& act = m_acts[static_cast<std::size_t>(row.command)]; row.button == id && act)
                whenFree(this, act);
    });
}

void CommandStrip::on(eItemCommand command, std::function<void()> act) {
    m_acts[static_cast<std::size_t>(command)] = std::move(act);
}

bool CommandStrip::isComplete() const {
    return std::ranges::all_of(kItemCommandRows, [this](const ItemCommandRow& row) {
        return static_cast<bool>(m_acts[static_cast<std::size_t>(row.command)]);
    });
}

void CommandStrip::enable(const CommandStates& states) {
    for (const ItemCommandRow& row : kItemCommandRows) {
        const bool enabled = states[row.command];
        m_buttons.enableButton(row.button, enabled);
        action(row.command).setEnabled(enabled);
    }
}

void CommandStrip::trigger(eItemCommand command) {
    action(command).trigger();
}

void CommandStrip::giveDeleteKey(const QList<QWidget*>& controls) {
    const QKeySequence key(QKeySequence::Delete);
    QAction& command = action(eItemCommand::kDelete);
    command.setText(command.text() + u'\t' + key.toString(QKeySequence::NativeText));
    for (QWidget* control : controls) {
        auto* remove = new QAction(control);
        remove->setShortcut(key);
        remove->setShortcutContext(Qt::WidgetShortcut);
        connect(remove, &QAction::triggered, &command, &QAction::trigger);
        control->addAction(remove);
    }
}
