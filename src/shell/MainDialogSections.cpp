#include "base/KorAssert.h"
#include "controls/KorButtonGroup.h"
#include "controls/KorButtonGroupMenu.h"
#include "controls/KorListCtrl.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "controls/VELComboTree.h"
#include "services/KordoBitmaps.h"
#include "services/Prompts.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMValueText.h"
#include "shell/KorDSMMainDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include <utility>

// The sections of the main dialog: source combos, trees, view options.

using namespace KorDSMDefines;

namespace {

constexpr int kNothingFound = 411; // "No name contains "%s""

} // namespace

std::vector<KorDSMMainDialog::SourceEntry> KorDSMMainDialog::sourceEntries(eViewSections section) {
    std::vector<SourceEntry> entries;
    const auto add = [&entries](const KorString& path, int image, KorDSMDatabaseItem* node) {
        entries.push_back({path, image, node});
    };
    const auto addGroups = [&add](KorDSMDatabaseItem& addIn, const KorString& parentPath) {
        for (KorDSMDatabaseItem* group : addIn.children())
            add(KorString::format("%s%s%s",
                                  {parentPath, VELComboTree::GetPathDelimiter(), group->getDisplayName()}),
                group->m_IconIndex, group);
    };
    KorDsmSectionItem& node = *m_structure.getSection(section);
    for (KorDSMDatabaseItem* database : node.children()) {
        const KorString path = Prompts::ups(database == node.children()[0] ? 21021 : 21022);
        add(path, database->m_IconIndex, database);
        if (database->children().length() < 2) {
            if (!database->children().isEmpty())
                addGroups(*database->children()[0], path);
            continue;
        }
        for (KorDSMDatabaseItem* child : database->children()) {
            auto* addIn = static_cast<KorDsmAddInContentItem*>(child);
            if (addIn->m_ImageIndex < 0 && !addIn->m_Image.isEmpty())
                addIn->m_ImageIndex = m_images->append(KorPictures::fromFile(
                    QString::fromStdString(KordoBitmaps::pictureFile(addIn->m_Image).string())));
            const KorString addInPath =
                KorString::format("%s%s%s", {path, VELComboTree::GetPathDelimiter(), addIn->m_Name});
            add(addInPath, addIn->m_ImageIndex >= 0 ? addIn->m_ImageIndex : addIn->m_IconIndex, addIn);
            addGroups(*addIn, addInPath);
        }
    }
    return entries;
}

// Filled anew only where it would be different; what was chosen stays chosen while it is there.
void KorDSMMainDialog::fillSourceCombo(eViewSections section) {
    std::vector<SourceEntry> entries = sourceEntries(section);
    SectionSlot& shown = slot(section);
    if (entries == shown.sources)
        return;
    VELComboTree& combo = *shown.combo;
    const KorString chosenPath = combo.getSelectedPath();
    const void* chosen = combo.getEntryData(combo.selectedEntry());
    combo.deleteAll();
    const SourceEntry* same = nullptr;
    for (const SourceEntry& entry : entries) {
        combo.addEntry(entry.path, entry.image, entry.node);
        if (chosen && entry.node == chosen)
            same = &entry;
    }
    if (!chosenPath.isEmpty() && !combo.selectPath(same ? same->path : chosenPath))
        if (const KorDsmAddInContentItem* source = currentSourceNode(section))
            combo.selectPath(comboPath(section, source));
    shown.sources = std::move(entries);
}

// Items came, went, moved or have other names. Every change of items ends here, whoever made it, so that no
// part of the window shows or judges what was before.
void KorDSMMainDialog::itemsChanged() {
    m_itemsChangedPosted = false;
    if (m_followingItems)
        return;
    followSelection();
    m_followingItems = true;
    for (const eViewSections section : kLoadingOrder)
        fillSourceCombo(section);
    refilter();
    if (!m_list->isHidden())
        showList(KorDSMSectionTree::itemOf(m_listedEntry));
    showStatus();
    m_followingItems = false;
}

// The same where items are still in the middle of their change.
void KorDSMMainDialog::postItemsChanged() {
    if (!m_ready || m_followingItems || m_itemsChangedPosted)
        return;
    m_itemsChangedPosted = true;
    QTimer::singleShot(0, this, [this] {
        whenFree([this] {
            if (m_itemsChangedPosted)
                itemsChanged();
        });
    });
}

