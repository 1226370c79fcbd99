#include "shell/LanguageMenu.h"

#include "controls/KorQt.h"
#include "services/KOSettings.h"
#include "services/KorResources.h"
#include "services/Prompts.h"
#include "shell/CommandHelp.h"
#include "shell/StatusLine.h"

#include <QActionGroup>
#include <QLocale>
#include <QMenu>

namespace {

constexpr int kLanguage = 1017;
constexpr int kSystem = 1018; // "As the system: %s"
constexpr int kLater = 1019;

std::filesystem::path folder() {
    return KorResources::folder() / "prompts";
}

// As those who speak it write it; the code of one that is not known.
QString nameOf(const std::string& code) {
    const QLocale locale(QString::fromStdString(code));
    QString name =
        locale.language() == QLocale::C ? QString::fromStdString(code) : locale.nativeLanguageName();
    // The library names the language together with the land that comes to its mind first.
    if (locale.language() == QLocale::English)
        name = QStringLiteral("English");
    return name.left(1).toUpper() + name.mid(1);
}

std::string setting() {
    KorString code;
    KOSettings::getInstance().readString(KOSettings::getKeyDSM(), Prompts::kLanguageSetting, code);
    return code.toStdString();
}

} // namespace

LanguageMenu::LanguageMenu(QMenu& options, StatusLine& status) : m_status(status) {
    options.addSeparator();
    QMenu* menu = options.addMenu(toQt(Prompts::dsm(kLanguage)));
    CommandHelp::serve(*menu);
    CommandHelp::set(menu->menuAction(), kLanguage);
    auto* group = new QActionGroup(menu);
    const QString system = nameOf(Prompts::systemLanguage(folder()));
    add(*menu, *group, toQt(KorString::format(Prompts::dsm(kSystem), {fromQt(system)})), {});
    menu->addSeparator();
    for (const std::string& code : Prompts::languages(folder()))
        add(*menu, *group, nameOf(code), code);
}

void LanguageMenu::add(QMenu& menu, QActionGroup& group, const QString& text, const std::string& code) {
    QAction* entry = menu.addAction(text);
    entry->setCheckable(true);
    entry->setActionGroup(&group);
    entry->setChecked(code == setting());
    connect(entry, &QAction::triggered, this, [this, code] { choose(code); });
}

void LanguageMenu::choose(const std::string& code) {
    KOSettings::getInstance().writeString(KOSettings::getKeyDSM(), Prompts::kLanguageSetting, code);
    m_status.say(Prompts::dsm(kLater));
}
