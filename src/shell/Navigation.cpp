#include "shell/Navigation.h"

#include "controls/KorButtonGroup.h"
#include "session/KorDSMItemContent.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMUnusedRecords.h"
#include "shell/StripButton.h"
#include "shell/WhenFree.h"

#include <utility>

using namespace KorDSMDefines;

namespace {

constexpr int kBack = 1042;
constexpr int kForward = 1041;
constexpr int kUp = 1040;

constexpr StripButton kButtons[] = {
    {kBack, 1042, 33743, "Alt+Left"}, {kForward, 1041, 33744, "Alt+Right"}, {kUp, 1040, 33745, "Alt+Up"}};

} // namespace

Navigation::Navigation(KorDSMDataStructure& structure, SectionViews& sections, NameFilter& filter,
                       TreeSelection& selection, RightSide& rightSide, KorButtonGroup& strip)
    : m_structure(structure), m_sections(sections), m_filter(filter), m_selection(selection),
      m_rightSide(rightSide), m_strip(strip) {
    for (const StripButton& button : kButtons) {
        addStripButton(m_strip, button);
        m_strip.enableButton(button.id, false);
    }
    connect(&m_strip, &KorButtonGroup::buttonPressed, this, waiting(this, &Navigation::onButton));
    connect(&m_sections, &SectionViews::sourceWanted, this, &Navigation::onSourceWanted);
    connect(&m_selection, &TreeSelection::entered, this, [this](KorDSMDatabaseItem* item) {
        if (m_isRecording)
            m_history.record(KorDSMPlace(*item));
    });
}

void Navigation::showSection(bool restoreCombo) {
    const KorDSMBusy busy;
    const eViewSections section = m_structure.getSelectedSection();
    KorDsmAddInContentItem* source = KorDSMSources::current(m_structure, section);
    if (!source)
        return;
    m_selection.selectDatabase(source);
    m_sections.show(*source);
    if (restoreCombo)
        m_sections.combo(section).choose(KorDSMSources::rememberedGroup(m_structure, section, *source));
    m_selection.sectionShown(m_sections.currentControl().selectedItem());
}

void Navigation::showSectionAgain() {
    const bool recording = std::exchange(m_isRecording, false);
    showSection(true);
    m_isRecording = recording;
}

void Navigation::switchSection(eViewSections section) {
    RightSide::finishEditing();
    m_filter.clear();
    m_structure.setSelectedSection(section);
    Q_EMIT sectionSwitched(section);
    showSection(true);
}

void Navigation::rebuildTrees() {
    const KorDSMBusy busy;
    RightSide::finishEditing();
    m_selection.unhide();
    m_filter.clear();
    m_sections.clearTrees();
    m_selection.forget();
    showSectionAgain();
}

void Navigation::onSourceWanted(eViewSections section, KorDSMDatabaseItem* node) {
    if (!m_structure.getShowFullTree() && !KorDSMBusy::isBusy())
        showSource(section, *node);
}

// The section comes up with the one source in which the database, add-in, category or group lies.
void Navigation::showSource(eViewSections section, KorDSMDatabaseItem& node) {
    KorDsmAddInContentItem* source = KorDSMItemPath::addInOf(node);
    if (!source)
        return;
    RightSide::finishEditing();
    m_filter.clear();
    m_selection.selectDatabase(source);
    m_structure.getSelectedPath(section) = KorDSMItemPath::textsTo(node);
    const KorDSMDatabaseItem* group = KorDSMItemPath::groupOf(node);
    m_structure.setSelectedCategory(section, group ? group->recordKey() : 0);
    m_sections.fill(section, *source);
    showSection(false);
}

bool Navigation::showPlaceOf(KorDSMDatabaseItem& item) {
    KorDsmSectionItem* home = KorDSMItemPath::sectionOf(item);
    if (!home)
        return false;
    const eViewSections section = home->section();
    if (section != m_structure.getSelectedSection())
        switchSection(section);
    KorDsmAddInContentItem* source = KorDSMItemPath::addInOf(item);
    if (!source || m_structure.getShowFullTree() || source == KorDSMSources::current(m_structure, section))
        return true;
    showSource(section, *source);
    m_sections.combo(section).choose(*source);
    return true;
}

void Navigation::open(KorDSMDatabaseItem* item) {
    if (!KorDSMBusy::isBusy())
        goToItem(*item);
}

void Navigation::goToItem(KorDSMDatabaseItem& item) {
    if (!showPlaceOf(item))
        return;
    KorDSMSectionTree& tree = m_sections.currentTree();
    const bool isUnused =
        item.record() && item.parent()->type() == kAddInContent && !isGroupType(item.type());
    if (isUnused && !tree.reveal(item) && tree.addEntry(item))
        m_sections.namesChanged();
    // What is not opened in turn has no entry: its nearest ancestor that has one is shown instead.
    for (KorDSMDatabaseItem* step = &item; step; step = step->parent())
        if (KorTreeHandle entry = tree.reveal(*step))
            return selectEntry(entry);
}

