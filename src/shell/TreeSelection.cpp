#include "shell/TreeSelection.h"

#include "model/KorDSMMessages.h"
#include "session/KorDSMItemPath.h"
#include "shell/WhenFree.h"

#include <QApplication>

#include <utility>

using namespace KorDSMDefines;

TreeSelection::TreeSelection(KorDSMDataStructure& structure, SectionViews& sections, RightSide& rightSide)
    : m_structure(structure), m_sections(sections), m_rightSide(rightSide) {
    connect(&m_sections, &SectionViews::selectionMoved, this, waiting(this, &TreeSelection::follow));
    connect(&m_sections, &SectionViews::entryGone, this, &TreeSelection::forgetEntry);
    connect(&m_rightSide.list(), &ItemList::selectionChanged, this, &TreeSelection::subjectsChanged);
    // Who works in the tree means its entry.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, const QWidget* now) {
        if (now && now == &m_sections.currentControl())
            m_rightSide.list().selectNothing();
    });
}

std::vector<KorDSMDatabaseItem*> TreeSelection::subjects() const {
    std::vector<KorDSMDatabaseItem*> items = m_rightSide.list().selectedItems();
    KorDSMDatabaseItem* current = item();
    // What is hidden leaves its database, which is what commands need that no record is needed for.
    if (KorDSMDatabaseItem* hidden = m_isHidden ? KorDSMSectionTree::itemOf(m_entry) : nullptr) {
        current = KorDSMItemPath::addInOf(*hidden);
        if (current && current->parent() && current->parent()->children().length() == 1)
            current = current->parent();
    }
    if (items.empty() && current)
        items.push_back(current);
    return items;
}

KorDSMDatabaseItem* TreeSelection::subject() const {
    const std::vector<KorDSMDatabaseItem*> items = subjects();
    return items.size() == 1 ? items.front() : nullptr;
}

// Of what is not opened yet only the tree knows that it can be.
std::vector<SelectionFacts> TreeSelection::facts() const {
    const KorTreeCtrl& control = m_sections.currentControl();
    std::vector<SelectionFacts> facts;
    for (KorDSMDatabaseItem* item : subjects()) {
        KorTreeHandle entry = item->entry();
        facts.push_back(selectionFactsOf(
            *item, entry && (control.childCount(entry) > 0 || control.isPlaceholder(entry))));
    }
    return facts;
}

bool TreeSelection::selectDatabase(const KorDSMDatabaseItem* item) {
    if (!m_source.select(item))
        return false;
    const eViewSections section = m_structure.getSelectedSection();
    m_structure.setTargetDatabase(section, m_source.selected().dsn);
    m_structure.setTargetAddIn(section, m_source.selected().index);
    return true;
}

void TreeSelection::take(KorTreeHandle entry) {
    KorTreeCtrl& control = m_sections.currentControl();
    if (!entry || entry == control.getRoot())
        return takeRoot(entry);
    // The page shown stores what was typed while its own source is still current.
    m_rightSide.leavePage();
    m_entry = entry;
    m_isHidden = false;
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(entry);
    selectDatabase(item);
    if (!item) {
        m_rightSide.showList(nullptr);
    } else {
        Q_EMIT entered(item);
        m_rightSide.show(*item);
        remember(*item);
    }
    Q_EMIT changed();
    DsmSelectionChanged message;
    message.entry = entry;
    KorDSMMainWindow::postMessage(message);
}

// What is shown at the right stays there, but commands have nothing to do with it.
void TreeSelection::takeRoot(KorTreeHandle root) {
    m_entry = root;
    m_isHidden = false;
    if (!root || m_rightSide.isBlank())
        m_rightSide.showList(KorDSMSectionTree::itemOf(root));
    Q_EMIT changed();
}

void TreeSelection::sectionShown(KorTreeHandle selected) {
    if (selected && selected != m_sections.currentControl().getRoot()) {
        if (selected != m_entry)
            take(selected);
        return;
    }
    // What is shown at the right may be of another section, and must not be edited in this one's database.
    m_rightSide.showList(KorDSMSectionTree::itemOf(selected));
    takeRoot(selected);
}

void TreeSelection::follow() {
    const KorTreeCtrl& control = m_sections.currentControl();
    KorTreeHandle selected = control.selectedItem();
    const bool isOnlyHidden = !selected && m_entry && control.isHidden(m_entry);
    if (selected != m_entry && !isOnlyHidden)
        take(selected);
}

void TreeSelection::followFilter() {
    KorTreeCtrl& control = m_sections.currentControl();
    const bool hides = m_entry && control.isHidden(m_entry);
    if (m_entry && !hides && control.selectedItem() != m_entry) {
        const SectionViews::Quiet quiet(m_sections);
        control.selectItem(m_entry);
    }
    // Nobody edits what the tree does not show.
    if (hides == std::exchange(m_isHidden, hides))
        return;
    if (hides) {
        m_rightSide.letGo();
        m_rightSide.showList(nullptr);
    } else {
        showAgain();
    }
}

void TreeSelection::showAgain() {
    if (KorDSMDatabaseItem* shown = item())
        m_rightSide.show(*shown);
}

void TreeSelection::allowDragOf(KorTreeHandle entry) {
    if (!entry || entry != m_entry)
        return;
    KorTreeCtrl& control = m_sections.currentControl();
    const KorDSMDatabaseItem* above = KorDSMSectionTree::itemOf(control.getParentItem(entry));
    control.setDragAllowed(above && isGroupType(above->type()));
}

void TreeSelection::remember(KorDSMDatabaseItem& item) {
    const eViewSections section = m_structure.getSelectedSection();
    KorDSMDatabaseItem* group = KorDSMItemPath::groupOf(item);
    m_structure.setSelectedCategory(section, group ? group->recordKey() : 0);
    m_structure.setSelectedItem(section, m_sections.currentControl().GetItemIndex(m_entry));
    m_structure.getSelectedPath(section) = KorDSMItemPath::textsTo(item);
    const KorDSMDatabaseItem* shown = group ? group : KorDSMItemPath::addInOf(item);
    if (!shown || !m_structure.getShowFullTree() || m_sections.combo(section).choose(*shown))
        return;
    // The tree may have loaded the source since the combo was filled.
    m_sections.combo(section).fill();
    m_sections.combo(section).choose(*shown);
}

void TreeSelection::forgetEntry(KorTreeHandle entry) {
    if (m_entry == entry)
        forget();
    m_rightSide.forget(entry);
}

void TreeSelection::forget() {
    m_entry = nullptr;
    m_isHidden = false;
}

void TreeSelection::release() {
    forget();
    m_source.release();
}
