#pragma once

#include "session/KorDSMSelectionHistory.h"
#include "shell/NameFilter.h"
#include "shell/TreeSelection.h"

class KorButtonGroup;

/// The ways to a place: sections, sources and items by name or link, back and forward through what was
/// selected, and up.
class Navigation : public QObject {
    Q_OBJECT

public:
    /// Fills `strip` with the buttons back, forward and up. All must outlive the object.
    Navigation(KorDSMDataStructure& structure, SectionViews& sections, NameFilter& filter,
               TreeSelection& selection, RightSide& rightSide, KorButtonGroup& strip);

    const KorDSMSelectionHistory& history() const { return m_history; }
    /// See `KorDSMPlace::renumber`.
    void renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys) {
        m_history.renumber(source, newKeys);
    }

    /// Shows the current section with what was selected there last; `restoreCombo` brings its combo in line.
    void showSection(bool restoreCombo);
    /// The same after its tree was emptied. The user selects nothing by that.
    void showSectionAgain();
    /// Makes a section current and shows it.
    void switchSection(KorDSMDefines::eViewSections section);
    /// Fills the trees anew, as the options say.
    void rebuildTrees();
    /// Brings up the section of the item, and its source where the section shows one at a time. Returns false
    /// for an item outside any section.
    bool showPlaceOf(KorDSMDatabaseItem& item);

    /// Goes to an item of the list, unless something is busy.
    void open(KorDSMDatabaseItem* item);
    /// Selects the item's entry in its section.
    void goToItem(KorDSMDatabaseItem& item);
    /// The same where the user does not go there: it is no step of the history.
    void returnToItem(KorDSMDatabaseItem& item);
    /// Goes to what shows the row: a child of the item that is shown, or the record where it is filed or
    /// used. Nothing happens where there is no such item.
    void goToRecord(SourceId source, RowRef row);
    /// Goes to the page that shows the cell, below the record `within` where that is one, and gives the field
    /// the focus; column 0 stands for the row alone. What a row has no field for leads to its page. Returns
    /// whether a field has the focus.
    bool goToField(SourceId source, RowRef row, int column, RowRef within = {});
    /// Selects an entry of the tree that is shown, without the filter where that hides it.
    void selectEntry(KorTreeHandle entry);
    /// Selects a child of the entry by its place.
    void goToChild(KorTreeHandle entry, int place);
    /// Gives the focus to the tree that is shown.
    void focusTree();
    /// From the filter the keys lead to the first entry that was found.
    void goToFirstMatch();

    void updateStates();

Q_SIGNALS:
    void sectionSwitched(KorDSMDefines::eViewSections section);

private:
    void onButton(int id);
    void step(bool forward);
    void goUp();
    void onSourceWanted(KorDSMDefines::eViewSections section, KorDSMDatabaseItem* node);
    void showSource(KorDSMDefines::eViewSections section, KorDSMDatabaseItem& node);
    KorDSMSelectionHistory::Exists placeExists();

    KorDSMDataStructure& m_structure;
    SectionViews& m_sections;
    NameFilter& m_filter;
    TreeSelection& m_selection;
    RightSide& m_rightSide;
    KorButtonGroup& m_strip;
    KorDSMSelectionHistory m_history;
    bool m_isRecording = true;
};
