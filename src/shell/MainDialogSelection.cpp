#include "controls/KorButtonGroup.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "controls/VELComboTree.h"
#include "model/items/KorDsmItems.h"
#include "services/Prompts.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMValueText.h"
#include "shell/KorDSMMainDialog.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>

#include <utility>

// What a selection in a tree brings with it.

using namespace KorDSMDefines;

namespace {

// Status texts of the item types that have one of their own; 0: the entry's text.
constexpr struct {
    eItemType type;
    int prompt;
} kStatusTexts[] = {
    {kDetailStyle, 33513},
    {kDetailStyleCategory, 33512},
    {kDetailStylesSection, 0},
    {kAnnotationsSection, 0},
    {kDimRequestsSection, 0},
    {kQualifiersSection, 0},
    {kAnnotationStrategy, 33790},
    {kAnnotationGroup, 33515},
    {kDimRequest, 33625},
    {kDimRequestGroup, 33517},
    {kQualifierSet, 33675},
    {kQualifierSetGroup, 33519},
    {kViewRequest, 0},
    {kSystemAndBox, 33772},
    {kReprMapRule, 33580},
    {kViewDimensioning, 33610},
    {kReprMap, 33595},
    {kAppearance, 33685},
    {kAnnotationArrangement, 33805},
    {kPointSelection, 33645},
};

KorString statusText(const KorDSMDatabaseItem& item, const KorString& entryText) {
    for (const auto& row : kStatusTexts)
        if (row.type == item.m_Type)
            return row.prompt == 0 ? entryText : Prompts::ups(row.prompt);
    return {};
}

// Deep copy and dimension settings have no dialogs yet: their buttons stay off.
bool isOffered(eItemCommand command) {
    return command != eItemCommand::kDeepCopy && command != eItemCommand::kDimensionSettings;
}

constexpr int kBack = 1042;
constexpr int kForward = 1041;
constexpr int kUp = 1040;

} // namespace

bool KorDSMMainDialog::selectItemDatabase(const KorDSMDatabaseItem* item) {
    if (!m_itemSource.select(item))
        return false;
    const eViewSections section = m_structure.getSelectedSection();
    m_structure.setTargetDatabase(section, m_itemSource.selected().dsn);
    m_structure.setTargetAddIn(section, m_itemSource.selected().index);
    return true;
}

void KorDSMMainDialog::onSelectionChanged(KorTreeHandle entry) {
    KorTreeCtrl* control = currentTree().control();
    if (!entry || entry == control->getRoot())
        return onRootSelected(entry);
    // The page shown stores what was typed while its own source is still current.
    m_tabs->finishCurrentPage();
    m_currentEntry = entry;
    m_hiddenByFilter = false;
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(entry);
    selectItemDatabase(item);
    if (m_recording && item)
        m_history.record(KorDSMPlace(*item));
    if (!item) {
        showList(nullptr);
    } else {
        showRightSide(*item);
        rememberSelection(*item, entry);
    }
    showStatus();
    DsmSelectionChanged message;
    message.entry = entry;
    KorDSMMainWindow::postMessage(message);
    KorTreeHandle parent = control->getParentItem(entry);
    const KorDSMDatabaseItem* above = KorDSMSectionTree::itemOf(parent);
    control->setDragAllowed(above && isGroupType(above->m_Type));
}

// What is shown at the right stays there, but commands have nothing to do with it.
void KorDSMMainDialog::onRootSelected(KorTreeHandle root) {
    m_currentEntry = root;
    m_hiddenByFilter = false;
    const bool isBlank = m_list->isHidden() ? !m_tabs->currentPage() : !m_listedEntry;
    if (!root || isBlank)
        showList(KorDSMSectionTree::itemOf(root));
    showStatus();
}

// What the window says and allows about the selected entry, beside the right side.
void KorDSMMainDialog::showStatus() {
    const KorDSMDatabaseItem* item = currentItem();
    QString status;
    QString readOnly;
    if (item) {
        const KorString text = currentTree().control()->getItemText(m_currentEntry);
        status = toQt(KorDSMValueText::shortName(statusText(*item, text)));
        readOnly = toQt(KorDSMItemCommands::whyNotWritable(*item));
    }
    m_status->setText(status);
    m_readOnly->setText(readOnly);
    updateCommandStates();
}

// The entry that is selected in the tree becomes the current one; one that a filter hides stays it.
void KorDSMMainDialog::followSelection() {
    const KorTreeCtrl* control = currentTree().control();
    KorTreeHandle selected = control->selectedItem();
    const bool isOnlyHidden = !selected && m_currentEntry && control->isHidden(m_currentEntry);
    if (selected != m_currentEntry && !isOnlyHidden)
        onSelectionChanged(selected);
}

// Nothing may hold on to an entry that goes, nor to the item that it stands for.
void KorDSMMainDialog::onEntryGone(KorTreeHandle entry) {
    if (!m_ready)
        return;
    if (m_currentEntry == entry) {
        m_currentEntry = nullptr;
        m_hiddenByFilter = false;
    }
    if (m_listedEntry == entry) {
        m_listedEntry = nullptr;
        m_list->setItems({});
    }
    const KorTabPage* page = m_tabs->currentPage();
    if (!page || !page->getData() || page->getData() != KorDSMSectionTree::itemOf(entry))
        return;
    TabContent* content = m_tabs->currentContent();
    m_tabs->setCurrentContent(nullptr);
    content->setPageData(nullptr, -1);
}

