#pragma once

#include "session/KorDSMCommandStates.h"

#include <QAction>
#include <QObject>

#include <array>
#include <functional>

class KorButtonGroup;
class QMenu;

/// The strip of the item commands: their buttons, keys and menu entries, as the rows of the commands say.
class CommandStrip : public QObject {
    Q_OBJECT

public:
    /// Fills `buttons`, which must outlive the object, and gives the keys to its window.
    explicit CommandStrip(KorButtonGroup& buttons);

    /// What the command does; it waits while something is busy.
    void on(eItemCommand command, std::function<void()> act);
    /// Whether each command that is offered does something.
    bool isComplete() const;

    /// `whyReadOnly` is told where a command that changes something is off because of that; it can be empty.
    void enable(const CommandStates& states, const KorString& whyReadOnly = {});
    /// Takes the command's entry out of a menu that has something better for what is selected.
    static void leaveOut(QMenu& menu, eItemCommand command);
    /// Leaves the command out of menus, where another entry stands for it.
    void leaveOutOfMenus(eItemCommand command) { action(command).setVisible(false); }
    /// Presses the command's button, if it is enabled.
    void trigger(eItemCommand command);
    /// The entries for menus, in the order of the buttons; the data of each is its command's number.
    const std::array<QAction*, kNumberOfItemCommands>& actions() const { return m_actions; }

    /// Lets the Delete key delete in `control` alone: in a field or a grid it deletes what is there. Menus
    /// name the key all the same.
    void giveDeleteKey(const QList<QWidget*>& controls);
    /// What that key does.
    void pressDelete();

Q_SIGNALS:
    /// The Delete key was pressed where the command is off.
    void deleteElsewhere();

private:
    QAction& action(eItemCommand command) { return *m_actions[static_cast<std::size_t>(command)]; }

    KorButtonGroup& m_buttons;
    std::array<QAction*, kNumberOfItemCommands> m_actions{};
    std::array<std::function<void()>, kNumberOfItemCommands> m_acts;
    std::array<QString, kNumberOfItemCommands> m_tips; // of the buttons
};
