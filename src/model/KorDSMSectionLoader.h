#pragma once

#include "model/KorDSMItemPlacing.h"
#include "model/items/KorDsmAddInContentItem.h"

class KorDSMDataStructure;
class KorDsmDetailStyleItem;
struct StructDetailStyle;

/// Fills the four sections of the data structure from the style databases when the editor opens, and an
/// add-in's content when the user opens it for the first time. It never opens a database itself: it selects
/// which source the data-access layer works on. Rows that cannot be read are left out.
class KorDSMSectionLoader {
public:
    /// Loads all sections where the structure's update status or the layer's reload flag asks for it.
    void loadDataStructure(KorDSMDataStructure& structure);

    /// Creates the view request children of a detail style from the current source.
    static void loadDetailStylesDependencies(KorDsmDetailStyleItem* style);
    /// Load the records of an add-in into its groups. The caller selects the add-in's source first.
    static void expandAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn);
    static void expandDimRequestsAddInContent(KorDsmDimRequestsAddInItem* addIn);
    static void expandQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn);

private:
    using CategoryItems = KorDSMItemPlacing::Filling<KorDsmDetailStyleCategoryItem>;

    void StartProgressBar();
    void loadSectionData(KorDSMDataStructure& structure, int section);
    KorDsmAddInContentItem* loadAddIn(int section, eIndex index, const KorString& name);
    void loadDetailStylesAddInContent(KorDsmDetailStylesAddInItem* addIn);
    void loadDetailStyle(const StructDetailStyle& style, std::int32_t categoryKey, CategoryItems& categories);
    void loadAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn);
    void loadDimRequestAddInContent(KorDsmDimRequestsAddInItem* addIn);
    void loadQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn);

    int m_Total = 0;
    int m_Done = 0;
};
