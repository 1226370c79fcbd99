#include "shell/ServerWatch.h"

#include "model/KorDSMBusy.h"
#include "pages/KorDSMPage.h"
#include "services/Prompts.h"
#include "session/KorDSMServers.h"
#include "shell/Reports.h"
#include "shell/StatusLine.h"

#include <QApplication>

namespace {

constexpr int kNewsWait = 1047;
constexpr int kBetweenLooks = 400; // milliseconds; servers are asked less often

} // namespace

ServerWatch::ServerWatch(Reports& reports, StatusLine& status, std::function<bool()> mayShow)
    : m_reports(reports), m_status(status), m_mayShow(std::move(mayShow)) {
    m_timer.setInterval(kBetweenLooks);
    connect(&m_timer, &QTimer::timeout, this, &ServerWatch::look);
    connect(qApp, &QApplication::focusChanged, this, &ServerWatch::lookSoon);
}

void ServerWatch::begin() {
    if (KorDSMServers::areThere())
        m_timer.start();
}

void ServerWatch::look() {
    if (KorDSMBusy::isBusy())
        return;
    const bool hasNews = KorDSMServers::look();
    m_waits = hasNews && !(m_mayShow() && m_reports.readNoticed());
    m_status.showServers(KorDSMServers::colleagues(), KorDSMServers::trouble(),
                         m_waits ? Prompts::dsm(kNewsWait) : KorString());
    if (KorDSMPage* page = KorDSMPage::currentPage())
        page->showColleagues();
}

// What was edited may have been left by that.
void ServerWatch::lookSoon() {
    if (m_waits)
        QTimer::singleShot(0, this, [this] {
            if (m_waits)
                look();
        });
}
