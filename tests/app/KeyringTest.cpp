#include "app/DesktopKeyring.h"

#include "base/EditorSession.h"
#include "support/TempFolder.h"

#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QThread>

#include <fstream>
#include <gtest/gtest.h>

namespace {

/// A bus of the test's own, on which a keyring answers that the user has to unlock.
class Keyring : public testing::Test, public QDBusVirtualObject {
protected:
    using Attributes = QMap<QString, QString>;
    using Paths = QList<QDBusObjectPath>;

    Keyring() {
        const std::string settings = m_folder.file("bus.conf");
        std::ofstream(settings) << "<busconfig><type>session</type><listen>unix:dir="
                                << m_folder.path().string()
                                << "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                                   "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
        m_daemon.start("dbus-daemon",
                       {"--nofork", "--print-address", "--config-file", QString::fromStdString(settings)});
        EXPECT_TRUE(m_daemon.waitForReadyRead()) << "there is no dbus-daemon";
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_daemon.readLine().trimmed());
    }
    ~Keyring() override {
        QDBusConnection::disconnectFromBus("service");
        m_thread.quit();
        m_thread.wait();
        m_daemon.kill();
        m_daemon.waitForFinished();
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }
    void beginService() {
        qDBusRegisterMetaType<Attributes>();
        QDBusConnection bus =
            QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "service");
        EXPECT_TRUE(bus.registerVirtualObject("/org/freedesktop/secrets", this, QDBusConnection::SubPath));
        moveToThread(&m_thread);
        m_thread.start();
        EXPECT_TRUE(bus.registerService("org.freedesktop.secrets"));
    }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        const QString method = message.member();
        bus.send(message.createReply(answerTo(method, message.arguments())));
        if (method == "Prompt") {
            QDBusMessage end = QDBusMessage::createSignal(message.path(), message.interface(), "Completed");
            end << m_isDismissed.load() << QVariant::fromValue(QDBusVariant(QString()));
            bus.send(end);
        }
        return true;
    }
    QList<QVariant> answerTo(const QString& method, const QList<QVariant>& given) {
        const auto item = QVariant::fromValue(QDBusObjectPath("/org/freedesktop/secrets/item"));
        const auto nothing = QVariant::fromValue(QDBusObjectPath("/"));
        const auto none = QVariant::fromValue(Paths());
        if (method == "OpenSession")
            return {QVariant::fromValue(QDBusVariant(QString())), item};
        if (method == "SearchItems" && !m_attributes.isEmpty() &&
            qdbus_cast<Attributes>(given[0]) == m_attributes)
            return {none, QVariant::fromValue(Paths{item.value<QDBusObjectPath>()})};
        if (method == "SearchItems")
            return {none, none};
        if (method == "ReadAlias")
            return {item};
        if (method == "Unlock")
            return {none, item};
        if (method == "GetSecret")
            return {QVariant::fromValue(m_secret)};
        if (method == "CreateItem") {
            const auto properties = qdbus_cast<QVariantMap>(given[0]);
            m_attributes = qdbus_cast<Attributes>(properties["org.freedesktop.Secret.Item.Attributes"]);
            m_secret = copyOf(given[1].value<QDBusArgument>());
            return {item, nothing};
        }
        if (method == "Delete")
            m_attributes.clear();
        return {nothing};
    }
    static QDBusArgument copyOf(const QDBusArgument& from) {
        QDBusObjectPath session;
        QByteArray parameters;
        QByteArray secret;
        QString type;
        from.beginStructure();
        from >> session >> parameters >> secret >> type;
        from.endStructure();
        QDBusArgument to;
        to.beginStructure();
        to << session << parameters << secret << type;
        to.endStructure();
        return to;
    }

    TempFolder m_folder;
    EditorSession m_session;
    QProcess m_daemon;
    QThread m_thread;
    Attributes m_attributes;
    QDBusArgument m_secret;
    std::atomic<bool> m_isDismissed = false;
};

} // namespace

TEST_F(Keyring, KeepsPasswordsWhereTheDesktopHasOneAndTheUserUnlocksIt) {
    const auto addressOf = [](const char* connection) {
        return ServerAddress::parse(connection, "a test").value;
    };
    ServerAddress anna = addressOf("Server=db.office;Database=office;UID=anna");
    anna.password = "se'c}r ü";
    EXPECT_FALSE(DesktopKeyring().isThere()) << "a bus without one";
    EXPECT_FALSE(DesktopKeyring().keep(anna));
    beginService();
    DesktopKeyring keyring;
    ASSERT_TRUE(keyring.isThere());
    EXPECT_EQ(keyring.find(anna), "");
    m_isDismissed = true;
    EXPECT_FALSE(keyring.keep(anna));
    m_isDismissed = false;
    EXPECT_TRUE(keyring.keep(anna));
    EXPECT_EQ(keyring.find(anna), anna.password);
    for (const QString& attribute : m_attributes)
        EXPECT_FALSE(attribute.contains("se'c"));
    EXPECT_EQ(keyring.find(addressOf("Server=db.office;Database=office;UID=bert")), "");
    m_isDismissed = true;
    EXPECT_EQ(keyring.find(anna), "") << "the user does not unlock it";
    m_isDismissed = false;
    keyring.forget(anna);
    EXPECT_EQ(keyring.find(anna), "");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_FALSE(DesktopKeyring().isThere()) << "no bus";
}
