#pragma once

#include "model/items/KorDsmAddInContentItem.h"

class KorDSMDataStructure;
class KorDsmDetailStyleItem;

/// How far the loading of what is loaded at once has come: records of all sources.
struct SectionLoadProgress {
    int total = 0;
    int done = 0;

    /// Counts one more record and shows the percentage.
    void step();
};

/// Fills the four sections of the data structure from the style databases when the editor opens, and an
/// add-in's content when the user opens it for the first time. It never opens a database itself: it selects
/// which source the data-access layer works on. Rows that cannot be read are left out.
class KorDSMSectionLoader {
public:
    /// Loads all sections where the structure's update status or the layer's reload flag asks for it.
    void loadDataStructure(KorDSMDataStructure& structure);

    /// Loads the categories with their detail styles and those with their view requests.
    static void loadDetailStylesAddInContent(KorDsmAddInContentItem& addIn, SectionLoadProgress& progress);
    /// Creates the view request children of a detail style from the current source.
    static void loadDetailStylesDependencies(KorDsmDetailStyleItem* style);
    /// Loads the records of an add-in into its groups, where they are not loaded yet. The caller selects the
    /// add-in's source first.
    static void expandAddInContent(KorDsmAddInContentItem& addIn);

private:
    void StartProgressBar();
    void loadSectionData(KorDSMDataStructure& structure, const KorDSMSection& section);
    std::unique_ptr<KorDsmAddInContentItem> loadAddIn(const KorDSMSection& section, eIndex index,
                                                      const KorString& name);
    static void loadGroups(KorDsmAddInContentItem& addIn);

    SectionLoadProgress m_progress;
};
