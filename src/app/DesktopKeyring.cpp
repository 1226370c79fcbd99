#include "app/DesktopKeyring.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

namespace {

constexpr int kAnswerLimit = 2000;   // milliseconds; what asks the user answers at once that it will
constexpr int kPromptLimit = 120000; // in which the user may unlock it
constexpr const char* kName = "org.freedesktop.secrets";
constexpr const char* kService = "org.freedesktop.Secret.Service";
constexpr const char* kItem = "org.freedesktop.Secret.Item";
constexpr const char* kPrompt = "org.freedesktop.Secret.Prompt";
constexpr const char* kConnection = "detailstyles-keyring";

QDBusObjectPath root() {
    return QDBusObjectPath(QStringLiteral("/org/freedesktop/secrets"));
}

// Where there is none the library would start one of its own.
bool hasBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

bool isSomething(const QDBusObjectPath& path) {
    return path.path().size() > 1;
}

} // namespace

/// Hears when the user has answered what the service asks.
class PromptEnd : public QObject {
    Q_OBJECT

public:
    QEventLoop loop;
    bool isAgreed = false;

public Q_SLOTS:
    void onCompleted(bool isDismissed, const QDBusVariant&) {
        isAgreed = !isDismissed;
        loop.quit();
    }
};

DesktopKeyring::~DesktopKeyring() {
    if (m_bus)
        QDBusConnection::disconnectFromBus(QString::fromLatin1(kConnection));
}

bool DesktopKeyring::connect() {
    if (!m_bus) {
        qDBusRegisterMetaType<Attributes>();
        m_bus = hasBus() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                                         QString::fromLatin1(kConnection))
                         : QDBusConnection(QString());
    }
    return m_bus->isConnected() && !m_isSilent;
}

DesktopKeyring::Answer DesktopKeyring::callBus(const char* method, const QList<QVariant>& arguments) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
    message.setArguments(arguments);
    const QDBusMessage reply = m_bus->call(message, QDBus::Block, kAnswerLimit);
    return reply.type() == QDBusMessage::ReplyMessage ? Answer(reply.arguments()) : Answer();
}

DesktopKeyring::Answer DesktopKeyring::call(const QDBusObjectPath& object, const char* interface,
                                            const char* method, const QList<QVariant>& arguments) {
    if (!connect())
        return {};
    QDBusMessage message =
        QDBusMessage::createMethodCall(QString::fromLatin1(kName), object.path(),
                                       QString::fromLatin1(interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    const QDBusMessage reply = m_bus->call(message, QDBus::Block, kAnswerLimit);
    m_isSilent = QDBusError(reply).type() == QDBusError::NoReply;
    return reply.type() == QDBusMessage::ReplyMessage ? Answer(reply.arguments()) : Answer();
}

bool DesktopKeyring::isThere() {
    if (!connect())
        return false;
    const QString name = QString::fromLatin1(kName);
    const Answer runs = callBus("NameHasOwner", {name});
    if (runs && runs->value(0).toBool())
        return true;
    const Answer startable = callBus("ListActivatableNames", {});
    return startable && startable->value(0).toStringList().contains(name);
}

DesktopKeyring::Attributes DesktopKeyring::attributesOf(const ServerAddress& server) {
    return {{QStringLiteral("application"), QStringLiteral("detailstyles")},
            {QStringLiteral("connection"), QString::fromStdString(server.connection)}};
}

bool DesktopKeyring::openSession() {
    if (!m_session.isEmpty())
        return true;
    const Answer answer = call(root(), kService, "OpenSession",
                               {QStringLiteral("plain"), QVariant::fromValue(QDBusVariant(QString()))});
    if (answer)
        m_session = answer->value(1).value<QDBusObjectPath>().path();
    return !m_session.isEmpty();
}

QList<QDBusObjectPath> DesktopKeyring::itemsOf(const ServerAddress& server) {
    const Answer answer = call(root(), kService, "SearchItems", {QVariant::fromValue(attributesOf(server))});
    return answer ? qdbus_cast<QList<QDBusObjectPath>>(answer->value(0)) +
                        qdbus_cast<QList<QDBusObjectPath>>(answer->value(1))
                  : QList<QDBusObjectPath>();
}

bool DesktopKeyring::prompt(const QDBusObjectPath& prompt) {
    if (!isSomething(prompt))
        return true;
    if (!qApp) // nobody would hear the answer
        return false;
    PromptEnd end;
    m_bus->connect(QString::fromLatin1(kName), prompt.path(), QString::fromLatin1(kPrompt),
                   QStringLiteral("Completed"), &end, SLOT(onCompleted(bool, QDBusVariant)));
    if (!call(prompt, kPrompt, "Prompt", {QString()}))
        return false;
    QTimer::singleShot(kPromptLimit, &end.loop, &QEventLoop::quit);
    end.loop.exec(QEventLoop::ExcludeUserInputEvents);
    return end.isAgreed;
}

bool DesktopKeyring::unlock(const QDBusObjectPath& object) {
    const Answer answer =
        call(root(), kService, "Unlock", {QVariant::fromValue(QList<QDBusObjectPath>{object})});
    return answer && prompt(answer->value(1).value<QDBusObjectPath>());
}

std::string DesktopKeyring::find(const ServerAddress& server) {
    if (!isThere() || !openSession())
        return {};
    const QList<QDBusObjectPath> items = itemsOf(server);
    if (items.isEmpty() || !unlock(items.front()))
        return {};
    const Answer answer =
        call(items.front(), kItem, "GetSecret", {QVariant::fromValue(QDBusObjectPath(m_session))});
    if (!answer || answer->isEmpty())
        return {};
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray secret;
    QString type;
    const auto argument = answer->front().value<QDBusArgument>();
    argument.beginStructure();
    argument >> session >> parameters >> secret >> type;
    argument.endStructure();
    return secret.toStdString();
}

bool DesktopKeyring::keep(const ServerAddress& server) {
    if (!isThere() || !openSession())
        return false;
    const Answer usual = call(root(), kService, "ReadAlias", {QStringLiteral("default")});
    const auto collection = usual ? usual->value(0).value<QDBusObjectPath>() : QDBusObjectPath();
    if (!isSomething(collection) || !unlock(collection))
        return false;
    QDBusArgument secret;
    secret.beginStructure();
    secret << QDBusObjectPath(m_session) << QByteArray() << QByteArray::fromStdString(server.password)
           << QStringLiteral("text/plain; charset=utf8");
    secret.endStructure();
    const QVariantMap properties = {
        {QStringLiteral("org.freedesktop.Secret.Item.Label"), QString::fromStdString(server.name)},
        {QStringLiteral("org.freedesktop.Secret.Item.Attributes"),
         QVariant::fromValue(attributesOf(server))}};
    const Answer made = call(collection, "org.freedesktop.Secret.Collection", "CreateItem",
                             {properties, QVariant::fromValue(secret), true});
    return made && prompt(made->value(1).value<QDBusObjectPath>());
}

void DesktopKeyring::forget(const ServerAddress& server) {
    if (isThere())
        for (const QDBusObjectPath& item : itemsOf(server))
            if (const Answer answer = call(item, kItem, "Delete", {}))
                prompt(answer->value(0).value<QDBusObjectPath>());
}

#include "DesktopKeyring.moc"