void KorDSMMainDialog::showRightSide(KorDSMDatabaseItem& item) {
    eItemType group = item.m_Type;
    if (group == kAnnotationArrangement) {
        if (!item.record()) {
            m_tabs->hide();
            m_list->hide();
            return;
        }
        if (static_cast<KorDsmAnnotationArrangementItem&>(item).usesNewArranger())
            group = kSecondArrangerControl;
    }
    if (group < kNumberOfItemTypes && m_pages.group(group))
        showPages(group, item);
    else
        showList(&item);
}

void KorDSMMainDialog::showPages(eItemType group, KorDSMDatabaseItem& item) {
    m_tabs->finishCurrentPage();
    TabContent* content = m_pages.group(group);
    content->setPageData(&item, -1);
    m_list->hide();
    m_tabs->show();
    m_tabs->setCurrentContent(content);
    markPages();
}

void KorDSMMainDialog::rememberSelection(KorDSMDatabaseItem& item, KorTreeHandle entry) {
    const eViewSections section = m_structure.getSelectedSection();
    KorDSMDatabaseItem* group = KorDSMItemPath::groupOf(item);
    m_structure.setSelectedCategory(section, group ? group->recordKey() : 0);
    m_structure.setSelectedItem(section, currentTree().control()->GetItemIndex(entry));
    m_structure.getSelectedPath(section) = KorDSMItemPath::textsTo(item);
    if (!m_structure.getShowFullTree())
        return;
    KorDSMDatabaseItem* shown = group ? group : KorDSMItemPath::addInOf(item);
    if (!shown)
        return;
    const KorString path = comboPath(section, shown);
    if (slot(section).combo->selectPath(path))
        return;
    // The tree may have loaded the source since the combo was filled.
    fillSourceCombo(section);
    slot(section).combo->selectPath(path);
}

// Of what is not opened yet only the tree knows that it can be.
SelectionFacts KorDSMMainDialog::factsOf(KorDSMDatabaseItem& item) {
    KorTreeCtrl* control = currentTree().control();
    KorTreeHandle entry = item.m_hTreeItem;
    return selectionFactsOf(item, entry && (control->childCount(entry) > 0 || control->isPlaceholder(entry)));
}

void KorDSMMainDialog::updateCommandStates() {
    std::vector<SelectionFacts> facts;
    for (KorDSMDatabaseItem* item : subjects())
        facts.push_back(factsOf(*item));
    const CommandStates states = commandStates(facts);
    for (int i = 0; i < kNumberOfItemCommands; ++i)
        enableItemCommand(i, states.enabled[static_cast<std::size_t>(i)] &&
                                 isOffered(static_cast<eItemCommand>(i)));
    m_use->setEnabled(states[eItemCommand::kUse]);
    m_navigation->enableButton(kBack, m_history.canGoBack(placeExists()));
    m_navigation->enableButton(kForward, m_history.canGoForward(placeExists()));
    KorTreeCtrl* control = currentTree().control();
    KorTreeHandle parent = m_currentEntry ? control->getParentItem(m_currentEntry) : nullptr;
    m_navigation->enableButton(kUp, parent && parent != control->getRoot());
}

void KorDSMMainDialog::enableItemCommand(int index, bool enable) {
    m_itemCommands->enableButton(m_itemCommands->buttonId(index), enable);
    m_commandActions[static_cast<std::size_t>(index)]->setEnabled(enable);
}

void KorDSMMainDialog::onNavigation(int id) {
    if (id == kBack || id == kForward)
        historyStep(id == kForward);
    else
        goUp();
}

KorDSMSelectionHistory::Exists KorDSMMainDialog::placeExists() {
    return [this](const KorDSMPlace& place) { return place.exists(m_structure); };
}

// A place of another section brings that section up, with what was selected there last.
void KorDSMMainDialog::historyStep(bool forward) {
    finishCurrentPage();
    const bool recording = std::exchange(m_recording, false);
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
    m_recording = recording;
    updateCommandStates();
}

// An entry that the filter hides can only be shown without the filter.
void KorDSMMainDialog::selectEntry(KorTreeHandle entry) {
    KorTreeCtrl* control = currentTree().control();
    if (control->isHidden(entry))
        clearFilter();
    control->selectItem(entry);
    followSelection();
}

void KorDSMMainDialog::goUp() {
    KorTreeCtrl* control = currentTree().control();
    KorTreeHandle selected = control->selectedItem();
    KorTreeHandle parent = selected ? control->getParentItem(selected) : nullptr;
    if (parent)
        selectEntry(parent);
    else
        m_navigation->enableButton(kUp, false);
}

void KorDSMMainDialog::goToItem(KorDSMDatabaseItem& item) {
    if (!showPlaceOf(item))
        return;
    // What is not opened in turn has no entry: its nearest ancestor that has one is shown instead.
    for (KorDSMDatabaseItem* step = &item; step; step = step->m_pParent) {
        if (KorTreeHandle entry = currentTree().reveal(*step)) {
            return selectEntry(entry);
        }
    }
}
