#include "session/KorDSMLockWait.h"

#include "data/store/DatabaseName.h"
#include "data/store/LockWait.h"

KorDSMLockWait::Ask KorDSMLockWait::setAsk(Ask ask) {
    return LockWait::setAsk(std::move(ask));
}

std::chrono::milliseconds KorDSMLockWait::wordless() {
    return LockWait::kWordless;
}

bool KorDSMLockWait::isWaiting() {
    return LockWait::isWaiting();
}

bool KorDSMLockWait::isServer(const std::string& file) {
    return isServerName(file);
}

void KorDSMLockWait::nextCommand() {
    LockWait::nextCommand();
}
