#include "shell/ServerWatch.h"

#include "model/KorDSMBusy.h"
#include "pages/KorDSMPage.h"
#include "session/KorDSMServers.h"
#include "shell/Reports.h"
#include "shell/StatusLine.h"

namespace {

constexpr int kBetweenLooks = 400; // milliseconds; servers are asked less often

} // namespace

ServerWatch::ServerWatch(Reports& reports, StatusLine& status, std::function<bool()> mayShow)
    : m_reports(reports), m_status(status), m_mayShow(std::move(mayShow)) {
    m_timer.setInterval(kBetweenLooks);
    connect(&m_timer, &QTimer::timeout, this, &ServerWatch::look);
}

void ServerWatch::begin() {
    if (KorDSMServers::areThere())
        m_timer.start();
}

void ServerWatch::look() {
    if (KorDSMBusy::isBusy())
        return;
    const bool hasNews = KorDSMServers::look();
    m_status.showServers(KorDSMServers::colleagues(), KorDSMServers::trouble());
    if (KorDSMPage* page = KorDSMPage::currentPage())
        page->showColleagues();
    if (hasNews && m_mayShow())
        m_reports.readNoticed();
}
