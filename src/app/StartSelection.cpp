#include "app/StartSelection.h"

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

bool selectAtStart(const RowChoice& style) {
    constexpr auto kSection = KorDSMDefines::kViewDetailStyles;
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    KorDSMSectionLoader().loadDataStructure(structure);
    KorDsmAddInContentItem* addIn = KorDSMItemPath::findAddIn(*structure.getSection(kSection), style.source);
    KorDSMDatabaseItem* item = addIn ? findStyle(*addIn, style.key) : nullptr;
    if (!item)
        return false;
    structure.setSelectedSection(kSection);
    structure.setTargetDatabase(kSection, style.source.dsn);
    structure.setTargetAddIn(kSection, style.source.index);
    structure.getSelectedPath(kSection) = KorDSMItemPath::textsTo(*item);
    return true;
}
