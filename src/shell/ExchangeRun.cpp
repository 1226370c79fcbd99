#include "shell/ExchangeRun.h"

#include "controls/KorQt.h"
#include "controls/UserInput.h"
#include "services/Prompts.h"
#include "session/KorDSMLockWait.h"

#include <QApplication>

namespace {

constexpr int kProgressText = 265; // "%s: Esc cancels"

} // namespace

ExchangeRun::ExchangeRun() {
    m_previous = KorDSMExchange::tell({[this](int steps, const KorString& name) { start(steps, name); },
                                       [this](int done) { step(done); },
                                       [this] { end(); },
                                       [this](const KorString& text) { m_messages << toQt(text); },
                                       {}});
    QApplication::setOverrideCursor(Qt::WaitCursor);
    qApp->installEventFilter(this);
}

ExchangeRun::~ExchangeRun() {
    qApp->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
    KorDSMExchange::tell(m_previous);
}

void ExchangeRun::start(int steps, const KorString& name) {
    m_steps = steps;
    m_progress.state = DsmProgress::kStep;
    m_progress.percent = -1;
    m_progress.text = KorString::format(Prompts::dsm(kProgressText), {name});
    step(0);
}

void ExchangeRun::step(int done) {
    const int percent = m_steps > 0 ? 100 * done / m_steps : 100;
    if (percent == m_progress.percent)
        return;
    m_progress.percent = percent;
    KorDSMMainWindow::sendMessage(m_progress);
    QApplication::processEvents();
}

void ExchangeRun::end() {
    m_progress.state = DsmProgress::kDone;
    KorDSMMainWindow::sendMessage(m_progress);
}

bool ExchangeRun::eventFilter(QObject* watched, QEvent* event) {
    if (KorDSMLockWait::isWaiting() || !swallowsInput(*event)) // whoever waits has its own way out
        return QObject::eventFilter(watched, event);
    if (isEscape(*event))
        KorDSMExchange::cancel();
    return true;
}
