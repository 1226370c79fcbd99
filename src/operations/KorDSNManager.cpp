#include "operations/KorDSNManager.h"

#include "data/StyleDatabases.h"

KorDSNManager& KorDSNManager::getInstance() {
    static KorDSNManager manager;
    return manager;
}

eDSN KorDSNManager::getCurrentDSN() const {
    return StyleDatabases::current().currentSource().dsn;
}

eIndex KorDSNManager::getCurrentIndex() const {
    return StyleDatabases::current().currentSource().index;
}

KorDSNRequest::KorDSNRequest(eDSN dsn, eIndex index) : m_previous(StyleDatabases::current().currentSource()) {
    StyleDatabases::current().setCurrentSource({dsn, index});
}

KorDSNRequest::~KorDSNRequest() {
    StyleDatabases::current().setCurrentSource(m_previous);
}
