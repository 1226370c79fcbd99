#include "session/KorDSMItemContent.h"

#include "model/KorDSMDependencies.h"
#include "model/KorDSMSectionLoader.h"
#include "operations/KorDSNManager.h"
#include "session/KorDSMItemSource.h"

bool KorDSMItemContent::load(KorDSMDatabaseItem& item) {
    auto* addIn = dynamic_cast<KorDsmAddInContentItem*>(&item);
    if (!addIn || addIn->isExpanded())
        return false;
    const SourceId source = KorDSMItemSource::sourceOf(addIn);
    const KorDSNRequest request(source.dsn, source.index);
    KorDSMSectionLoader::expandAddInContent(*addIn);
    return true;
}

void KorDSMItemContent::loadChildren(KorDSMDatabaseItem& item) {
    if (item.isExpanded() && !KorDSMFamilies::bringsChildren(item.type()))
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
    if (item.childCount() > 0)
        return true;
    if (dynamic_cast<const KorDsmAddInContentItem*>(&item))
        return !item.isExpanded();
    if (item.isExpanded() || !KorDSMDependencies::canHaveDependents(item.type()))
        return false;
    const KorDSMDatabaseItem* parent = item.parent();
    const bool isDependency = parent && parent->record() && !KorDSMDefines::isGroupType(parent->type()) &&
                              !KorDSMFamilies::bringsChildren(parent->type());
    return fullExpand || !isDependency;
}
