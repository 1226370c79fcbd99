#include "app/ProgramStart.h"

#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"

#include <QLocale>

void startServices() {
    const std::filesystem::path prompts = KorResources::folder() / "prompts";
    Prompts::load(prompts, Prompts::chooseLanguage(prompts));
    KorUnitsManager::setDecimalMark(QLocale::system().decimalPoint() == "," ? ',' : '.');
}
