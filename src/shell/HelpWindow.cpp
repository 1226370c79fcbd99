#include "shell/HelpWindow.h"

#include <QApplication>
#include <QPointer>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), m_browser(new QTextBrowser(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_browser);
    m_browser->setFrameShape(QFrame::NoFrame);
    m_browser->setOpenExternalLinks(false);
    m_browser->document()->setDocumentMargin(16);
    resize(640, 620);
    connect(m_browser, &QTextBrowser::sourceChanged, this,
            [this] { setWindowTitle(m_browser->documentTitle()); });
}

void HelpWindow::show(const std::filesystem::path& page) {
    static QPointer<HelpWindow> window;
    if (!window)
        window = new HelpWindow(QApplication::activeWindow());
    window->m_browser->setSource(QUrl::fromLocalFile(QString::fromStdString(page.string())));
    window->setWindowTitle(window->m_browser->documentTitle());
    static_cast<QWidget*>(window)->show();
    window->raise();
}
