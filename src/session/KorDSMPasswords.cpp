#include "session/KorDSMPasswords.h"

#include "base/EditorSession.h"

KorDSMPasswords& KorDSMPasswords::current() {
    return EditorSession::currentPart<KorDSMPasswords>();
}

OpenedServer KorDSMPasswords::open(ServerAddress server, OdbcStore::eMode mode) {
    const bool isGiven = !server.password.empty();
    OpenedServer opened = OdbcStore::open(server, mode);
    const auto tryWith = [&](const std::string& password) {
        if (!opened.isRefused || isGiven || password.empty())
            return;
        server.password = password;
        opened = OdbcStore::open(server, mode);
    };
    if (const auto given = m_given.find(server.connection); given != m_given.end())
        tryWith(given->second);
    if (opened.isRefused && !isGiven && m_keyring)
        tryWith(m_keyring->find(server));
    return opened;
}

bool KorDSMPasswords::learn(const ServerAddress& server, bool keeps) {
    m_given[server.connection] = server.password;
    if (!canKeep())
        return !keeps;
    if (keeps)
        return m_keyring->keep(server);
    m_keyring->forget(server);
    return true;
}
