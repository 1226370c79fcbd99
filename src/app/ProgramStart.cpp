#include "app/ProgramStart.h"

#include "services/KOSettings.h"
#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"

#include <QLocale>

namespace {

// Numbers are written as in the language of the texts, also where that is not the system's.
QLocale localeOf(const std::string& language) {
    const QLocale system = QLocale::system();
    const QLocale wanted(QString::fromStdString(language));
    const bool isPlainEnglish = system.language() == QLocale::C && wanted.language() == QLocale::English;
    return isPlainEnglish || system.language() == wanted.language() ? system : wanted;
}

} // namespace

void startServices() {
    const std::filesystem::path prompts = KorResources::folder() / "prompts";
    Prompts::load(prompts, Prompts::chooseLanguage(prompts));
    KOSettings::getInstance().reportOthers(
        KOSettings::getKeyDSM(), {"Language", "OwnerMode", "ShowFullTree", "FullExpand", "ShowWarning"});
    QLocale::setDefault(localeOf(Prompts::language()));
    KorUnitsManager::setDecimalMark(QLocale().decimalPoint() == "," ? ',' : '.');
}