// The combo's path of a database, add-in or group. A single content node has no level of its own.
KorString KorDSMMainDialog::comboPath(eViewSections section, const KorDSMDatabaseItem* node) const {
    const KorArray<KorDSMDatabaseItem*>& databases = m_structure.getSection(section)->children();
    KorString path;
    for (const KorDSMDatabaseItem* step = node; step && step->m_pParent; step = step->m_pParent) {
        const bool isOnlyContent = step->m_Type == kAddInContent && step->m_pParent->children().length() == 1;
        if (isOnlyContent)
            continue;
        const bool isDatabase = step->m_Type == kDatabaseContent;
        const KorString name =
            isDatabase ? Prompts::ups(step == databases[0] ? 21021 : 21022) : step->getDisplayName();
        path = path.isEmpty() ? name
                              : KorString::format("%s%s%s", {name, VELComboTree::GetPathDelimiter(), path});
    }
    return path;
}

KorDsmAddInContentItem* KorDSMMainDialog::currentSourceNode(eViewSections section) {
    KorDsmSectionItem& node = *m_structure.getSection(section);
    KorDsmAddInContentItem* source = KorDSMItemPath::findAddIn(
        node, {m_structure.getTargetDatabase(section), m_structure.getTargetAddIn(section)});
    // The remembered source may be gone, such as an add-in that is no longer installed.
    if (!source)
        source = KorDSMItemPath::findAddIn(node, SourceId::standard());
    // Nothing was loaded where the host opens the editor without loading.
    KorAssert::check(source != nullptr || node.children().isEmpty(), "pCurrentAddIn != NULL");
    return source;
}

// The category or group of the source in which something was selected last, or else the source itself.
const KorDSMDatabaseItem* KorDSMMainDialog::rememberedGroup(eViewSections section,
                                                            KorDsmAddInContentItem& source) const {
    const auto key = m_structure.getSelectedCategory(section);
    for (const KorDSMDatabaseItem* group : source.children())
        if (key != 0 && group->recordKey() == key)
            return group;
    return &source;
}

void KorDSMMainDialog::fillTree(eViewSections section) {
    if (m_structure.getShowFullTree())
        tree(section).buildFullTree();
    else
        tree(section).fillFromSource(*currentSourceNode(section));
}

void KorDSMMainDialog::showSection(bool restoreCombo) {
    const KorDSMBusy busy;
    const eViewSections section = m_structure.getSelectedSection();
    const bool full = m_structure.getShowFullTree();
    KorDsmAddInContentItem* source = currentSourceNode(section);
    if (!source)
        return;
    selectItemDatabase(source);
    m_handleSelection = false;
    if (tree(section).isEmpty()) {
        const bool loads = !source->m_bExpanded;
        fillTree(section);
        if (loads && source->m_bExpanded)
            fillSourceCombo(section);
    }
    const KorArray<KorString> path = m_structure.getSelectedPath(section);
    KorTreeCtrl* control = tree(section).control();
    if (!full)
        control->expand(control->getRoot());
    // Without a remembered place the section begins at its first database.
    if (!path.isEmpty())
        control->selectItem(tree(section).follow(path, full));
    else
        control->selectItem(control->getChildItem(control->getRoot()));
    m_handleSelection = true;

    for (int i = 0; i < kNumberOfSections; ++i) {
        const bool shown = i == section;
        SectionSlot& other = m_slots[static_cast<std::size_t>(i)];
        other.tree->control()->setVisible(shown);
        other.combo->setVisible(shown);
        other.combo->setEnabled(shown && !full);
    }
    control->setDragAllowed(full);
    if (restoreCombo)
        slot(section).combo->selectPath(comboPath(section, rememberedGroup(section, *source)));
    const KorTreeHandle selected = control->selectedItem();
    if (selected && selected != control->getRoot()) {
        if (selected != m_currentEntry)
            onSelectionChanged(selected);
        return;
    }
    // What is shown at the right may be of another section, and must not be edited in this one's database.
    showList(KorDSMSectionTree::itemOf(selected));
    onRootSelected(selected);
}

void KorDSMMainDialog::switchSection(eViewSections section) {
    finishCurrentPage();
    clearFilter();
    m_structure.setSelectedSection(section);
    m_sections->buttonGroup()->setCheckedButton(m_sections->buttonGroup()->buttonId(section));
    showSection(true);
}

void KorDSMMainDialog::onSourceChosen(eViewSections section, void* nodeData) {
    auto* node = static_cast<KorDSMDatabaseItem*>(nodeData);
    if (node && !m_structure.getShowFullTree() && !KorDSMBusy::isBusy())
        showSource(section, *node);
}

