#include "data/KorDSNManager.h"

KorDSNManager& KorDSNManager::getInstance() {
    static KorDSNManager manager;
    return manager;
}
