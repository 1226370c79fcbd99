#pragma once

#include "controls/KorImageList.h"
#include "controls/MemoryDlg.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMMessages.h"
#include "session/KorDSMCommandStates.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMReadProblems.h"
#include "session/KorDSMRecovery.h"
#include "session/KorDSMSelectionHistory.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/KorDSMPageRegistry.h"
#include "shell/KorDSMSectionTree.h"

#include <QDialog>
#include <QPointer>
#include <QWidgetList>

class KorButtonGroup;
class KorButtonGroupMenu;
class KorDSMUndoStrip;
class KorListCtrl;
class KorTabCtrl;
class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QPushButton;
class VELComboTree;

/// The editor's window: four section trees with their source combos at the left, the pages of the selected
/// item (or the list of its children) at the right, and the command strips. It lays out and wires; what the
/// editor does is decided in the session.
class KorDSMMainDialog : public QDialog, public KorMessageTarget {
    Q_OBJECT

public:
    /// The window takes part in nothing before it is set up.
    explicit KorDSMMainDialog(QWidget* parent);
    ~KorDSMMainDialog() override;

    /// Builds the window on its template and shows the section of the data structure. Returns 1.
    int OnInitDialog();
    bool isSetUp() const { return m_ready; }

    /// The window that shows the data structure, if any, lets go of it: whoever loads or frees its items
    /// calls this before. The window has it again when it is activated.
    static void releaseDataStructure();

    void onMessage(const KorMessage& message) override;

    KorDSMPageRegistry& pages() { return m_pages; }
    const KorDSMSelectionHistory& history() const { return m_history; }
    KorDSMSectionTree& currentTree() { return tree(m_structure.getSelectedSection()); }

    /// Makes a section current and shows it.
    void switchSection(KorDSMDefines::eViewSections section);
    /// Selects the item's entry in its section.
    void goToItem(KorDSMDatabaseItem& item);

    void accept() override;
    void reject() override;
    /// Closes the window and hands the data structure to the editor that was open before.
    void done(int result) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    using eViewSections = KorDSMDefines::eViewSections;
    /// An entry of a source combo: a database, an add-in, a category or a group.
    struct SourceEntry {
        KorString path;
        int image = -1;
        KorDSMDatabaseItem* node = nullptr;
        bool operator==(const SourceEntry&) const = default;
    };
    struct SectionSlot {
        VELComboTree* combo = nullptr;
        std::vector<SourceEntry> sources; // what the combo shows
        std::unique_ptr<KorDSMSectionTree> tree;
    };

    // Set-up
    void setUpImages();
    void setUpSections();
    void setUpStrips();
    void setUpStatus();
    void setUpButtons();
    void setUpTexts();
    void setUpTabOrder();
    void setUpKeys();
    void writeTiming(const char* label, qint64 milliseconds) const;

    // What the user does, and what comes from the event loop, while something is being filled, read, stored
    // or exchanged waits until that is done.
    template <typename Task>
    void whenFree(Task task) {
        KorDSMBusy::whenFree([window = QPointer<KorDSMMainDialog>(this), task] {
            if (window)
                task();
        });
    }
    template <typename... Args>
    auto waiting(void (KorDSMMainDialog::*handler)(Args...)) {
        return [this, handler](Args... args) { whenFree([=, this] { (this->*handler)(args...); }); };
    }

    // Turns: an item has one entry, so of several windows one at a time shows the data structure.
    void beginTurn();
    void letGo();
    void leave();
    void takeOver();

    // Leaving
    enum class eLeaving { kNotAsked, kKeep, kDrop, kGoOn };
    eLeaving askBeforeLeaving();
    /// Lets the page take what is being typed. Returns whether the window may be left: nothing that a field
    /// shows was refused or declined, or the user leaves without it.
    bool finishBeforeLeaving();
    /// Returns whether all is stored; says what is not.
    bool keepBeforeLeaving();
    /// Whether Esc may close the window: nothing is pending or being typed.
    bool mayEscape() const;

    // Recovery
    void offerRecovery();
    static void showReportsSoon();

    // Sections
    SectionSlot& slot(eViewSections section) { return m_slots[static_cast<std::size_t>(section)]; }
    KorDSMSectionTree& tree(eViewSections section) { return *slot(section).tree; }
    /// The tree that shows the entry; null for none.
    KorDSMSectionTree* treeOf(KorTreeHandle entry);
    void fillSourceCombo(eViewSections section);
    std::vector<SourceEntry> sourceEntries(eViewSections section);
    void itemsChanged();
    void postItemsChanged();
    KorString comboPath(eViewSections section, const KorDSMDatabaseItem* node) const;
    void showSection(bool restoreCombo);
    void showSectionAgain();
    void fillTree(eViewSections section);
    KorDsmAddInContentItem* currentSourceNode(eViewSections section);
    const KorDSMDatabaseItem* rememberedGroup(eViewSections section, KorDsmAddInContentItem& source) const;
    void onSourceChosen(eViewSections section, void* data);
    void showSource(eViewSections section, KorDSMDatabaseItem& node);
    bool showPlaceOf(KorDSMDatabaseItem& item);
    void rebuildTrees();
    void applyFilter();
    void goToFirstMatch();
    void refilter();
    bool clearFilter();
    void forgetFilter();
    void showWhatPassesTheFilter();
    void onOption(int index, bool checked);

