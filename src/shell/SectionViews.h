#pragma once

#include "shell/KorDSMSectionTree.h"
#include "shell/SourceCombo.h"

#include <array>
#include <utility>

/// The four section trees with their source combos, of which one is shown.
class SectionViews : public QObject {
    Q_OBJECT

public:
    using eViewSections = KorDSMDefines::eViewSections;

    /// Puts the controls into the window's template; the window owns them and must outlive the object.
    SectionViews(QWidget& window, KorDSMDataStructure& structure, KorImageListPtr images);
    ~SectionViews() override;

    /// While one lives nobody is told of selections.
    class Quiet {
    public:
        explicit Quiet(SectionViews& views)
            : m_views(views), m_before(std::exchange(views.m_isQuiet, true)) {}
        ~Quiet() { m_views.m_isQuiet = m_before; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        SectionViews& m_views;
        bool m_before;
    };

    KorDSMSectionTree& tree(eViewSections section) { return *slot(section).tree; }
    SourceCombo& combo(eViewSections section) { return *slot(section).combo; }
    /// Those of the section that is shown.
    KorDSMSectionTree& currentTree() { return tree(m_structure.getSelectedSection()); }
    KorTreeCtrl& currentControl() { return *currentTree().control(); }
    /// The tree that shows the entry; null for none.
    KorDSMSectionTree* treeOf(KorTreeHandle entry);

    /// Shows the structure's section and hides the others. A tree that is empty is filled, with everything or
    /// with the source; the place that was selected last is selected again, without a word.
    void show(KorDsmAddInContentItem& source);
    /// Fills the section's tree with one source.
    void fill(eViewSections section, KorDsmAddInContentItem& source);
    void fillCombos();
    /// Empties the trees.
    void clearTrees();
    /// Empties trees and combos.
    void clear();
    void deleteEntry(KorTreeHandle entry);
    /// See `KorDSMSectionTree`.
    void noteOpen(KorTreeHandle entry);
    void noteOpenAbove(KorTreeHandle entry);
    void openNoted();
    /// The names of items may be others now.
    void namesChanged();

    /// In the order of the Tab key.
    QList<QWidget*> combos() const;
    QList<QWidget*> controls() const;

Q_SIGNALS:
    /// Something else is selected in the tree that is shown.
    void selectionMoved();
    /// Sent before the entry is deleted.
    void entryGone(KorTreeHandle entry);
    /// The user chose a source for the section.
    void sourceWanted(KorDSMDefines::eViewSections section, KorDSMDatabaseItem* node);
    /// `entry` is null on empty ground.
    void menuWanted(KorTreeHandle entry, const QPoint& position);
    /// The user dropped an entry of a record on another one.
    void dropWanted(KorTreeHandle from, KorTreeHandle to);

private:
    struct Slot {
        std::unique_ptr<SourceCombo> combo;
        std::unique_ptr<KorDSMSectionTree> tree;
    };

    Slot& slot(eViewSections section) { return m_slots[static_cast<std::size_t>(section)]; }
    void setUp(eViewSections section, KorTreeCtrl* control, VELComboTree* combo);
    void selectRemembered(eViewSections section);

    KorDSMDataStructure& m_structure;
    KorImageListPtr m_images;
    std::array<Slot, KorDSMDefines::kNumberOfSections> m_slots;
    bool m_isQuiet = false;
};
