#pragma once

#include <QString>

class QMenu;
class QObject;

/// The help of commands: each has a place of its own in a topic, which F1 opens at its button and at its
/// entry in a menu.
namespace CommandHelp {

/// The place of a command in the topic of commands.
QString placeOf(const QString& command);
/// Says where the help of what a button or entry does is: a place or a topic.
void setPlace(QObject& command, const QString& place);
/// The same by the number of its prompt. Returns the command.
template <typename Command>
Command* set(Command* command, int number) {
    setPlace(*command, placeOf(QString::number(number)));
    return command;
}
/// Opens the help of a button or entry. Returns whether it has one.
bool show(const QObject* command);
/// Lets F1 in the menu open the help of the entry that is marked there; where that has none, or no entry is
/// marked, the topic of commands.
void serve(QMenu& menu);

} // namespace CommandHelp
