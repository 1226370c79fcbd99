#include "session/KorDSMItemContent.h"

#include "model/KorDSMDependencies.h"
#include "model/KorDSMSectionLoader.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorDSNManager.h"
#include "session/KorDSMItemSource.h"

namespace {

template <typename AddIn>
bool loadAs(KorDSMDatabaseItem& item, void (*load)(AddIn*)) {
    auto* addIn = dynamic_cast<AddIn*>(&item);
    if (addIn)
        load(addIn);
    return addIn != nullptr;
}

} // namespace

bool KorDSMItemContent::load(KorDSMDatabaseItem& item) {
    if (item.m_bExpanded || !dynamic_cast<KorDsmAddInContentItem*>(&item))
        return false;
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    const KorDSNRequest request(source.dsn, source.index);
    loadAs(item, &KorDSMSectionLoader::expandAnnotationsAddInContent) ||
        loadAs(item, &KorDSMSectionLoader::expandDimRequestsAddInContent) ||
        loadAs(item, &KorDSMSectionLoader::expandQualifiersAddInContent);
    return true;
}

void KorDSMItemContent::loadChildren(KorDSMDatabaseItem& item) {
    if (item.m_bExpanded && item.m_Type != KorDSMDefines::kDetailStyle)
        return;
    if (load(item))
        return;
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    const KorDSNRequest request(source.dsn, source.index);
    // Items that were loaded with the section may have been edited through an equal item since.
    for (KorDSMDatabaseItem* child : item.children())
        KorDSMDependencies::refreshRecord(*child);
    KorDSMDependencies::createChildren(item);
}

bool KorDSMItemContent::canBeOpened(const KorDSMDatabaseItem& item, bool fullExpand) {
    if (!item.children().isEmpty())
        return true;
    if (dynamic_cast<const KorDsmAddInContentItem*>(&item))
        return !item.m_bExpanded;
    if (item.m_bExpanded || !KorDSMDependencies::canHaveDependents(item.m_Type))
        return false;
    const KorDSMDatabaseItem* parent = item.m_pParent;
    const bool isDependency = parent && parent->record() && !KorDSMDefines::isGroupType(parent->m_Type) &&
                              parent->m_Type != KorDSMDefines::kDetailStyle;
    return fullExpand || !isDependency;
}
