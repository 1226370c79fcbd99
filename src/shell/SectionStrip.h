#pragma once

#include "model/KorDSMDataStructure.h"

#include <QObject>

class KorButtonGroupMenu;

/// The strip at the edge: a button for each section, and the menu of the view options.
class SectionStrip : public QObject {
    Q_OBJECT

public:
    /// Fills `strip`. Both must outlive the object.
    SectionStrip(KorButtonGroupMenu& strip, KorDSMDataStructure& structure);

    /// Shows the section as the current one.
    void check(KorDSMDefines::eViewSections section);
    /// Shows the options as they are.
    void showOptions();
    /// Shows one of them, by its place in the menu.
    void setCheck(int option, bool checked);

Q_SIGNALS:
    void sectionWanted(KorDSMDefines::eViewSections section);
    /// The user wants other entries in the trees.
    void treesChanged();

private:
    void onToggled(int index, bool checked);

    KorButtonGroupMenu& m_strip;
    KorDSMDataStructure& m_structure;
};