    // Selection
    void onSelectionChanged(KorTreeHandle entry);
    void onRootSelected(KorTreeHandle root);
    void showStatus();
    void followSelection();
    void onEntryGone(KorTreeHandle entry);
    void showRightSide(KorDSMDatabaseItem& item);
    void showPages(KorDSMDefines::eItemType group, KorDSMDatabaseItem& item);
    void showList(KorDSMDatabaseItem* item);
    void rememberSelection(KorDSMDatabaseItem& item, KorTreeHandle entry);
    bool selectItemDatabase(const KorDSMDatabaseItem* item);
    void updateCommandStates();
    void enableItemCommand(int index, bool enable);
    SelectionFacts factsOf(KorDSMDatabaseItem& item);
    KorDSMSelectionHistory::Exists placeExists();
    void historyStep(bool forward);
    void goUp();
    void selectEntry(KorTreeHandle entry);
    /// The item of the current entry; null while the filter hides that.
    KorDSMDatabaseItem* currentItem() const {
        return m_hiddenByFilter ? nullptr : KorDSMSectionTree::itemOf(m_currentEntry);
    }

    // The list at the right
    void setUpList();
    void fillList(KorDSMDatabaseItem& item);
    std::vector<KorDSMDatabaseItem*> itemsSelectedInList() const;
    void selectInList(const std::vector<KorDSMDatabaseItem*>& items);
    void openRow(int row);
    void showListMenu(const QPoint& position);
    /// What commands act on: the rows selected in the list, or else the current entry.
    std::vector<KorDSMDatabaseItem*> subjects() const;
    /// The only one of them; null for none and for several.
    KorDSMDatabaseItem* subject() const;

    // Commands
    void onItemCommand(int id);
    void onNavigation(int id);
    void apply();
    void use();
    void exportStyle();
    void newItem();
    void copyItem();
    void renameItem();
    void deleteItems();
    bool wantsToDelete(const std::vector<KorDSMDatabaseItem*>& items);
    void importStyles();
    void undo(int steps);
    void redo(int steps);
    void followChanges(const std::vector<KorDSMRowChange>& changes);
    void followStep(const std::vector<KorDSMRowChange>& changes);
    void showContextMenu(KorTreeHandle entry, const QPoint& position);
    void addItemCommands(QMenu& menu);
    void addViewCommands(QMenu& menu, KorDSMDatabaseItem& item);
    void addView(KorDSMDatabaseItem& item);
    void addCompactCommand(QMenu& menu, const KorDSMDatabaseItem& item);
    void compact(SourceId id);
    void changeViews(KorDSMDatabaseItem& item, const std::vector<KorDSMRowChange>& changes, int place);
    void dropEntry(KorTreeHandle from, KorTreeHandle to);
    void showNewItems(const std::vector<KorDSMDatabaseItem*>& items);
    void showUsers(const std::vector<KorDSMUsage>& users);
    void listUsers(const KorDSMDatabaseItem& item);
    void refuse(const KorString& reason);
    bool refusesToWrite(const KorDSMDatabaseItem& item);
    void sendNotice(const KorDSMItemCommands::ListNotice& notice);
    void goToUsage(const KorDSMUsage& usage);
    void reloadPage();
    void reloadSections();
    /// Takes over what other programs changed, and asks about conflicts. Returns whether there were none.
    bool readOutsideChanges();
    std::vector<OutsideChange> followOutsideChanges(const KorDSMCommit::Read& read);
    void finishCurrentPage();
    void reportCommit(const KorDSMCommit::Outcome& outcome);
    void setModified(bool modified);
    void markPages();
    void lookAround();
    void showReports();

    // Progress
    void showProgress(const DsmProgress& progress);

    KorDSMDataStructure& m_structure;
    KorImageListPtr m_images;
    std::array<SectionSlot, KorDSMDefines::kNumberOfSections> m_slots;
    MemoryDlg m_memory{"DlgDetailStylesNew2"};
    KorDSMPageRegistry m_pages;
    KorDSMSelectionHistory m_history;
    KorDSMItemSource m_itemSource;

    KorButtonGroup* m_itemCommands = nullptr;
    KorButtonGroup* m_navigation = nullptr;
    KorDSMUndoStrip* m_undoStrip = nullptr;
    KorButtonGroupMenu* m_sections = nullptr;
    KorTabCtrl* m_tabs = nullptr;
    KorListCtrl* m_list = nullptr;
    QLineEdit* m_filter = nullptr;
    QLabel* m_status = nullptr;
    QLabel* m_readOnly = nullptr;
    QLabel* m_progressText = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_apply = nullptr;
    QPushButton* m_use = nullptr;
    QWidgetList m_tabOrder;

    KorTreeHandle m_currentEntry = nullptr;
    KorTreeHandle m_listedEntry = nullptr;  // whose children the list at the right shows
    std::vector<QAction*> m_commandActions; // one per item command, in the strip's order
    bool m_recording = true;
    bool m_handleSelection = true;
    bool m_hiddenByFilter = false; // the current entry, and so what belongs to it at the right
    bool m_followingItems = false;
    bool m_itemsChangedPosted = false;
    bool m_ready = false;
    KorDSMRecovery m_recovery;
    KorDSMReadProblems m_readProblems;
};
