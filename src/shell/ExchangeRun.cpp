#include "shell/ExchangeRun.h"

#include "controls/KorQt.h"
#include "data/exchange/KorDetailTableDependencies.h"
#include "services/Prompts.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

constexpr int kProgressText = 265; // "%s: Esc cancels"

bool isInput(const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

ExchangeRun::ExchangeRun() {
    m_previous = KorODBCDetailStyleExports::setCallbacks(
        {[this](int steps, const KorString& name) { start(steps, name); }, [this](int done) { step(done); },
         [this] { end(); }, [this](const KorString& text) { m_messages << toQt(text); }});
    QApplication::setOverrideCursor(Qt::WaitCursor);
    qApp->installEventFilter(this);
    s_goingOn = true;
}

ExchangeRun::~ExchangeRun() {
    s_goingOn = false;
    qApp->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
    KorODBCDetailStyleExports::setCallbacks(m_previous);
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
    if (!isInput(*event))
        return QObject::eventFilter(watched, event);
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (isKey && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        KorDetailTableDependencies::m_bDeepCopyCanceledByUser = true;
    return true;
}
