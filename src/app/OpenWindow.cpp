#include "app/OpenWindow.h"

#include "app/Console.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "services/KorHostReport.h"
#include "session/KorDSMOpenedFile.h"
#include "session/KorDSMStartSelection.h"
#include "shell/WhenFree.h"
#include "shell/WindowTurn.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWindow>

namespace {

eExitCode selectStyle(const RowOptions& wanted) {
    const FoundRow found = RowChoice::find(wanted);
    const RowChoice& style = found.value;
    if (found && KorDSMStartSelection::select(style.source, style.key))
        return kExitDone;
    if (found.tell() != kExitDone)
        return kExitFailed;
    StyleSource& source = *StyleDatabases::current().source(style.source);
    Console::complain(KorString::format(
        source.complete()
            ? translated("The detail style \"%s\" has no category, so the editor does not show it.")
            : translated("The editor cannot show the detail style \"%s\", because \"%s\" could not "
                         "be read whole."),
        {wanted.name, source.store().name()}));
    return kExitFailed;
}

// The files of this machine that are dragged.
QStringList filesOf(const QDropEvent& event) {
    QStringList files;
    for (const QUrl& url : event.mimeData()->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

} // namespace

eExitCode selectStart(EditOptions options) {
    if (!options.file.empty()) {
        const Result<SourceId> opened = KorDSMOpenedFile::open(std::filesystem::absolute(options.file));
        if (!opened) {
            Console::complain(opened.error);
            std::error_code error;
            if (!options.picture.file.empty() || !std::filesystem::exists(options.file, error))
                return kExitFailed;
            // Whoever opened it by a double click reads no terminal.
            KorHostReport::add(opened.error);
        } else if (options.style.name.empty()) {
            KorDSMOpenedFile::select(opened.value);
        } else if (options.style.source.empty()) {
            options.style.source = SourceChoice::nameOf(opened.value).toStdString();
        }
    }
    return options.style.name.empty() ? kExitDone : selectStyle(options.style);
}

OpenWindow::OpenWindow(QWidget& window, std::unique_ptr<RunningEditor> running)
    : m_window(window), m_running(std::move(running)) {
    m_running->setReceiver([this](const OpenRequest& request) {
        take(request);
        return true;
    });
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool OpenWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto& drop = static_cast<QDropEvent&>(*event); // the others are special ones
        const QStringList files = filesOf(drop);
        if (files.isEmpty())
            return false;
        drop.setDropAction(Qt::CopyAction);
        drop.accept();
        if (event->type() == QEvent::Drop)
            for (const QString& file : files)
                take({file, {}, {}, {}});
        return true;
    }
    case QEvent::Show: // what came before
    case QEvent::WindowActivate:
        QTimer::singleShot(0, this, [this] { showNext(); });
        return false;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void OpenWindow::take(const OpenRequest& request) {
    m_waiting.push_back(request);
    RunningEditor::raise(m_window, request);
    QTimer::singleShot(0, this, [this] { showNext(); });
}

// A dialog that is open holds what it is about; when it is closed the window is activated.
void OpenWindow::showNext() {
    whenFree(this, [this] {
        const QWidget* modal = QApplication::activeModalWidget();
        if (m_waiting.empty() || !m_window.isVisible() || (modal && modal != &m_window))
            return;
        const OpenRequest request = m_waiting.front();
        m_waiting.pop_front();
        show(request);
        showNext();
    });
}

void OpenWindow::show(const OpenRequest& request) {
    WindowTurn::releaseDataStructure();
    SourceId source;
    if (!request.file.isEmpty()) {
        const Result<SourceId> opened = KorDSMOpenedFile::open(request.file.toStdString());
        if (opened)
            KorDSMOpenedFile::select(opened.value);
        else
            KorHostReport::add(opened.error);
    }
    if (!request.style.isEmpty()) {
        const FoundRow found =
            RowChoice::find({"detail-style", request.style.toStdString(), request.source.toStdString()});
        if (found)
            KorDSMStartSelection::select(found.value.source, found.value.key);
        else
            KorHostReport::add(found.error);
    }
    // The window takes its turn again, and says what went wrong.
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(&m_window, &activate);
}
