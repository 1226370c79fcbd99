#pragma once

#include "session/KorDSMCommandStates.h"
#include "session/KorDSMItemSource.h"
#include "shell/RightSide.h"
#include "shell/SectionViews.h"

/// What is selected, and what a selection brings with it: the item's database becomes the current one, its
/// pages or its list come up, and the place is remembered for the next opening.
class TreeSelection : public QObject {
    Q_OBJECT

public:
    TreeSelection(KorDSMDataStructure& structure, SectionViews& sections, RightSide& rightSide);

    /// The current entry; null for none.
    KorTreeHandle entry() const { return m_entry; }
    /// The item of the current entry; null while the filter hides that.
    KorDSMDatabaseItem* item() const { return m_isHidden ? nullptr : KorDSMSectionTree::itemOf(m_entry); }
    /// What commands act on: the rows selected in the list, or else the current entry; its database or add-in
    /// while the filter hides it.
    std::vector<KorDSMDatabaseItem*> subjects() const;
    /// The only one of them; null for none and for several.
    KorDSMDatabaseItem* subject() const;
    /// The facts on which the states of commands depend, of each subject.
    std::vector<SelectionFacts> facts() const;

    /// Makes the item's database the current one. Returns false for an item without one.
    bool selectDatabase(const KorDSMDatabaseItem* item);
    /// Makes the entry the current one.
    void take(KorTreeHandle entry);
    /// The section came up with this entry selected.
    void sectionShown(KorTreeHandle selected);
    /// The entry that is selected in the tree becomes the current one; one that a filter hides stays it.
    void follow();
    /// The filter shows other entries: the current one stays it, and comes back with what belongs to it.
    void followFilter();
    /// Shows what belongs to the current item again.
    void showAgain();

    /// Lets the user drag the entry where it is the current one still and lies in a category or group, and no
    /// entry elsewhere.
    void allowDragOf(KorTreeHandle entry);
    /// Says again what is selected, for whoever shows it.
    void announce() { Q_EMIT changed(); }
    /// The filter is to hide nothing any more.
    void unhide() { m_isHidden = false; }
    /// The trees were emptied.
    void forget();
    /// Another window has the items now.
    void release();

Q_SIGNALS:
    /// An item became the current one.
    void entered(KorDSMDatabaseItem* item);
    /// Something else is current, or may be done with it.
    void changed();
    /// Other rows are selected in the list.
    void subjectsChanged();

private:
    void takeRoot(KorTreeHandle root);
    void remember(KorDSMDatabaseItem& item);
    void forgetEntry(KorTreeHandle entry);

    KorDSMDataStructure& m_structure;
    SectionViews& m_sections;
    RightSide& m_rightSide;
    KorDSMItemSource m_source;
    KorTreeHandle m_entry = nullptr;
    bool m_isHidden = false; // by the filter: the current entry, and so what belongs to it at the right
};
