#include "shell/SelectionStatus.h"

#include "services/Prompts.h"
#include "session/KorDSMItemWords.h"
#include "session/KorDSMValueText.h"
#include "shell/CommandStrip.h"
#include "shell/Navigation.h"
#include "shell/StatusLine.h"

#include <QPushButton>

namespace {

constexpr int kNothingFound = 411; // "No name contains "%s""
constexpr int kIsHidden = 1410;    // "The filter hides "%s""

} // namespace

SelectionStatus::SelectionStatus(SectionViews& sections, NameFilter& filter, TreeSelection& selection,
                                 Navigation& navigation, CommandStrip& commands, QPushButton& use,
                                 StatusLine& status)
    : m_sections(sections), m_filter(filter), m_selection(selection), m_navigation(navigation),
      m_commands(commands), m_use(use), m_status(status) {
    connect(&m_selection, &TreeSelection::changed, this, &SelectionStatus::show);
    connect(&m_selection, &TreeSelection::subjectsChanged, this, &SelectionStatus::updateCommands);
    connect(&m_filter, &NameFilter::applied, this, &SelectionStatus::showFiltered);
}

void SelectionStatus::show() {
    KorString status;
    KorString note;
    KorString reason;
    if (const KorDSMDatabaseItem* item = m_selection.item()) {
        const KorString text = m_sections.currentControl().getItemText(m_selection.entry());
        status = KorDSMValueText::shortName(statusTextOf(*item, text));
        note = KorDSMItemCommands::readOnlyNote(*item);
        reason = KorDSMItemCommands::whyOnlyReadable(*item);
    }
    if (const KorString hidden = whatIsHidden(); !hidden.isEmpty())
        status = hidden;
    m_status.show(status, note, reason);
    updateCommands();
}

void SelectionStatus::updateCommands() {
    const CommandStates states = commandStates(m_selection.facts());
    const KorDSMDatabaseItem* item = m_selection.subject();
    m_commands.enable(states, item ? KorDSMItemCommands::whyOnlyReadable(*item) : KorString());
    m_use.setEnabled(states[eItemCommand::kUse]);
    m_navigation.updateStates();
}

// Said for as long as it is so: an empty tree does not tell why.
KorString SelectionStatus::whatIsHidden() const {
    if (!m_filter.isSet())
        return {};
    if (!m_isAnyFound)
        return KorString::format(Prompts::dsm(kNothingFound), {KorDSMValueText::shortName(m_filter.text())});
    const KorTreeCtrl& control = m_sections.currentControl();
    const KorTreeHandle entry = m_selection.entry();
    return entry && control.isHidden(entry)
               ? KorString::format(Prompts::dsm(kIsHidden),
                                   {KorDSMValueText::shortName(control.getItemText(entry))})
               : KorString();
}

void SelectionStatus::showFiltered(bool found) {
    m_isAnyFound = found;
    m_selection.followFilter();
    show();
}
