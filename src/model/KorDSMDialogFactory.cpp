#include "model/KorDSMDialogFactory.h"

KorString KorDSMDialogFactory::moduleHandle;

KorDSMDataStructure& KorDSMDialogFactory::getDSMDataStructure() {
    static KorDSMDataStructure structure;
    return structure;
}

void KorDSMDialogFactory::loadDetailStylesDependencies(KorDsmDetailStyleItem* style) {
    KorDSMSectionLoader::loadDetailStylesDependencies(style);
}

void KorDSMDialogFactory::expandAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn) {
    KorDSMSectionLoader::expandAnnotationsAddInContent(addIn);
}

void KorDSMDialogFactory::expandDimRequestsAddInContent(KorDsmDimRequestsAddInItem* addIn) {
    KorDSMSectionLoader::expandDimRequestsAddInContent(addIn);
}

void KorDSMDialogFactory::expandQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn) {
    KorDSMSectionLoader::expandQualifiersAddInContent(addIn);
}
