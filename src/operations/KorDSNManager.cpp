#include "operations/KorDSNManager.h"

KorDSNManager& KorDSNManager::getInstance() {
    static KorDSNManager manager;
    return manager;
}
