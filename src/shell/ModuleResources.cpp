#include "shell/ModuleResources.h"

#include "base/Translation.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorPictures.h"
#include "controls/KorTemplates.h"
#include "pages/KorDSMFormPage.h"
#include "services/CKorHelp.h"
#include "services/KOSettings.h"
#include "services/KorHostPost.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"
#include "shell/HelpWindow.h"
#include "templates/Templates.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTimer>

namespace {

constexpr const char* kLayoutKey = "Layout";

bool makeTemplate(int number, QWidget* window) {
    // Pages that consist of a declared form make their controls themselves.
    return Templates::setUp(number, window) || qobject_cast<KorDSMFormPage*>(window);
}

KorString readLayout(const KorString& name) {
    KorString value;
    KOSettings::getInstance().readString(kLayoutKey, name, value);
    return value;
}

void writeLayout(const KorString& name, const KorString& value) {
    KOSettings::getInstance().writeString(kLayoutKey, name, value);
}

} // namespace

void ModuleResources::setUp(const KorString& folder) {
    if (!folder.isEmpty())
        KorResources::setFolder(folder.toStdString());
    KorPictures::setBase(KorString(KorResources::folder().string()));
    KorPictures::setMissingSink([](const KorString& path) {
        KorHostReport::add(
            KorString::format(translated("The picture %s is missing in %s. Install the program again."),
                              {path, KorResources::folder().string()}));
    });
    KorPictures::setDescriptions([](int number) {
        return Prompts::has("PIC", number) ? Prompts::getPrompt("PIC", number) : KorString();
    });
    KorTemplates::setFactory(makeTemplate);
    KorLayoutStore::setBackend(readLayout, writeLayout);
    KorHostPost::setPost([](std::function<void()> call) { QTimer::singleShot(0, qApp, std::move(call)); });
    KorUnitsManager::setDecimalMark(QLocale().decimalPoint() == QLatin1String(",") ? ',' : '.');
    CKorHelp::setViewer(&HelpWindow::show);
}
