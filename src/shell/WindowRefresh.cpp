#include "shell/WindowRefresh.h"

#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemUpdate.h"
#include "session/KorDSMReload.h"
#include "shell/ApplyState.h"
#include "shell/KeptFocus.h"
#include "shell/TreeSight.h"
#include "shell/WhenFree.h"

#include <QTimer>

#include <algorithm>
#include <optional>

WindowRefresh::WindowRefresh(KorDSMDataStructure& structure, SectionViews& sections, NameFilter& filter,
                             TreeSelection& selection, Navigation& navigation, ApplyState& applyState,
                             RightSide& rightSide)
    : m_structure(structure), m_sections(sections), m_filter(filter), m_selection(selection),
      m_navigation(navigation), m_applyState(applyState), m_rightSide(rightSide) {}

void WindowRefresh::itemsChanged() {
    m_isPosted = false;
    if (m_isFollowing)
        return;
    m_sections.openNoted();
    m_selection.follow();
    m_isFollowing = true;
    m_sections.fillCombos();
    m_filter.refresh();
    m_rightSide.refreshList();
    m_selection.announce();
    m_isFollowing = false;
}

void WindowRefresh::itemsChangedSoon() {
    if (m_isFollowing || m_isPosted)
        return;
    m_isPosted = true;
    QTimer::singleShot(0, this, [this] {
        whenFree(this, [this] {
            if (m_isPosted)
                itemsChanged();
        });
    });
}

void WindowRefresh::showNew(const std::vector<KorDSMDatabaseItem*>& items) {
    if (items.empty() || !m_navigation.showPlaceOf(*items.front()))
        return;
    m_filter.clear();
    for (KorDSMDatabaseItem* item : items) {
        KorDSMSectionTree& holder = m_sections.tree(KorDSMItemPath::sectionOf(*item)->section());
        holder.reveal(*item);
        if (!item->entry())
            holder.addEntry(*item);
    }
    if (KorTreeHandle first = items.front()->entry())
        m_sections.currentControl().selectItem(first);
    itemsChanged();
}

void WindowRefresh::removeEntries(const std::vector<std::unique_ptr<KorDSMDatabaseItem>>& items) {
    for (const auto& item : items)
        m_sections.deleteEntry(item->entry());
}

void WindowRefresh::addEntries(const std::vector<KorDSMDatabaseItem*>& items) {
    for (KorDSMDatabaseItem* item : items)
        if (KorDsmSectionItem* section = KorDSMItemPath::sectionOf(*item))
            m_sections.tree(section->section()).addEntry(*item);
}

void WindowRefresh::step(int steps, std::vector<KorDSMRowChange> (*takeStep)()) {
    RightSide::finishEditing();
    for (; steps > 1; --steps)
        follow(takeStep());
    // The later one is that of the step, whichever way it goes.
    const int last = KorDSMUndo::lastStep();
    const std::vector<KorDSMRowChange> changes = takeStep();
    const int step = std::max(last, KorDSMUndo::lastStep());
    follow(changes);
    goToChanged(changes, step);
}

void WindowRefresh::goToChanged(const std::vector<KorDSMRowChange>& changes, int step) {
    KorDSMDatabaseItem* shown = m_selection.item();
    KorDSMDatabaseItem* changed = nullptr;
    KorDSMStepPlaces::Place place;
    {
        const KorDSMBusy busy;
        place = m_places.find(m_structure, step);
        // Values come back where they were changed: the record may hang in several places, or be edited where
        // it is used. What came or went is looked for.
        const bool areValues = std::ranges::all_of(changes, [](const KorDSMRowChange& change) {
            return change.kind == KorDSMRowChange::eKind::kChanged;
        });
        changed = areValues && place.item ? place.item
                                          : KorDSMUndo::itemOf(m_structure, changes, {place.item, shown});
    }
    if (changed && changed != shown)
        m_navigation.goToItem(*changed);
    if (changed && place.item && changed->type() == place.item->type() &&
        changed->recordKey() == place.item->recordKey())
        m_rightSide.showPage(place.page);
}

