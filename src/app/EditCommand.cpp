#include "app/EditCommand.h"

#include "app/Console.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "app/WindowPicture.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "detailstyles/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "services/KorHostReport.h"
#include "session/DataFolder.h"
#include "session/KorDSMHandOver.h"
#include "session/KorDSMStartSelection.h"
#include "shell/EditorApplication.h"

#include <QApplication>

#include <algorithm>

namespace {

// Returns an exit code.
int selectStyle(const RowOptions& wanted) {
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
    const bool paints = !options.picture.file.empty();
    if (!WindowPicture::prepareDisplay(options.picture))
        return kExitFailed;
    if (!options.style.name.empty() && selectStyle(options.style) != kExitDone)
        return kExitFailed;
    int argc = 1; // Qt would take options such as --style for its own
    QApplication application(argc, argv);
    prepareEditorApplication();
    KOSettings::getInstance().setPathData(folder.path());
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    KorDSMDialogFactory::options().recoversChanges = !paints;
    KorDSMDialogFactory factory(nullptr);
    WindowPicture picture(options.picture);
    if (!paints) {
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
