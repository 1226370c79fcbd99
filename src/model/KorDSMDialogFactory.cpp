#include "model/KorDSMDialogFactory.h"

#include "base/EditorSession.h"
#include "services/KorResources.h"

KorString KorDSMDialogFactory::moduleHandle;

namespace {

// The structure's texts are the first that are looked up where a host comes here before it opens the editor.
struct ResourcesFound {
    ResourcesFound() {
        if (const KorString& folder = KorDSMDialogFactory::moduleHandle; !folder.isEmpty())
            KorResources::setFolder(folder.toStdString());
    }
};

struct ShownContent : ResourcesFound {
    KorDSMDataStructure structure;
};

} // namespace

KorDSMDataStructure& KorDSMDialogFactory::getDSMDataStructure() {
    return EditorSession::currentPart<ShownContent>().structure;
}

KorDSMEditorOptions& KorDSMDialogFactory::options() {
    return EditorSession::currentPart<KorDSMEditorOptions>();
}

void KorDSMDialogFactory::loadDetailStylesDependencies(KorDsmDetailStyleItem* style) {
    KorDSMSectionLoader::loadDetailStylesDependencies(style);
}

void KorDSMDialogFactory::expandAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn) {
    KorDSMSectionLoader::expandAddInContent(*addIn);
}

void KorDSMDialogFactory::expandDimRequestsAddInContent(KorDsmDimRequestsAddInItem* addIn) {
    KorDSMSectionLoader::expandAddInContent(*addIn);
}

void KorDSMDialogFactory::expandQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn) {
    KorDSMSectionLoader::expandAddInContent(*addIn);
}
