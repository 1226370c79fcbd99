#include "pages/LabelDesignerSetup.h"

#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "data/KorODBCDetStyle.h"
#include "data/KorScales.h"
#include "model/CurrentUnits.h"
#include "services/KorExchangeUtilities.h"
#include "session/KorDSMHandOver.h"

namespace {

constexpr int kTitleFamily = 40;

template <typename T>
T creationDefault(const char* key, T start) {
    KorODBCDefaultUtilities::getCreationDefault(kTitleFamily, key, start);
    return start;
}

} // namespace

void LabelDesignerSetup::apply(VELLabelDesignerCtrlWrap& designer, int objectTypeKey) {
    int status = 0;
    KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue(KorDSMHandOver::kQueue, status, 0);
    if (queue.has("LDBKCOLOR"))
        designer.SetBkColor(static_cast<int>(queue.getDouble("LDBKCOLOR")));
    designer.SetObjectTypeKey(objectTypeKey);
    applySource(designer);
}

void LabelDesignerSetup::applySource(VELLabelDesignerCtrlWrap& designer) {
    const KorUnitsManager& units = getUnitsOfCurrentDatabase();
    designer.SetGUIIUnits([&units](double size) { return toQt(units.format(size, KorUnitsManager::kPaper)); });
    designer.SetDefaultFont(creationDefault("TextFont", KorString("Arial")));
    designer.SetDefaultSize(creationDefault("TitleHeight", 5.0));
    designer.SetDefaultColor(creationDefault("TitleColor", 3));
    designer.SetDefaultBold(creationDefault("TitleBold", 0) != 0);
    designer.SetDefaultItalic(creationDefault("TitleItalic", 0) != 0);
    designer.SetDefaultUnderline(creationDefault("TitleUnderline", 0) != 0);
    KorArray<double> sizes;
    KorODBCTextSizes::getTextSizesList(sizes);
    designer.SetListOfSizes(std::vector<double>(sizes.begin(), sizes.end()));
}
