#include "app/WindowStart.h"

#include "services/Prompts.h"
#include "session/DataFolder.h"
#include "session/KorDSMLockWait.h"
#include "shell/EditorApplication.h"
#include "shell/LockNotice.h"
#include "shell/ModuleResources.h"
#include "shell/SourcesCommand.h"

#include <QApplication>
#include <QBoxLayout>
#include <QWidget>

namespace {

constexpr int kWindowTitle = 33510;

} // namespace

/// Is shown as long as its notice of a lock is. Who closes it gives up waiting.
class StartWindow : public QWidget {
public:
    StartWindow() {
        setWindowTitle(QString::fromStdString(Prompts::ups(kWindowTitle).toStdString()));
        auto* line = new QHBoxLayout(this);
        new LockNotice(line); // the window owns it; it is asked while the window is shown
        line->itemAt(0)->widget()->installEventFilter(this);
    }

    bool isClosed = false;

protected:
    void closeEvent(QCloseEvent*) override { isClosed = true; }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::HideToParent)
            hide();
        return QWidget::eventFilter(watched, event);
    }
};

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
    auto before = KorDSMLockWait::setAsk(
        [this](const std::string&, std::chrono::milliseconds waited) { return show(waited); });
    m_window = std::make_unique<StartWindow>();
    folder.open();
    if (!folder.refused().empty()) {
        ModuleResources::setUp({}); // of which dialogs are made
        SourcesCommand::askForPasswords(folder, nullptr);
    }
    m_window.reset();
    KorDSMLockWait::setAsk(std::move(before));
}

bool WindowStart::show(std::chrono::milliseconds waited) {
    const bool isGivenUp = std::exchange(m_window->isClosed, false) && waited >= KorDSMLockWait::wordless();
    if (waited >= KorDSMLockWait::wordless() && !isGivenUp)
        m_window->show();
    QApplication::processEvents();
    return !isGivenUp;
}

bool WindowStart::beFound(const DataFolder& folder) {
    makeApplication();
    m_running = std::make_unique<RunningEditor>(folder.path(), [](const OpenRequest& request) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible())
                RunningEditor::raise(*window, request);
        return false;
    });
    return m_running->isFound();
}
