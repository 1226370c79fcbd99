#pragma once

#include "controls/KorImageList.h"
#include "session/KorDSMSources.h"

#include <QObject>

class VELComboTree;

/// The combo of a section in which the user chooses a database, an add-in, a category or a group.
class SourceCombo : public QObject {
    Q_OBJECT

public:
    /// `control` is not owned and must outlive the object. Pictures of add-ins are added to `images`.
    SourceCombo(VELComboTree& control, KorDSMDataStructure& structure, KorDSMDefines::eViewSections section,
                KorImageListPtr images);

    VELComboTree& control() const { return m_control; }

    /// Brings the entries in line with the items, where they are different; what was chosen stays chosen
    /// while it is there.
    void fill();
    void clear();
    /// Shows the node as chosen. Returns false, and shows none, where it has no entry.
    bool choose(const KorDSMDatabaseItem& node);

Q_SIGNALS:
    /// The user chose this.
    void chosen(KorDSMDatabaseItem* node);

private:
    KorDsmSectionItem& section() const { return *m_structure.getSection(m_section); }
    void addPictures();

    VELComboTree& m_control;
    KorDSMDataStructure& m_structure;
    KorDSMDefines::eViewSections m_section;
    KorImageListPtr m_images;
    std::vector<KorDSMSources::Entry> m_entries; // what the combo shows
};
