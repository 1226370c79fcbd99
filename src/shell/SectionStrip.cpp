#include "shell/SectionStrip.h"

#include "controls/KorButtonGroupMenu.h"
#include "controls/KorControls.h"
#include "controls/KorPictures.h"
#include "model/KorDSMFamilies.h"
#include "services/Prompts.h"
#include "shell/CommandHelp.h"
#include "shell/StyleThumbnails.h"
#include "shell/WhenFree.h"

using namespace KorDSMDefines;

namespace {

struct Option {
    const char* category;
    bool (*get)(const KorDSMDataStructure&);
    void (*set)(KorDSMDataStructure&, bool);
    int prompt;
    bool changesTrees;
};

template <bool (KorDSMDataStructure::*Get)() const>
bool stored(const KorDSMDataStructure& structure) {
    return (structure.*Get)();
}
template <void (KorDSMDataStructure::*Set)(bool)>
void store(KorDSMDataStructure& structure, bool on) {
    (structure.*Set)(on);
}

using Structure = KorDSMDataStructure;

constexpr Option kOptions[] = {
    {"UPS", &stored<&Structure::getShowFullTree>, &store<&Structure::setShowFullTree>, 33527, true},
    {"UPS", &stored<&Structure::getUseFullExpand>, &store<&Structure::setUseFullExpand>, 33528, true},
    {"UPS", &stored<&Structure::getShowWarning>, &store<&Structure::setShowWarning>, 33529, false},
    {"DSM", [](const Structure&) { return StyleThumbnails::ofSession().areShown(); },
     [](Structure&, bool shown) { StyleThumbnails::ofSession().setShown(shown); }, 960, false},
};

constexpr int kStripId = 1234;
constexpr int kOptionsButton = 1089;
constexpr int kOptionsBitmap = 1090;

} // namespace

SectionStrip::SectionStrip(KorButtonGroupMenu& strip, KorDSMDataStructure& structure)
    : m_strip(strip), m_structure(structure) {
    KorButtonGroup* buttons = m_strip.buttonGroup();
    KorControls::setId(buttons, kStripId);
    buttons->setCheckable(true);
    for (const KorDSMSection& section : KorDSMFamilies::sections())
        buttons->addButton(section.button, Prompts::ups(section.namePrompt),
                           KorPictures::buttonBitmap(section.bitmap, section.checkedBitmap));
    connect(buttons, &KorButtonGroup::buttonPressed, this, [this](int id) {
        for (const KorDSMSection& section : KorDSMFamilies::sections())
            if (section.button == id)
                whenFree(this, [this, wanted = section.section] { Q_EMIT sectionWanted(wanted); });
    });
    m_strip.setMenuButton(kOptionsButton, Prompts::gui(45100), KorPictures::bitmap(kOptionsBitmap));
    for (const Option& option : kOptions) {
        const int place = m_strip.addMenuItem(Prompts::getPrompt(option.category, option.prompt));
        CommandHelp::set(m_strip.checkMenu()->actions().at(place), option.prompt);
    }
    CommandHelp::serve(*m_strip.checkMenu());
    connect(&m_strip, &KorButtonGroupMenu::toggled, this, waiting(this, &SectionStrip::onToggled));
}

void SectionStrip::check(eViewSections section) {
    m_strip.buttonGroup()->setCheckedButton(KorDSMFamilies::section(section).button);
}

void SectionStrip::showOptions() {
    for (int i = 0; i < static_cast<int>(std::size(kOptions)); ++i)
        setCheck(i, kOptions[i].get(m_structure));
}

void SectionStrip::setCheck(int option, bool checked) {
    m_strip.setCheck(option, checked);
}

void SectionStrip::onToggled(int index, bool checked) {
    const Option& option = kOptions[index];
    option.set(m_structure, checked);
    if (option.changesTrees)
        Q_EMIT treesChanged();
}
