#include "model/KorDSMDialogFactory.h"

#include "services/KorResources.h"

KorString KorDSMDialogFactory::moduleHandle;
bool KorDSMDialogFactory::asksBeforeLeaving = false;
bool KorDSMDialogFactory::recoversChanges = false;
KorString KorDSMDialogFactory::recoveryFolder;

namespace {

// Its texts are the first that are looked up where a host comes here before it opens the editor.
KorDSMDataStructure makeStructure() {
    if (const KorString& folder = KorDSMDialogFactory::moduleHandle; !folder.isEmpty())
        KorResources::setFolder(folder.toStdString());
    return KorDSMDataStructure();
}

} // namespace

KorDSMDataStructure& KorDSMDialogFactory::getDSMDataStructure() {
    static KorDSMDataStructure structure = makeStructure();
    return structure;
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