void WindowRefresh::follow(const std::vector<KorDSMRowChange>& changes) {
    if (changes.empty())
        return;
    const KeptFocus focus;
    const KorDSMBusy busy;
    KorDSMDatabaseItem* shown = m_selection.item();
    // The page lets go of an item that may be gone when the items have followed.
    m_rightSide.leavePage();
    KorDSMItemUpdate::Changes outcome = KorDSMItemUpdate::follow(m_structure, changes);
    // Filling lists with the names of a large database takes its time: only where names are different.
    constexpr int kNameColumn = 1;
    if (std::ranges::any_of(changes, [](const KorDSMRowChange& change) {
            return change.kind != KorDSMRowChange::eKind::kChanged || change.changedColumn(kNameColumn);
        }))
        m_rightSide.pages().requestInit();
    if (outcome.reload)
        return reload();
    removeEntries(outcome.removed);
    for (const KorDSMDatabaseItem* item : outcome.moved) {
        m_sections.noteOpen(item->entry());
        m_sections.deleteEntry(item->entry());
    }
    addEntries(outcome.added);
    addEntries(outcome.moved);
    if (std::ranges::find(outcome.moved, shown) != outcome.moved.end())
        if (KorTreeHandle entry = m_sections.currentTree().reveal(*shown))
            m_sections.currentControl().selectItem(entry);
    itemsChanged();
    m_rightSide.resume();
    m_rightSide.markPages();
    Q_EMIT followed();
}

void WindowRefresh::follow(const std::vector<KorDSMRowChange>& changes,
                           const std::vector<OutsideChange>& read) {
    const KorDSMDatabaseItem* shown = KorDSMSectionTree::itemOf(m_selection.entry());
    const auto before = shown ? std::optional(KorDSMPlace(*shown)) : std::nullopt;
    auto place = before;
    for (const OutsideChange& change : read) {
        m_navigation.renumber(change.source, change.newKeys);
        m_places.renumber(change.source, change.newKeys);
        if (place)
            place->renumber(change.source, change.newKeys);
    }
    follow(changes);
    // Under the key that it had another program's row stands now.
    if (KorDSMDatabaseItem* item = place != before ? place->find(m_structure) : nullptr;
        item && item != m_selection.item())
        m_navigation.returnToItem(*item);
}

void WindowRefresh::reload(const std::vector<OutsideChange>& read) {
    const KorDSMBusy busy;
    const bool wasModified = m_applyState.isModified();
    const KorDSMDatabaseItem* shown = KorDSMSectionTree::itemOf(m_selection.entry());
    auto place = shown ? std::optional(KorDSMPlace(*shown)) : std::nullopt;
    for (const OutsideChange& change : read) {
        m_navigation.renumber(change.source, change.newKeys);
        m_places.renumber(change.source, change.newKeys);
        if (place)
            place->renumber(change.source, change.newKeys);
    }
    m_selection.unhide();
    const KorString typed = read.empty() ? KorString() : m_filter.text(); // the user did not ask for this
    const int cursor = m_filter.cursor();
    m_filter.clear();
    TreeSight sight(m_sections.currentTree());
    sight.renumber(read);
    m_rightSide.letGo();
    m_sections.clear();
    m_selection.forget();
    reloadDataStructure(m_structure);
    m_sections.fillCombos();
    m_navigation.showSectionAgain();
    // The path of names does not lead to what was renamed meanwhile.
    if (KorDSMDatabaseItem* item = place ? place->find(m_structure) : nullptr;
        item && item != m_selection.item())
        m_navigation.returnToItem(*item);
    sight.giveBack();
    if (!typed.isEmpty())
        m_filter.putBack(typed, cursor);
    if (wasModified)
        m_applyState.setModified(true);
    else
        m_applyState.updateUndo();
    Q_EMIT followed();
}
