#include "shell/SectionViews.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "model/KorDSMFamilies.h"
#include "session/KorDSMItemPath.h"

#include <QBoxLayout>
#include <QLineEdit>

using namespace KorDSMDefines;

namespace {

constexpr int kFirstCombo = 1200;
constexpr int kFilter = 1210;

} // namespace

SectionViews::SectionViews(QWidget& window, KorDSMDataStructure& structure, KorImageListPtr images)
    : m_structure(structure), m_images(std::move(images)) {
    const std::span<const KorDSMSection> sections = KorDSMFamilies::sections();
    auto* firstTree = KorControls::find<KorTreeCtrl>(&window, sections.front().tree);
    auto* firstCombo = KorControls::find<VELComboTree>(&window, kFirstCombo);
    auto* column = static_cast<QBoxLayout*>(firstTree->parentWidget()->layout());
    setUp(sections.front().section, firstTree, firstCombo);
    // The template has the controls of the first section; the others are made like them.
    for (const KorDSMSection& section : sections.subspan(1)) {
        auto* control = new KorTreeCtrl(firstTree->parentWidget());
        auto* combo = new VELComboTree(firstCombo->parentWidget());
        KorControls::setId(control, section.tree);
        column->insertWidget(column->indexOf(KorControls::find<QLineEdit>(&window, kFilter)), combo);
        column->addWidget(control, 1);
        setUp(section.section, control, combo);
    }
}

SectionViews::~SectionViews() {
    blockSignals(true);
}

void SectionViews::setUp(eViewSections section, KorTreeCtrl* control, VELComboTree* combo) {
    control->setImageList(m_images);
    control->setAccessibleName(toQt(m_structure.getSection(section)->getDisplayName()));
    KorControls::setName(combo, control->accessibleName());
    slot(section).combo = std::make_unique<SourceCombo>(*combo, m_structure, section, m_images);
    slot(section).tree =
        std::make_unique<KorDSMSectionTree>(control, m_structure, *m_structure.getSection(section),
                                            [this](KorTreeHandle entry) { Q_EMIT entryGone(entry); });
    connect(slot(section).combo.get(), &SourceCombo::chosen, this,
            [this, section](KorDSMDatabaseItem* node) { Q_EMIT sourceWanted(section, node); });
    connect(control, &KorTreeCtrl::contextMenuRequested, this, &SectionViews::menuWanted);
    connect(control, &KorTreeCtrl::dropRequested, this, &SectionViews::dropWanted);
    // Where a record cannot go is said when it is dropped there.
    connect(control, &KorTreeCtrl::dropQuery, this, [](KorTreeHandle from, KorTreeHandle to, bool* accept) {
        const KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(from);
        *accept = item && item->record() && KorDSMSectionTree::itemOf(to);
    });
    // A tree that is not shown selects on its own when what it had selected goes.
    connect(control, &KorTreeCtrl::entrySelected, this, [this, control] {
        if (!m_isQuiet && control == &currentControl())
            Q_EMIT selectionMoved();
    });
}

KorDSMSectionTree* SectionViews::treeOf(KorTreeHandle entry) {
    KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(entry);
    const KorDsmSectionItem* section = item ? KorDSMItemPath::sectionOf(*item) : nullptr;
    return section ? &tree(section->section()) : nullptr;
}

void SectionViews::show(KorDsmAddInContentItem& source) {
    const eViewSections section = m_structure.getSelectedSection();
    const bool full = m_structure.getShowFullTree();
    {
        const Quiet quiet(*this);
        if (tree(section).isEmpty()) {
            const bool loads = !source.isExpanded();
            if (full)
                tree(section).buildFullTree();
            else
                tree(section).fillFromSource(source);
            if (loads && source.isExpanded())
                combo(section).fill();
        }
        selectRemembered(section);
    }
    for (int i = 0; i < kNumberOfSections; ++i) {
        const bool shown = i == section;
        Slot& other = m_slots[static_cast<std::size_t>(i)];
        other.tree->control()->setVisible(shown);
        other.combo->control().setVisible(shown);
        other.combo->control().setEnabled(shown && !full);
    }
    currentControl().setDragAllowed(full);
}

// Without a remembered place the section begins at its first database.
void SectionViews::selectRemembered(eViewSections section) {
    const bool full = m_structure.getShowFullTree();
    const KorArray<KorString> path = m_structure.getSelectedPath(section);
    KorTreeCtrl& control = *tree(section).control();
    if (!full)
        control.expand(control.getRoot());
    control.selectItem(path.isEmpty() ? control.getChildItem(control.getRoot())
                                      : tree(section).follow(path, full));
}

void SectionViews::fill(eViewSections section, KorDsmAddInContentItem& source) {
    const Quiet quiet(*this);
    tree(section).fillFromSource(source);
}

void SectionViews::fillCombos() {
    for (const eViewSections section : kLoadingOrder)
        combo(section).fill();
}

void SectionViews::clearTrees() {
    const Quiet quiet(*this);
    for (Slot& section : m_slots)
        section.tree->clear();
}

void SectionViews::clear() {
    const Quiet quiet(*this);
    for (Slot& section : m_slots) {
        section.tree->clear();
        section.combo->clear();
    }
}

void SectionViews::deleteEntry(KorTreeHandle entry) {
    if (KorDSMSectionTree* holder = treeOf(entry))
        holder->deleteEntry(entry);
}

void SectionViews::noteOpen(KorTreeHandle entry) {
    if (KorDSMSectionTree* holder = treeOf(entry))
        holder->noteOpen(entry);
}

void SectionViews::noteOpenAbove(KorTreeHandle entry) {
    if (KorDSMSectionTree* holder = treeOf(entry))
        holder->noteOpenAbove(entry);
}

void SectionViews::openNoted() {
    for (Slot& section : m_slots)
        section.tree->openNoted();
}

void SectionViews::namesChanged() {
    for (Slot& section : m_slots)
        section.tree->namesChanged();
}

QList<QWidget*> SectionViews::combos() const {
    QList<QWidget*> all;
    for (const Slot& section : m_slots)
        all << &section.combo->control();
    return all;
}

QList<QWidget*> SectionViews::controls() const {
    QList<QWidget*> all;
    for (const Slot& section : m_slots)
        all << section.tree->control();
    return all;
}
