#include "shell/SectionStrip.h"

#include "controls/KorButtonGroupMenu.h"
#include "controls/KorControls.h"
#include "controls/KorPictures.h"
#include "services/Prompts.h"
#include "shell/WhenFree.h"

using namespace KorDSMDefines;

namespace {

struct SectionButton {
    int id;
    int prompt;
    int bitmap;
    int checkedBitmap;
};

// In the order of the sections.
constexpr SectionButton kSectionButtons[] = {{1064, 33511, 1062, 1064},
                                             {1061, 33518, 1060, 1061},
                                             {1057, 33514, 1063, 1057},
                                             {1059, 33516, 1058, 1059}};

struct Option {
    int prompt;
    bool (KorDSMDataStructure::*get)() const;
    void (KorDSMDataStructure::*set)(bool);
    bool changesTrees;
};

constexpr Option kOptions[] = {
    {33527, &KorDSMDataStructure::getShowFullTree, &KorDSMDataStructure::setShowFullTree, true},
    {33528, &KorDSMDataStructure::getUseFullExpand, &KorDSMDataStructure::setUseFullExpand, true},
    {33529, &KorDSMDataStructure::getShowWarning, &KorDSMDataStructure::setShowWarning, false},
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
    for (const SectionButton& button : kSectionButtons)
        buttons->addButton(button.id, Prompts::ups(button.prompt),
                           KorPictures::buttonBitmap(button.bitmap, button.checkedBitmap));
    connect(buttons, &KorButtonGroup::buttonPressed, this, [this](int id) {
        for (int i = 0; i < kNumberOfSections; ++i)
            if (kSectionButtons[i].id == id)
                whenFree(this, [this, i] { Q_EMIT sectionWanted(static_cast<eViewSections>(i)); });
    });
    m_strip.setMenuButton(kOptionsButton, Prompts::gui(45100), KorPictures::bitmap(kOptionsBitmap));
    for (const Option& option : kOptions)
        m_strip.addMenuItem(Prompts::ups(option.prompt));
    connect(&m_strip, &KorButtonGroupMenu::toggled, this, waiting(this, &SectionStrip::onToggled));
}

void SectionStrip::check(eViewSections section) {
    m_strip.buttonGroup()->setCheckedButton(kSectionButtons[section].id);
}

void SectionStrip::showOptions() {
    for (int i = 0; i < static_cast<int>(std::size(kOptions)); ++i)
        setCheck(i, (m_structure.*kOptions[i].get)());
}

void SectionStrip::setCheck(int option, bool checked) {
    m_strip.setCheck(option, checked);
}

void SectionStrip::onToggled(int index, bool checked) {
    const Option& option = kOptions[index];
    (m_structure.*option.set)(checked);
    if (option.changesTrees)
        Q_EMIT treesChanged();
}
