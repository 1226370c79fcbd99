#include "app/EditCommand.h"

#include "app/Console.h"
#include "app/OutputFile.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "base/TemporaryFile.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "data/store/LockWait.h"
#include "detailstyles/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "services/KorHostReport.h"
#include "services/KorTextFile.h"
#include "session/DataFolder.h"
#include "session/KorDSMHandOver.h"
#include "session/KorDSMStartSelection.h"
#include "shell/EditorApplication.h"

#include <QApplication>
#include <QBuffer>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <algorithm>
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
           KorTextFile::replace(target, bytes.toStdString(), mayReplace);
}

// Messages were told on the terminal already; nobody is there to close them.
void closeMessages(const QWidget* window) {
    while (QWidget* message = QApplication::activeModalWidget()) {
        if (message == window)
            break;
        message->close();
    }
}

// Paints the window once it has settled, then closes it. `painted` tells whether the file was written.
void paintWhenOpen(QWidget* window, const EditOptions& options, bool& painted) {
    QTimer::singleShot(0, window, [window, &options, &painted] {
        if (LockWait::isWaiting()) // not settled yet
            return paintWhenOpen(window, options, painted);
        int width = 0;
        int height = 0;
        if (std::sscanf(options.size.c_str(), "%dx%d", &width, &height) == 2)
            window->resize(width, height);
        closeMessages(window);
        // Scroll bars come when the event loop has gone round once.
        QTimer::singleShot(0, window, [window, &options, &painted] {
            QApplication::processEvents();
            closeMessages(window);
            painted = writePicture(window->grab(), options.screenshot, options.overwrite);
            window->close();
        });
    });
}

// Whether the picture may be written; complains otherwise. The window of a picture is not the user's own, so
// nothing about it is remembered.
bool mayPaint(const EditOptions& options) {
    KOSettings::getInstance().keepFileUnchanged();
    const KorString hindrance = OutputFile::hindrance(options.screenshot, options.overwrite);
    if (!hindrance.isEmpty())
        Console::complain(hindrance);
    return hindrance.isEmpty();
}

// Whether nothing is missing in the picture; complains otherwise.
bool isPictureWhole(const DataFolder& folder, const std::string& file) {
    if (!complainOfReading() && folder.isComplete())
        return true;
    Console::complain(KorString::format(
        translated("The picture \"%s\" was written, but shows only what could be read."), {file}));
    return false;
}

// Qt ends the whole program where it finds no display. A picture needs none.
bool prepareDisplay(bool forPicture) {
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

// Returns an exit code.
int selectStyle(const RowOptions& wanted) {
    RowChoice style;
    KorString error;
    const eExitCode found = RowChoice::find(wanted, style, error);
    if (found == kExitDone && KorDSMStartSelection::select(style.source, style.key))
        return kExitDone;
    complainOfReading();
    if (found != kExitDone) {
        complainUnlessTold(error);
        return kExitFailed;
    }
    StyleSource& source = *StyleDatabases::current().source(style.source);
    Console::complain(KorString::format(
        source.complete()
            ? translated("The detail style \"%s\" has no category, so the editor does not show it.")
            : translated("The editor cannot show the detail style \"%s\", because \"%s\" could not "
                         "be read whole."),
        {wanted.name, source.store().name()}));
    return kExitFailed;
}

// What was handed over, one "name value" pair a line.
void printHandOver() {
    int status = 0;
    const KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue(KorDSMHandOver::kQueue, status, 0);
    if (!queue.has("RESULT1"))
        return;
    const auto say = [](const char* name, const KorString& value) {
        Console::say(KorString::format("%s %s", {name, value}));
    };
    say("used-detail-key", KorString::number(std::int64_t{queue.getInt("RESULT1")}));
    say("used-number", KorString::number(std::int64_t{queue.getInt("RESULT2")}));
    say("used-source", queue.getString("RESULT3"));
    if (queue.has("RESULT4"))
        say("used-add-in", KorString::number(std::int64_t{queue.getInt("RESULT4")}));
}

} // namespace

int openEditor(char** argv, DataFolder& folder, const EditOptions& options) {
    if (!prepareDisplay(!options.screenshot.empty()))
        return kExitFailed;
    if (!options.screenshot.empty() && !mayPaint(options))
        return kExitFailed;
    if (!options.style.name.empty() && selectStyle(options.style) != kExitDone)
        return kExitFailed;
    int argc = 1; // Qt would take options such as --style for its own
    QApplication application(argc, argv);
    prepareEditorApplication();
    KOSettings::getInstance().setPathData(folder.path());
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    KorDSMDialogFactory::options().recoversChanges = options.screenshot.empty();
    KorDSMDialogFactory factory(nullptr);
    bool painted = false;
    if (options.screenshot.empty()) {
        for (const KorString& problem : folder.problems())
            KorHostReport::add(problem);
    } else {
        std::ranges::for_each(KorHostReport::take(), &Console::complain);
        paintWhenOpen(factory.window(), options, painted);
    }
    factory.DoModal();
    if (!options.screenshot.empty() && !painted) {
        if (!mayPaint(options)) // something came there meanwhile
            return kExitFailed;
        Console::complain(
            KorString::format(translated("The picture \"%s\" could not be written. Check that its "
                                         "folder exists and may be written."),
                              {options.screenshot}));
        return kExitFailed;
    }
    printHandOver();
    return options.screenshot.empty() || isPictureWhole(folder, options.screenshot) ? kExitDone : kExitFailed;
}