void Navigation::goToRecord(SourceId source, RowRef row) {
    KorDSMDatabaseItem* found = nullptr;
    {
        const KorDSMBusy busy;
        if (KorDSMDatabaseItem* shown = m_selection.item()) {
            KorDSMItemContent::loadChildren(*shown);
            for (KorDSMDatabaseItem* child : shown->children())
                if (child->record() && child->tableType() == row.table && child->recordKey() == row.key)
                    found = child;
        }
        if (!found)
            found = KorDSMWhereUsed::findItem(m_structure, source, row);
        if (!found)
            found = KorDSMUnusedRecords::itemOf(m_structure, source, row);
    }
    if (found)
        goToItem(*found);
}

bool Navigation::goToField(SourceId source, RowRef row, int column, RowRef within) {
    KorDSMDatabaseItem* found = nullptr;
    {
        const KorDSMBusy busy;
        const KorDSMDatabaseItem* shown = m_selection.item();
        KorDSMDatabaseItem* top =
            within.key > 0 ? KorDSMWhereUsed::findItem(m_structure, source, within) : nullptr;
        if (top)
            found = KorDSMWhereUsed::findEditorBelow(*top, row);
        if (!found)
            found = KorDSMWhereUsed::findEditor(m_structure, source, row);
        if (!found)
            found = KorDSMUnusedRecords::editorOf(m_structure, source, row);
        if (found && shown && found->record() && shown->tableType() == found->tableType() &&
            shown->recordKey() == found->recordKey())
            found = m_selection.item();
    }
    if (found && found != m_selection.item())
        goToItem(*found);
    return found && m_rightSide.focusField(row, column);
}

void Navigation::returnToItem(KorDSMDatabaseItem& item) {
    const bool recording = std::exchange(m_isRecording, false);
    goToItem(item);
    m_isRecording = recording;
}

void Navigation::focusTree() {
    m_sections.currentControl().setFocus(Qt::ShortcutFocusReason);
}

void Navigation::selectEntry(KorTreeHandle entry) {
    KorTreeCtrl& control = m_sections.currentControl();
    if (control.isHidden(entry))
        m_filter.clear();
    control.selectItem(entry);
    m_selection.follow();
}

void Navigation::goToChild(KorTreeHandle entry, int place) {
    KorTreeCtrl& control = m_sections.currentControl();
    control.expand(entry);
    KorTreeHandle child = control.getChildItem(entry);
    for (int i = 0; child && i < place; ++i)
        child = control.getNextSiblingItem(child);
    if (child)
        selectEntry(child);
}

void Navigation::goToFirstMatch() {
    KorTreeHandle first = m_filter.firstMatch();
    if (!first)
        return;
    focusTree();
    selectEntry(first);
}

void Navigation::onButton(int id) {
    if (id == kUp)
        goUp();
    else if (id == kBack || id == kForward) // the strip has buttons of others, too
        step(id == kForward);
}

KorDSMSelectionHistory::Exists Navigation::placeExists() {
    return [this](const KorDSMPlace& place) { return place.isStillThere(m_structure); };
}

// A place of another section brings that section up, with what was selected there last.
void Navigation::step(bool forward) {
    RightSide::finishEditing();
    const bool recording = std::exchange(m_isRecording, false);
    while (const auto place =
               forward ? m_history.goForward(placeExists()) : m_history.goBack(placeExists())) {
        if (place->section() != m_structure.getSelectedSection()) {
            switchSection(place->section());
            break;
        }
        if (KorDSMDatabaseItem* item = place->find(m_structure)) {
            goToItem(*item);
            break;
        }
    }
    m_isRecording = recording;
    updateStates();
}

void Navigation::goUp() {
    KorTreeCtrl& control = m_sections.currentControl();
    KorTreeHandle selected = control.selectedItem();
    KorTreeHandle parent = selected ? control.getParentItem(selected) : nullptr;
    if (parent)
        selectEntry(parent);
    else
        m_strip.enableButton(kUp, false);
}

void Navigation::updateStates() {
    m_strip.enableButton(kBack, m_history.canGoBack(placeExists()));
    m_strip.enableButton(kForward, m_history.canGoForward(placeExists()));
    const KorTreeCtrl& control = m_sections.currentControl();
    KorTreeHandle entry = m_selection.entry();
    KorTreeHandle parent = entry ? control.getParentItem(entry) : nullptr;
    m_strip.enableButton(kUp, parent && parent != control.getRoot());
}
