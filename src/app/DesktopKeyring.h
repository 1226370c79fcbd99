#pragma once

#include "session/KorDSMPasswords.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QMap>

#include <optional>

class QDBusObjectPath;

/// The keyring of the user's desktop, by its Secret Service on the session bus. Without a bus or such a
/// service there is none; one that gives no answer is not asked again.
class DesktopKeyring final : public KorDSMPasswords::Keyring {
public:
    DesktopKeyring() = default;
    ~DesktopKeyring() override;
    DesktopKeyring(const DesktopKeyring&) = delete;
    DesktopKeyring& operator=(const DesktopKeyring&) = delete;

    bool isThere() override;
    std::string find(const ServerAddress& server) override;
    bool keep(const ServerAddress& server) override;
    void forget(const ServerAddress& server) override;

private:
    using Attributes = QMap<QString, QString>;
    /// What a call returned; nothing where it failed.
    using Answer = std::optional<QList<QVariant>>;

    static Attributes attributesOf(const ServerAddress& server);
    bool connect();
    Answer call(const QDBusObjectPath& object, const char* interface, const char* method,
                const QList<QVariant>& arguments);
    Answer callBus(const char* method, const QList<QVariant>& arguments);
    bool openSession();
    /// The items kept for the server: those that are open first.
    QList<QDBusObjectPath> itemsOf(const ServerAddress& server);
    bool unlock(const QDBusObjectPath& object);
    /// Lets the service ask the user, where there is something to ask. Returns whether the user agreed.
    bool prompt(const QDBusObjectPath& prompt);

    std::optional<QDBusConnection> m_bus;
    QString m_session; ///< path of the session with the service, in which secrets are handed over
    bool m_isSilent = false;
};
