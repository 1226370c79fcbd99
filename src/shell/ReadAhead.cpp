#include "shell/ReadAhead.h"

#include "base/EditorSession.h"
#include "model/KorDSMBusy.h"
#include "session/KorDSMReadAhead.h"

namespace {

constexpr int kRest = 300; // milliseconds; a window that was just opened, or a hand that goes on, comes first

} // namespace

ReadAhead::ReadAhead(QObject& window) : QObject(&window), m_timer(this) {
    m_timer.setObjectName(QStringLiteral("readAhead"));
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, EditorSession::current().forLater([this] { step(); }));
}

void ReadAhead::begin() {
    m_timer.start(kRest);
}

void ReadAhead::step() {
    if (KorDSMBusy::isBusy())
        return begin();
    const KorDSMBusy busy;
    if (KorDSMReadAhead::step())
        m_timer.start(0);
}
