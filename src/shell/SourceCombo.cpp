#include "shell/SourceCombo.h"

#include "controls/VELComboTree.h"
#include "shell/GlobalIcons.h"

SourceCombo::SourceCombo(VELComboTree& control, KorDSMDataStructure& structure,
                         KorDSMDefines::eViewSections section, KorImageListPtr images)
    : m_control(control), m_structure(structure), m_section(section), m_images(std::move(images)) {
    m_control.setImageList(m_images);
    m_control.setDisplayFullPath(true);
    connect(&m_control, &VELComboTree::entrySelected, this, [this](KorTreeHandle entry) {
        if (auto* node = m_control.getEntryData(entry).as<KorDSMDatabaseItem>())
            Q_EMIT chosen(node);
    });
}

// An add-in brings its picture when it is listed for the first time.
void SourceCombo::addPictures() {
    for (KorDSMDatabaseItem* database : section().children()) {
        if (database->children().length() < 2)
            continue;
        for (KorDSMDatabaseItem* child : database->children()) {
            auto* addIn = static_cast<KorDsmAddInContentItem*>(child);
            if (addIn->imageIndex() < 0 && !addIn->image().isEmpty())
                addIn->setImageIndex(m_images->append(broughtIcon(addIn->image())));
        }
    }
}

void SourceCombo::fill() {
    addPictures();
    std::vector<KorDSMSources::Entry> entries =
        KorDSMSources::entriesOf(section(), VELComboTree::GetPathDelimiter());
    if (entries == m_entries)
        return;
    const KorString chosenPath = m_control.getSelectedPath();
    const auto* chosenNode = m_control.getEntryData(m_control.selectedEntry()).as<KorDSMDatabaseItem>();
    m_control.deleteAll();
    const KorDSMSources::Entry* same = nullptr;
    for (const KorDSMSources::Entry& entry : entries) {
        m_control.addEntry(entry.path, entry.image, entry.node);
        if (chosenNode && entry.node == chosenNode)
            same = &entry;
    }
    if (!chosenPath.isEmpty() && !m_control.selectPath(same ? same->path : chosenPath))
        if (const KorDsmAddInContentItem* source = KorDSMSources::current(m_structure, m_section))
            choose(*source);
    m_entries = std::move(entries);
}

void SourceCombo::clear() {
    m_control.deleteAll();
    m_entries.clear();
}

bool SourceCombo::choose(const KorDSMDatabaseItem& node) {
    return m_control.selectPath(KorDSMSources::pathOf(section(), &node, VELComboTree::GetPathDelimiter()));
}
