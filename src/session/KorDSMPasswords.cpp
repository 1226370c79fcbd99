#include "session/KorDSMPasswords.h"

#include "base/EditorSession.h"

KorDSMPasswords& KorDSMPasswords::current() {
    return EditorSession::currentPart<KorDSMPasswords>();
}

std::string KorDSMPasswords::known(const ServerAddress& server) const {
    if (const auto given = m_given.find(server.connection); given != m_given.end())
        return given->second;
    return m_keyring ? m_keyring->find(server) : std::string();
}

OpenedServer KorDSMPasswords::open(ServerAddress server, OdbcStore::eMode mode) {
    OpenedServer opened = OdbcStore::open(server, mode);
    if (!opened.line.isRefusal() || !server.password.empty())
        return opened;
    server.password = known(server);
    return server.password.empty() ? std::move(opened) : OdbcStore::open(server, mode);
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
