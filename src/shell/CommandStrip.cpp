#include "shell/CommandStrip.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "shell/StripButton.h"
#include "shell/WhenFree.h"

#include <QMenu>
#include <QToolButton>

#include <algorithm>

CommandStrip::CommandStrip(KorButtonGroup& buttons) : m_buttons(buttons) {
    for (const ItemCommandRow& row : kItemCommandRows)
        m_actions[static_cast<std::size_t>(row.command)] =
            addStripButton(m_buttons, {row.button, row.bitmap, row.prompt, row.key});
    for (const ItemCommandRow& row : kItemCommandRows) {
        action(row.command).setData(static_cast<int>(row.command));
        m_tips[static_cast<std::size_t>(row.command)] = m_buttons.button(row.button)->toolTip();
    }
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

void CommandStrip::leaveOut(QMenu& menu, eItemCommand command) {
    for (QAction* entry : menu.actions())
        if (entry->data() == static_cast<int>(command))
            menu.removeAction(entry);
}

void CommandStrip::enable(const CommandStates& states, const KorString& whyReadOnly) {
    constexpr int kElsewhere = 1365; // "%s copies it into a database that can be changed."
    for (const ItemCommandRow& row : kItemCommandRows) {
        const bool enabled = states[row.command];
        m_buttons.enableButton(row.button, enabled);
        action(row.command).setEnabled(enabled);
        QString tip = m_tips[static_cast<std::size_t>(row.command)];
        if (!enabled && row.is(ItemCommandRow::kChangesSource) && !whyReadOnly.isEmpty()) {
            tip += u'\n' + toQt(whyReadOnly);
            if (row.command == eItemCommand::kCopy)
                tip += u'\n' + toQt(KorString::format(Prompts::dsm(kElsewhere), {KorString(row.key)}));
        }
        m_buttons.button(row.button)->setToolTip(tip);
    }
}

void CommandStrip::trigger(eItemCommand command) {
    action(command).trigger();
}

void CommandStrip::pressDelete() {
    if (action(eItemCommand::kDelete).isEnabled())
        trigger(eItemCommand::kDelete);
    else
        Q_EMIT deleteElsewhere();
}

void CommandStrip::giveDeleteKey(const QList<QWidget*>& controls) {
    const QKeySequence key(QKeySequence::Delete);
    QAction& command = action(eItemCommand::kDelete);
    command.setText(command.text() + u'\t' + key.toString(QKeySequence::NativeText));
    for (QWidget* control : controls) {
        auto* remove = new QAction(control);
        remove->setShortcut(key);
        remove->setShortcutContext(Qt::WidgetShortcut);
        connect(remove, &QAction::triggered, this, &CommandStrip::pressDelete);
        control->addAction(remove);
    }
}
