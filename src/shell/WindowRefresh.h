#pragma once

#include "session/KorDSMCommit.h"
#include "session/KorDSMStepPlaces.h"
#include "session/KorDSMUndo.h"
#include "shell/Navigation.h"

class ApplyState;

/// Brings the parts of the window in line with items that came, went, moved or have other names. Every change
/// of items ends here, whoever made it, so that no part shows or judges what was before.
class WindowRefresh : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object.
    WindowRefresh(KorDSMDataStructure& structure, SectionViews& sections, NameFilter& filter,
                  TreeSelection& selection, Navigation& navigation, ApplyState& applyState,
                  RightSide& rightSide);

    void itemsChanged();
    /// The same from the event loop, where items are still in the middle of their change.
    void itemsChangedSoon();
    /// Shows items that are in the structure and have no entries yet, and selects the first one. A record
    /// that is shown in two sections comes in both.
    void showNew(const std::vector<KorDSMDatabaseItem*>& items);
    void removeEntry(KorTreeHandle entry) { m_sections.deleteEntry(entry); }
    /// Removes the entries of items that are no longer in the structure.
    void removeEntries(const std::vector<std::unique_ptr<KorDSMDatabaseItem>>& items);

    /// To be told of each write: undo and redo lead back to where the user was then.
    void written() { m_places.note(m_selection.item(), m_rightSide.shownPage()); }
    /// Takes back, or brings again, so many steps, and shows the last of them where it is not shown already.
    void step(int steps, std::vector<KorDSMRowChange> (*takeStep)());
    /// Brings items, trees and the page shown in line with rows that are different now.
    void follow(const std::vector<KorDSMRowChange>& changes);
    /// The same after sources were read again, which brought `read`.
    void follow(const std::vector<KorDSMRowChange>& changes, const std::vector<OutsideChange>& read);
    /// Loads all sections anew and shows the place that was shown. `read` is what reading sources again
    /// brought, where that is the reason.
    void reload(const std::vector<OutsideChange>& read = {});

Q_SIGNALS:
    /// What is shown is in line with other rows now.
    void followed();

private:
    void goToChanged(const std::vector<KorDSMRowChange>& changes, int step);
    void addEntries(const std::vector<KorDSMDatabaseItem*>& items);

    KorDSMDataStructure& m_structure;
    SectionViews& m_sections;
    NameFilter& m_filter;
    TreeSelection& m_selection;
    Navigation& m_navigation;
    ApplyState& m_applyState;
    RightSide& m_rightSide;
    KorDSMStepPlaces m_places;
    bool m_isFollowing = false;
    bool m_isPosted = false;
};
