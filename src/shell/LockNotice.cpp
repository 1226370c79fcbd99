#include "shell/LockNotice.h"

#include "base/EditorSession.h"
#include "base/Translation.h"
#include "controls/KorControls.h"
#include "controls/KorElidedLabel.h"
#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "controls/UserInput.h"
#include "model/KorDSMBusy.h"
#include "services/Prompts.h"
#include "session/KorDSMLockWait.h"

#include <QApplication>
#include <QBoxLayout>
#include <QPointer>
#include <QPushButton>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int kGiveUpPrompt = 415; // "Stop waiting"
constexpr int kWidestName = 320;   // pixels: a long name must not widen the window

// Whatever the user does next is worth waiting for again.
class CommandListener : public QObject {
public:
    explicit CommandListener(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (beginsCommand(*event))
            KorDSMLockWait::nextCommand();
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

/// The notices of a session, and who was asked before there was any.
struct LockNotice::Notices {
    std::vector<LockNotice*> all;
    KorDSMLockWait::Ask askedBefore;
};

LockNotice::LockNotice(QBoxLayout* line)
    : QObject(line->parentWidget()), m_notices(EditorSession::currentPart<Notices>()) {
    m_bar = new QWidget(line->parentWidget());
    m_sentence = new KorElidedLabel(Qt::ElideMiddle, m_bar);
    m_giveUp = new QPushButton(toQt(Prompts::dsm(kGiveUpPrompt)), m_bar);
    m_giveUp->setFocusPolicy(Qt::NoFocus);
    m_giveUp->setAutoDefault(false);
    KorControls::setId(m_sentence, kSentence);
    KorControls::setId(m_giveUp, kGiveUp);
    auto* inside = new QHBoxLayout(m_bar);
    inside->setContentsMargins({});
    inside->addWidget(m_sentence);
    inside->addWidget(m_giveUp);
    m_bar->hide();
    line->insertWidget(0, m_bar);
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &LockNotice::hide);
    new CommandListener(this);
    if (m_notices.all.empty())
        m_notices.askedBefore = KorDSMLockWait::setAsk(&LockNotice::ask);
    m_notices.all.push_back(this);
}

LockNotice::~LockNotice() {
    showCursor(false);
    std::erase(m_notices.all, this);
    if (m_notices.all.empty())
        KorDSMLockWait::setAsk(std::move(m_notices.askedBefore));
}

bool LockNotice::ask(const std::string& file, std::chrono::milliseconds waited) {
    const Notices& notices = EditorSession::currentPart<Notices>();
    const auto isShown = [](const LockNotice* notice) { return notice->m_bar->window()->isVisible(); };
    const auto latest = std::find_if(notices.all.rbegin(), notices.all.rend(), isShown);
    if (latest != notices.all.rend())
        return (*latest)->goOn(file, waited);
    return !notices.askedBefore || notices.askedBefore(file, waited);
}

// Until there is a word what the user does waits for its turn; then only giving up counts.
bool LockNotice::goOn(const std::string& file, std::chrono::milliseconds waited) {
    const KorDSMBusy busy;
    const QPointer<LockNotice> alive = this; // its window may be gone after the events
    m_end.stop();
    m_givenUp = false;
    if (waited < KorDSMLockWait::wordless()) {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (alive && m_bar->isVisible()) // of the wait before
            m_end.start(0);
        return !alive.isNull();
    }
    show(file);
    const QPointer<QWidget> focus = QApplication::focusWidget();
    qApp->installEventFilter(this);
    QApplication::processEvents();
    if (!alive)
        return false;
    qApp->removeEventFilter(this);
    if (focus && focus != QApplication::focusWidget()) // a click gives it though nothing can be typed
        focus->setFocus(Qt::OtherFocusReason);
    m_end.start(0);
    return !m_givenUp;
}

void LockNotice::show(const std::string& file) {
    const QString path = QString::fromStdString(file);
    const bool isServer = KorDSMLockWait::isServer(file);
    const QString name = isServer ? path : path.section(u'/', -1);
    const QString shortened = m_sentence->fontMetrics().elidedText(name, Qt::ElideMiddle, kWidestName);
    const KorString sentence =
        isServer ? translated("Waiting for an answer of \"%s\"; Esc gives up.")
                 : translated("Waiting for \"%s\", which another program has locked; Esc gives up.");
    m_sentence->setWhole(toQt(KorString::format(sentence, {fromQt(shortened)})), path);
    m_bar->show();
    KorMnemonics::give(*m_bar);
    showCursor(true);
}

void LockNotice::hide() {
    m_bar->hide();
    showCursor(false);
}

void LockNotice::showCursor(bool waits) {
    if (std::exchange(m_showsCursor, waits) == waits)
        return;
    waits ? QApplication::setOverrideCursor(Qt::WaitCursor) : QApplication::restoreOverrideCursor();
}

bool LockNotice::eventFilter(QObject* watched, QEvent* event) {
    // What a window gets comes again as what one of its widgets gets.
    if (watched->isWindowType() || !swallowsInput(*event))
        return QObject::eventFilter(watched, event);
    m_givenUp |= isEscape(*event) || (watched == m_giveUp && event->type() == QEvent::MouseButtonRelease);
    return true;
}
