#include "shell/ModuleResources.h"

#include "base/Translation.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorPictures.h"
#include "controls/KorTemplates.h"
#include "pages/KorDSMPlainPage.h"
#include "services/CKorHelp.h"
#include "services/KOSettings.h"
#include "services/KorHostPost.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "shell/HelpWindow.h"
#include "templates/Templates.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTimer>

#include <dlfcn.h>

namespace {

constexpr const char* kLayoutKey = "Layout";

bool makeTemplate(int number, QWidget* window) {
    // A plain page needs no form: it is made from its table's declaration.
    return Templates::setUp(number, window) || KorDSMPlainPage::isPlainTemplate(number);
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

std::filesystem::path ModuleResources::findFolder() {
    // Beside the installed module or program, or in the source tree for one that lies in its build tree.
    Dl_info info{};
    dladdr(reinterpret_cast<const void*>(&ModuleResources::setUp), &info);
    std::error_code error;
    const std::filesystem::path module =
        std::filesystem::canonical(info.dli_fname ? info.dli_fname : "", error);
    for (std::filesystem::path folder = module.parent_path(); folder.has_relative_path();
         folder = folder.parent_path())
        if (const auto resources = folder / "share" / "detailstyles";
            std::filesystem::is_directory(resources, error))
            return resources;
    return DETAILSTYLES_SOURCE_RESOURCES;
}

void ModuleResources::setUp(const KorString& folder) {
    if (!folder.isEmpty())
        KorResources::setFolder(folder.toStdString());
    else if (KorResources::folder().empty())
        KorResources::setFolder(findFolder());
    KorPictures::setBase(KorString(KorResources::folder().string()));
    KorPictures::setMissingSink([](const KorString& path) {
        KorHostReport::add(
            KorString::format(translated("The picture %s is missing in %s. Install the program again."),
                              {path, KorResources::folder().string()}));
    });
    KorTemplates::setFactory(makeTemplate);
    KorLayoutStore::setBackend(readLayout, writeLayout);
    KorHostPost::setPost([](std::function<void()> call) { QTimer::singleShot(0, qApp, std::move(call)); });
    KorUnitsManager::setDecimalMark(QLocale().decimalPoint() == QLatin1String(",") ? ',' : '.');
    CKorHelp::setViewer([](const std::filesystem::path& page) { HelpWindow::show(page); });
}
