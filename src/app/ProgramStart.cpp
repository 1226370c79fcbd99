#include "app/ProgramStart.h"

#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"

#include <QLocale>

namespace fs = std::filesystem;

namespace {

// Beside the installed program, or in the source tree for a program that lies in its build tree.
fs::path resourceFolder() {
    std::error_code error;
    const fs::path program = fs::canonical("/proc/self/exe", error);
    const fs::path installed = program.parent_path().parent_path() / "share" / "detailstyles";
    return fs::is_directory(installed, error) ? installed : fs::path(DETAILSTYLES_SOURCE_RESOURCES);
}

} // namespace

void startServices() {
    if (KorResources::folder().empty())
        KorResources::setFolder(resourceFolder());
    const fs::path prompts = KorResources::folder() / "prompts";
    Prompts::load(prompts, Prompts::chooseLanguage(prompts));
    KorUnitsManager::setDecimalMark(QLocale::system().decimalPoint() == "," ? ',' : '.');
}
