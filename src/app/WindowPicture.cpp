#include "app/WindowPicture.h"

#include "app/Console.h"
#include "app/OutputFile.h"
#include "app/ReadProblems.h"
#include "base/TemporaryFile.h"
#include "base/Translation.h"
#include "data/store/LockWait.h"
#include "services/KOSettings.h"
#include "services/KorTextFile.h"
#include "session/DataFolder.h"

#include <QApplication>
#include <QBuffer>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <filesystem>
#include <string_view>

#include <unistd.h>

namespace {

bool isPicture(int handle) {
    constexpr std::string_view kSignature = "\x89PNG";
    char start[kSignature.size()] = {};
    const ssize_t size = ::pread(handle, start, sizeof start, 0);
    return size == 0 || std::string_view(start, sizeof start) == kSignature;
}

// Whole or not at all, as the other files that the program writes.
bool writePicture(const QPixmap& picture, const std::string& file, bool mayReplace) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    std::error_code error;
    const std::filesystem::path target = std::filesystem::absolute(file, error);
    removeLeftTemporaryFiles(target.parent_path().string(),
                             [](const std::string&, int handle) { return isPicture(handle); });
    return !error && picture.save(&buffer, "PNG") &&
           std::filesystem::is_directory(target.parent_path(), error) &&
           KorTextFile::replace(target, bytes.toStdString(), mayReplace).ok();
}

// Messages were told on the terminal already; nobody is there to close them.
void closeMessages(const QWidget& window) {
    while (QWidget* message = QApplication::activeModalWidget()) {
        if (message == &window)
            break;
        message->close();
    }
}

bool mayPaint(const PictureOptions& options) {
    KOSettings::getInstance().keepFileUnchanged();
    const KorString hindrance = OutputFile::hindranceOfPicture(options.file, options.overwrite);
    if (!hindrance.isEmpty())
        Console::complain(hindrance);
    return hindrance.isEmpty();
}

// Qt ends the whole program where it finds no display.
bool hasDisplay(bool forPicture) {
    for (const char* variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        if (!qEnvironmentVariableIsEmpty(variable))
            return true;
    if (forPicture)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else
        Console::complain(
            translated("There is no display to open the editor on; use the commands, see --help, "
                       "or give --screenshot for a picture."));
    return forPicture;
}

} // namespace

bool WindowPicture::prepareDisplay(const PictureOptions& options) {
    const bool paints = !options.file.empty();
    return hasDisplay(paints) && (!paints || mayPaint(options));
}

void WindowPicture::paintWhenOpen(const std::function<QWidget*()>& window) {
    QTimer::singleShot(0, qApp, [this, window] {
        QWidget* open = window();
        if (LockWait::isWaiting() || !open || !open->isVisible()) // not settled yet
            return paintWhenOpen(window);
        int width = 0;
        int height = 0;
        if (std::sscanf(m_options.size.c_str(), "%dx%d", &width, &height) == 2)
            open->resize(width, height);
        closeMessages(*open);
        // Scroll bars come when the event loop has gone round once.
        QTimer::singleShot(0, open, [this, open] { paint(*open); });
    });
}

void WindowPicture::paint(QWidget& window) {
    for (int round = 0; round < 5; ++round) // what folds asks those around it for room
        QApplication::processEvents();
    closeMessages(window);
    m_isPainted = writePicture(window.grab(), m_options.file, m_options.overwrite);
    window.close();
}

int WindowPicture::finish(const DataFolder& folder) const {
    if (m_isPainted && !complainOfReading() && folder.isComplete())
        return kExitDone;
    if (m_isPainted)
        Console::complain(KorString::format(
            translated("The picture \"%s\" was written, but shows only what could be read."),
            {m_options.file}));
    else if (mayPaint(m_options)) // nothing came there meanwhile
        Console::complain(
            KorString::format(translated("The picture \"%s\" could not be written. Check that its "
                                         "folder exists and may be written."),
                              {m_options.file}));
    return kExitFailed;
}
