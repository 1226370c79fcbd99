#include "shell/CommandHelp.h"

#include "controls/KorQt.h"
#include "services/CKorHelp.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QVariant>

namespace {

constexpr char kPlace[] = "helpPlace";
constexpr char kTopic[] = "_Drawing_Style_Manager";

class Server : public QObject {
public:
    explicit Server(QMenu& menu) : QObject(&menu) { menu.installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1)
            return QObject::eventFilter(watched, event);
        auto* menu = static_cast<QMenu*>(watched);
        const QAction* marked = menu->activeAction();
        const QString place = marked ? marked->property(kPlace).toString() : QString();
        for (QWidget* open = menu; qobject_cast<QMenu*>(open); open = open->parentWidget())
            open->close();
        CKorHelp::showTopic(place.isEmpty() ? KorString(kTopic) : fromQt(place));
        return true;
    }
};

} // namespace

QString CommandHelp::placeOf(const QString& command) {
    return QStringLiteral("%1#command-%2").arg(QLatin1String(kTopic), command);
}

void CommandHelp::setPlace(QObject& command, const QString& place) {
    command.setProperty(kPlace, place);
}

bool CommandHelp::show(const QObject* command) {
    const QString place = command ? command->property(kPlace).toString() : QString();
    return !place.isEmpty() && CKorHelp::showTopic(fromQt(place));
}

void CommandHelp::serve(QMenu& menu) {
    new Server(menu);
}
