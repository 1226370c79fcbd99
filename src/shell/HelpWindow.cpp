#include "shell/HelpWindow.h"

#include "base/EditorSession.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/KorReadable.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr int kContents = 266;

struct HelpShown {
    QPointer<HelpWindow> window;
};

} // namespace

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), m_browser(new QTextBrowser(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeTools());
    layout->addWidget(m_browser);
    m_browser->setFrameShape(QFrame::NoFrame);
    m_browser->setOpenExternalLinks(false);
    m_browser->document()->setDocumentMargin(16);
    resize(QSize(640, 620).boundedTo(screen()->availableSize() * 9 / 10));
    connect(m_browser, &QTextBrowser::sourceChanged, this, [this] {
        setWindowTitle(m_browser->documentTitle());
        m_browser->setAccessibleName(windowTitle());
    });
    KorReadable::keep(this);
}

QToolBar* HelpWindow::makeTools() {
    auto* tools = new QToolBar(this);
    const auto add = [&](int bitmap, const KorString& text, const char* key, auto slot) {
        QAction* action = tools->addAction(KorPictures::bitmap(bitmap), toQt(text), m_browser, slot);
        action->setShortcut(QKeySequence(QString::fromLatin1(key)));
        return action;
    };
    QAction* back = add(1042, Prompts::ups(33743), "Alt+Left", &QTextBrowser::backward);
    QAction* forward = add(1041, Prompts::ups(33744), "Alt+Right", &QTextBrowser::forward);
    add(1050, Prompts::dsm(kContents), "Alt+Home", [] { CKorHelp::showTopic("_Drawing_Style_Manager"); });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    return tools;
}

// What a modal dialog does not own it blocks.
void HelpWindow::moveTo(QWidget* parent) {
    if (parent == parentWidget())
        return;
    const QRect place = geometry();
    const bool wasPlaced = testAttribute(Qt::WA_WState_Created);
    setParent(parent, windowFlags());
    if (wasPlaced)
        setGeometry(place);
}

// Links have the colour that there was when the page was read.
void HelpWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_browser->source().isEmpty())
        m_browser->reload();
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
    QWidget* dialog = parentWidget();
    QWidget* behind = watched == dialog ? dialog->parentWidget() : nullptr;
    if (event->type() != QEvent::Hide || event->spontaneous() || !behind)
        return false;
    dialog->removeEventFilter(this);
    moveTo(behind->window());
    if (std::exchange(m_wasVisible, false))
        QTimer::singleShot(0, this, [this] {
            setAttribute(Qt::WA_ShowWithoutActivating);
            QDialog::show();
            setAttribute(Qt::WA_ShowWithoutActivating, false);
        });
    return false;
}

void HelpWindow::done(int result) {
    QDialog::done(result);
    m_wasVisible = false;
    if (QWidget* parent = parentWidget())
        parent->activateWindow();
}

void HelpWindow::show(const std::filesystem::path& page, const KorString& place) {
    QPointer<HelpWindow>& window = EditorSession::currentPart<HelpShown>().window;
    QWidget* modal = QApplication::activeModalWidget();
    if (!window)
        window = new HelpWindow(QApplication::activeWindow());
    if (modal) {
        if (modal != window->parentWidget())
            window->m_wasVisible = window->isVisible();
        window->moveTo(modal);
        modal->installEventFilter(window);
    }
    QUrl source = QUrl::fromLocalFile(QString::fromStdString(page.string()));
    if (!place.isEmpty())
        source.setFragment(toQt(place));
    window->m_browser->setSource(source);
    window->setWindowTitle(window->m_browser->documentTitle());
    static_cast<QWidget*>(window)->show();
    window->raise();
    window->activateWindow();
    window->m_browser->setFocus();
    if (!place.isEmpty())
        window->m_browser->scrollToAnchor(toQt(place)); // it was laid out for the first time just now
}
