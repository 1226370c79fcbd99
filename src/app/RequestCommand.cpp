#include "app/RequestCommand.h"

#include "app/Console.h"
#include "app/SourceChoice.h"
#include "app/WindowPicture.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "detailstyles/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "services/KorHostReport.h"
#include "session/DataFolder.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMRequestQueue.h"
#include "shell/KorDSMViewRequestDialog.h"
#include "shell/ModuleResources.h"

#include <QApplication>
#include <QJsonObject>

#include <algorithm>

namespace {

KorExchangeQueue& queue() {
    int status = 0;
    return KorExchangeUtilities::getNamedQueue(KorDSMRequestQueue::kQueue, status, 0);
}

bool isInAny(int key, const std::vector<SourceId>& sources) {
    return std::ranges::any_of(sources, [key](SourceId id) {
        return StyleDatabases::current().source(id)->table(kTableViewRequest).find(KorOdbcKey(key)) !=
               nullptr;
    });
}

QWidget* openDialog() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (qobject_cast<KorDSMViewRequestDialog*>(widget))
            return widget;
    return nullptr;
}

// As a host asks, or in one source alone.
bool choose(const RequestOptions& options, SourceId source) {
    if (options.source.empty())
        return KorDSMDialogFactory::openRequestDialog() == 1;
    ModuleResources::setUp(KorDSMDialogFactory::moduleHandle);
    KorDSMItemSource::makeCurrent(source);
    KorDSMViewRequestDialog dialog(options.key, nullptr);
    if (dialog.DoModal() != 1)
        return false;
    KorDSMRequestQueue::put(dialog.requestKey());
    return true;
}

void printChosen(bool json) {
    QJsonObject document;
    for (const char* name :
         {KorDSMRequestQueue::kKey, KorDSMRequestQueue::kDSN, KorDSMRequestQueue::kIndex}) {
        const int value = queue().getInt(name);
        document[QLatin1String(name)] = value;
        if (!json)
            Console::say(KorString::format("%s %s", {name, KorString::number(std::int64_t{value})}));
    }
    if (json)
        Console::print(document);
}

} // namespace

int chooseRequest(WindowStart& start, DataFolder& folder, const RequestOptions& options) {
    const bool paints = !options.picture.file.empty();
    const Result<std::vector<SourceId>> sources = SourceChoice::choose(options.source);
    KorString error(sources.error);
    if (sources && options.key != 0 && !isInAny(options.key, sources.value))
        error = KorString::format(translated("There is no view request with the key %s."),
                                  {KorString::number(std::int64_t{options.key})});
    if (!error.isEmpty()) {
        Console::complain(error);
        return kExitFailed;
    }
    if (!WindowPicture::prepareDisplay(options.picture))
        return kExitFailed;
    start.makeApplication();
    KOSettings::getInstance().setPathData(folder.path());
    queue().clear();
    queue().push(KorDSMRequestQueue::kKey, options.key);
    WindowPicture picture(options.picture);
    std::ranges::for_each(KorHostReport::take(), &Console::complain);
    if (paints)
        picture.paintWhenOpen(&openDialog);
    const bool isChosen = choose(options, sources.value.empty() ? SourceId() : sources.value.front());
    if (paints)
        return picture.finish(folder);
    if (isChosen)
        printChosen(options.json);
    else
        Console::complain(translated("No view request was chosen."));
    return isChosen ? kExitDone : kExitFailed;
}
