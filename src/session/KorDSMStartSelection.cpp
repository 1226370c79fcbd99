#include "session/KorDSMStartSelection.h"

#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMSectionLoader.h"
#include "session/KorDSMItemPath.h"

namespace {

constexpr auto kSection = KorDSMDefines::kViewDetailStyles;

// Null where the sections do not show the source.
KorDsmAddInContentItem* loadedSource(SourceId source) {
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    KorDSMSectionLoader().loadDataStructure(structure);
    return KorDSMItemPath::findAddIn(*structure.getSection(kSection), source);
}

KorDSMDatabaseItem* findStyle(KorDsmAddInContentItem& addIn, KorOdbcKey key) {
    for (KorDSMDatabaseItem* category : addIn.children())
        for (KorDSMDatabaseItem* style : category->children())
            if (style->type() == KorDSMDefines::kDetailStyle && style->recordKey() == key.getKey())
                return style;
    return nullptr;
}

void remember(SourceId source, KorDSMDatabaseItem& item) {
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    structure.setSelectedSection(kSection);
    structure.setTargetDatabase(kSection, source.dsn);
    structure.setTargetAddIn(kSection, source.index);
    structure.getSelectedPath(kSection) = KorDSMItemPath::textsTo(item);
}

} // namespace

bool KorDSMStartSelection::select(SourceId source, const KorOdbcKey& key) {
    KorDsmAddInContentItem* addIn = loadedSource(source);
    KorDSMDatabaseItem* item = addIn ? findStyle(*addIn, key) : nullptr;
    if (item)
        remember(source, *item);
    return item != nullptr;
}

void KorDSMStartSelection::selectFirst(SourceId source) {
    KorDsmAddInContentItem* addIn = loadedSource(source);
    if (!addIn)
        return;
    KorDSMDatabaseItem* first = addIn;
    for (KorDSMDatabaseItem* category : addIn->children())
        if (first == addIn && !category->children().isEmpty())
            first = category->children()[0];
    remember(source, *first);
}
