#pragma once

#include "data/store/odbc/OdbcStore.h"

#include <map>
#include <memory>
#include <string>

/// The passwords of servers that want one: those that the user gave in this run of the program, and those
/// that a keyring keeps. A connection without its schema says whose password it is.
class KorDSMPasswords {
public:
    /// Keeps passwords beyond a run of the program. Each call may wait for the user to unlock it.
    class Keyring {
    public:
        virtual ~Keyring() = default;
        /// Whether there is one on this computer. Nobody is asked by that.
        virtual bool isThere() = 0;
        /// Empty where it keeps none, or does not give it.
        virtual std::string find(const ServerAddress& server) = 0;
        /// Keeps the password of the address in the place of the one before. Returns whether it does.
        virtual bool keep(const ServerAddress& server) = 0;
        virtual void forget(const ServerAddress& server) = 0;
    };

    /// Those of the current session.
    static KorDSMPasswords& current();

    /// What keeps passwords from now on; null for nothing, as at first.
    void setKeyring(std::unique_ptr<Keyring> keyring) { m_keyring = std::move(keyring); }
    bool canKeep() const { return m_keyring && m_keyring->isThere(); }

    /// The password that is known; empty for none.
    std::string known(const ServerAddress& server) const;
    /// Opens a database. Where the server does not let the user in, and the address has no password, the
    /// known one is tried.
    OpenedServer open(ServerAddress server, OdbcStore::eMode mode);
    /// Whether the user gave one in this run.
    bool isGiven(const ServerAddress& server) const { return m_given.contains(server.connection); }
    /// To be told of an address whose password is the right one. Where it is not to be kept the keyring
    /// forgets it. Returns whether that was done.
    bool learn(const ServerAddress& server, bool keeps);

private:
    std::map<std::string, std::string> m_given; ///< by connection
    std::unique_ptr<Keyring> m_keyring;
};
