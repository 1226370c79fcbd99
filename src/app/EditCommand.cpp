#include "app/EditCommand.h"

#include "app/Console.h"
#include "app/OpenWindow.h"
#include "app/WindowPicture.h"
#include "base/Translation.h"
#include "detailstyles/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "services/KorHostReport.h"
#include "session/DataFolder.h"
#include "session/KorDSMHandOver.h"
#include "shell/DataFolderPlace.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace {

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

OpenRequest requestFor(const EditOptions& options) {
    const std::string file = options.file.empty() ? "" : std::filesystem::absolute(options.file).string();
    return {QString::fromStdString(file), QString::fromStdString(options.style.name),
            QString::fromStdString(options.style.source), qEnvironmentVariable("XDG_ACTIVATION_TOKEN")};
}

RunningEditor::eAnswer handOver(const DataFolder& folder, const EditOptions& options) {
    const RunningEditor::eAnswer answer = RunningEditor::handOver(folder.path(), requestFor(options));
    if (answer != RunningEditor::eAnswer::kTaken)
        return answer;
    Console::say(translated("The editor is open already; its window shows what was wanted."));
    KorHostReport::take(); // was told, and is told by the window
    return answer;
}

// Leaves it to the editor that is open, or that another start opens at the same time. One that gives no
// answer is waited for once; without a display nothing can be opened to be found.
bool isLeftToAnother(WindowStart& start, const DataFolder& folder, const EditOptions& options) {
    using enum RunningEditor::eAnswer;
    const RunningEditor::eAnswer answer = handOver(folder, options);
    return answer == kTaken ||
           (!start.beFound(folder) && answer == kNobody && handOver(folder, options) == kTaken);
}

// Editors of several folders can be open at once. The window gets its title when it opens.
void nameFolder(QWidget& window, const DataFolder& folder) {
    if (folder.path() == locateDataFolder({}))
        return;
    const QString place =
        QStringLiteral(" – ") +
        QString::fromStdString(std::filesystem::absolute(folder.path()).lexically_normal().string());
    QObject::connect(&window, &QWidget::windowTitleChanged, &window, [&window, place](const QString& title) {
        if (!title.endsWith(place))
            window.setWindowTitle(title + place);
    });
}

} // namespace

bool leaveToAnother(WindowStart& start, const DataFolder& folder, const EditOptions& options) {
    return folder.hasServers() && isLeftToAnother(start, folder, options);
}

int openEditor(WindowStart& start, DataFolder& folder, const EditOptions& options) {
    const bool paints = !options.picture.file.empty();
    if (!WindowPicture::prepareDisplay(options.picture))
        return kExitFailed;
    const bool isNeeded = start.keepsRequests(); // of others
    if (selectStart(options) != kExitDone && !isNeeded)
        return kExitFailed;
    if (!paints && !start.wasToBeFound() && isLeftToAnother(start, folder, options))
        return kExitDone;
    start.makeApplication();
    KOSettings::getInstance().setPathData(folder.path());
    KorDSMDialogFactory factory(nullptr);
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    KorDSMDialogFactory::options().recoversChanges = !paints;
    WindowPicture picture(options.picture);
    std::optional<OpenWindow> window;
    if (!paints) {
        window.emplace(*factory.window(), start.takeRunning());
        nameFolder(*factory.window(), folder);
        for (const KorString& problem : folder.problems())
            KorHostReport::add(problem);
    } else {
        std::ranges::for_each(KorHostReport::take(), &Console::complain);
        picture.paintWhenOpen([&factory] { return factory.window(); });
    }
    factory.DoModal();
    if (paints)
        return picture.finish(folder);
    printHandOver();
    return kExitDone;
}
