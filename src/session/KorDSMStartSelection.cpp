#include "session/KorDSMStartSelection.h"

#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMSectionLoader.h"
#include "session/KorDSMItemPath.h"

namespace {

KorDSMDatabaseItem* findStyle(KorDsmAddInContentItem& addIn, KorOdbcKey key) {
    for (KorDSMDatabaseItem* category : addIn.children())
        for (KorDSMDatabaseItem* style : category->children())
            if (style->recordKey() == key.getKey())
                return style;
    return nullptr;
}

} // namespace

bool KorDSMStartSelection::select(SourceId source, const KorOdbcKey& key) {
    constexpr auto kSection = KorDSMDefines::kViewDetailStyles;
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    KorDSMSectionLoader().loadDataStructure(structure);
    KorDsmAddInContentItem* addIn = KorDSMItemPath::findAddIn(*structure.getSection(kSection), source);
    KorDSMDatabaseItem* item = addIn ? findStyle(*addIn, key) : nullptr;
    if (!item)
        return false;
    structure.setSelectedSection(kSection);
    structure.setTargetDatabase(kSection, source.dsn);
    structure.setTargetAddIn(kSection, source.index);
    structure.getSelectedPath(kSection) = KorDSMItemPath::textsTo(*item);
    return true;
}
