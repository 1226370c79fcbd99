#include "app/WindowStart.h"

#include "services/Prompts.h"
#include "session/DataFolder.h"
#include "session/KorDSMLockWait.h"
#include "shell/EditorApplication.h"
#include "shell/LockNotice.h"

#include <QApplication>
#include <QBoxLayout>
#include <QWidget>

namespace {

constexpr int kWindowTitle = 33510;

} // namespace

WindowStart::WindowStart(char** argv) : m_argv(argv) {}
WindowStart::~WindowStart() = default;

void WindowStart::makeApplication() {
    if (qApp)
        return;
    m_application = std::make_unique<QApplication>(m_argc, m_argv);
    prepareEditorApplication();
}

void WindowStart::open(DataFolder& folder) {
    if (!folder.hasServers())
        return folder.open();
    makeApplication();
    m_window = std::make_unique<QWidget>();
    m_window->setWindowTitle(QString::fromStdString(Prompts::ups(kWindowTitle).toStdString()));
    auto* line = new QHBoxLayout(m_window.get());
    auto before = KorDSMLockWait::setAsk(
        [this](const std::string&, std::chrono::milliseconds waited) { return show(waited); });
    new LockNotice(line); // the window owns it; it is asked while the window is shown
    folder.open();
    m_window.reset();
    KorDSMLockWait::setAsk(std::move(before));
}

// Who closes the window gives up, too.
bool WindowStart::show(std::chrono::milliseconds waited) {
    if (m_wasShown)
        return !std::exchange(m_wasShown, false);
    if (waited >= KorDSMLockWait::wordless()) {
        m_window->show();
        m_wasShown = true;
    }
    QApplication::processEvents();
    return true;
}
