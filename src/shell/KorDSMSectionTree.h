#pragma once

#include "controls/KorTreeCtrl.h"
#include "model/KorDSMDataStructure.h"
#include "session/KorDSMNameSearch.h"
#include "session/KorDSMPlace.h"

#include <functional>

/// One section's tree: shows items as entries, makes the entries below one when it is opened, and ties
/// entries and items together.
class KorDSMSectionTree : public QObject {
    Q_OBJECT

public:
    /// `tree` is not owned. `entryGone` is told of every entry before it is deleted.
    KorDSMSectionTree(KorTreeCtrl* tree, KorDSMDataStructure& structure, KorDsmSectionItem& section,
                      std::function<void(KorTreeHandle)> entryGone);
    ~KorDSMSectionTree() override;

    KorTreeCtrl* control() const { return m_tree; }
    KorDsmSectionItem& section() const { return m_section; }
    bool isEmpty() const { return m_tree->getRoot() == nullptr; }

    /// Shows all databases, add-ins and groups of the section.
    void buildFullTree();
    /// Shows the content of one database or add-in.
    void fillFromSource(KorDsmAddInContentItem& source);
    void clear();

    /// Shows only items whose names contain `text`, in any case, with what is above them and below them,
    /// opened at the first matches; an empty text shows everything, opened as it was before and down to what
    /// is selected. Returns whether there is anything to show.
    bool setFilter(const KorString& text);
    /// Gathers the names beforehand, so that the first key of a filter does not wait for them.
    void prepareFilter();
    /// The entry of the first item whose name contains the text of the filter, or null.
    KorTreeHandle firstMatch();
    /// Items came, went or changed their names: the next filter looks at all of them anew.
    void namesChanged() { m_search.namesChanged(); }

    /// The entry's item data, or null.
    static KorDSMTreeItemData* dataOf(KorTreeHandle entry);
    static KorDSMDatabaseItem* itemOf(KorTreeHandle entry);
    /// The item's entry, opening what is above it; null when the tree does not show it.
    KorTreeHandle reveal(KorDSMDatabaseItem& item);

    /// The entry at the end of a path of texts, as far as it can be followed; opens entries on its way.
    KorTreeHandle follow(const KorArray<KorString>& path, bool fullTree);

    /// Makes the entries below an item anew; `make` makes the items, after the entries of those from before
    /// are gone.
    void fillAgain(KorDSMDatabaseItem& item, const std::function<void()>& make);

    /// Adds an entry for a new item at its place among its siblings.
    KorTreeHandle addEntry(KorDSMDatabaseItem& item);

    /// Remembers which entries are open at and below the entry, which is about to be closed or deleted while
    /// its item stays.
    void noteOpen(KorTreeHandle entry);
    /// The same also of the entry above it, which closes with the last one below it.
    void noteOpenAbove(KorTreeHandle entry);
    /// To be told of rows of a source that have other keys now, by their old ones.
    void renumberNoted(SourceId source, const std::map<RowRef, std::int32_t>& newKeys);
    /// Opens again what was noted, as far as it is still there.
    void openNoted();

    // What items ask of their entries.
    void deleteEntry(KorTreeHandle entry);
    void showPlaceholder(KorTreeHandle entry);
    void attach(KorTreeHandle entry, std::unique_ptr<KorDSMTreeItemData> data);
    void setText(KorTreeHandle entry, const KorString& text);

private:
    void onExpanding(KorTreeHandle entry);
    void note(KorTreeHandle entry);
    void insertChildren(KorDSMDatabaseItem& item, KorTreeHandle entry);
    void bind(KorDSMDatabaseItem& item, KorTreeHandle entry);
    void unbind(KorTreeHandle entry);
    void forgetBelow(KorTreeHandle entry);
    static KorTreeHandle entryOfChildren(const KorDSMDatabaseItem& item);
    bool canBeOpened(const KorDSMDatabaseItem& item) const;
    KorTreeItem entryFor(KorDSMDatabaseItem& item) const;
    void openFirst();
    std::vector<KorTreeHandle> openAboveSelection() const;
    KorTreeHandle childWithText(KorTreeHandle entry, const KorString& text) const;

    KorTreeCtrl* m_tree;
    KorDSMDataStructure& m_structure;
    KorDsmSectionItem& m_section;
    std::function<void(KorTreeHandle)> m_entryGone;
    KorDSMNameSearch m_search;
    std::vector<KorDSMPlace> m_noted; // of items whose entries were open
};