// The section comes up with the one source in which the database, add-in, category or group lies.
void KorDSMMainDialog::showSource(eViewSections section, KorDSMDatabaseItem& node) {
    KorDsmAddInContentItem* source = KorDSMItemPath::addInOf(node);
    if (!source)
        return;
    finishCurrentPage();
    clearFilter();
    selectItemDatabase(source);
    m_structure.getSelectedPath(section) = KorDSMItemPath::textsTo(node);
    const KorDSMDatabaseItem* group = KorDSMItemPath::groupOf(node);
    m_structure.setSelectedCategory(section, group ? group->recordKey() : 0);
    m_handleSelection = false;
    tree(section).fillFromSource(*source);
    m_handleSelection = true;
    showSection(false);
}

// Brings up the section of the item, and its source where the section shows one at a time. Returns false for
// an item outside any section.
bool KorDSMMainDialog::showPlaceOf(KorDSMDatabaseItem& item) {
    KorDsmSectionItem* home = KorDSMItemPath::sectionOf(item);
    if (!home)
        return false;
    const eViewSections section = home->m_Section;
    if (section != m_structure.getSelectedSection())
        switchSection(section);
    KorDsmAddInContentItem* source = KorDSMItemPath::addInOf(item);
    if (!source || m_structure.getShowFullTree() || source == currentSourceNode(section))
        return true;
    showSource(section, *source);
    slot(section).combo->selectPath(comboPath(section, source));
    return true;
}

// The current entry stays the current one where the filter hides it, and comes back with what belongs to it.
void KorDSMMainDialog::applyFilter() {
    m_handleSelection = false;
    KorTreeCtrl* control = currentTree().control();
    const KorString text = fromQt(m_filter->text());
    const bool found = currentTree().setFilter(text);
    if (m_currentEntry && !control->isHidden(m_currentEntry) && control->selectedItem() != m_currentEntry)
        control->selectItem(m_currentEntry);
    m_handleSelection = true;
    showWhatPassesTheFilter();
    showStatus();
    if (!found)
        m_status->setText(
            toQt(KorString::format(Prompts::dsm(kNothingFound), {KorDSMValueText::shortName(text)})));
}

// Nobody edits what the tree does not show.
void KorDSMMainDialog::showWhatPassesTheFilter() {
    const bool hides = m_currentEntry && currentTree().control()->isHidden(m_currentEntry);
    if (hides == std::exchange(m_hiddenByFilter, hides))
        return;
    if (hides) {
        m_tabs->finishCurrentPage();
        m_tabs->setCurrentContent(nullptr);
        showList(nullptr);
    } else if (KorDSMDatabaseItem* item = currentItem()) {
        showRightSide(*item);
    }
}

// From the filter the keys lead to the first entry that was found.
void KorDSMMainDialog::goToFirstMatch() {
    KorTreeHandle first = m_filter->text().isEmpty() ? nullptr : currentTree().firstMatch();
    if (!first)
        return;
    currentTree().control()->setFocus(Qt::ShortcutFocusReason);
    selectEntry(first);
}

// Items came or went while a filter may be set.
void KorDSMMainDialog::refilter() {
    for (SectionSlot& section : m_slots)
        section.tree->namesChanged();
    if (!m_filter->text().isEmpty())
        applyFilter();
}

bool KorDSMMainDialog::clearFilter() {
    if (m_filter->text().isEmpty())
        return false;
    m_filter->clear();
    applyFilter(); // at once, also where others have to wait
    return true;
}

// The same where the trees are emptied, so that nothing comes back.
void KorDSMMainDialog::forgetFilter() {
    m_hiddenByFilter = false;
    clearFilter();
}

void KorDSMMainDialog::rebuildTrees() {
    const KorDSMBusy busy;
    finishCurrentPage();
    forgetFilter();
    m_handleSelection = false;
    for (SectionSlot& section : m_slots)
        section.tree->clear();
    m_currentEntry = nullptr;
    m_handleSelection = true;
    showSectionAgain();
}

// After its tree was emptied. The user selects nothing by that.
void KorDSMMainDialog::showSectionAgain() {
    const bool recording = std::exchange(m_recording, false);
    showSection(true);
    m_recording = recording;
}

void KorDSMMainDialog::onOption(int index, bool checked) {
    switch (index) {
    case 0:
        m_structure.setShowFullTree(checked);
        rebuildTrees();
        break;
    case 1:
        m_structure.setUseFullExpand(checked);
        rebuildTrees();
        break;
    default:
        m_structure.setShowWarning(checked);
        break;
    }
}
