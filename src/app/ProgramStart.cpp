#include "app/ProgramStart.h"

#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"
#include "shell/ModuleResources.h"

#include <QLocale>

void startServices() {
    if (KorResources::folder().empty())
        KorResources::setFolder(ModuleResources::findFolder());
    const std::filesystem::path prompts = KorResources::folder() / "prompts";
    Prompts::load(prompts, Prompts::chooseLanguage(prompts));
    KorUnitsManager::setDecimalMark(QLocale::system().decimalPoint() == "," ? ',' : '.');
}
