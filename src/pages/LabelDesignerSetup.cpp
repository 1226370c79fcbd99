#include "pages/LabelDesignerSetup.h"

#include "base/LabelVariables.h"
#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "model/CurrentUnits.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorScales.h"
#include "services/KorExchangeUtilities.h"
#include "services/Prompts.h"
#include "session/KorDSMHandOver.h"

#include <cmath>

namespace {

constexpr int kTitleFamily = 40;

template <typename T>
T creationDefault(const char* key, T start) {
    KorODBCDefaultUtilities::getCreationDefault(kTitleFamily, key, start);
    return start;
}

constexpr std::pair<QString LabelDesignerTexts::*, int> kTexts[] = {
    {&LabelDesignerTexts::field, 500},           {&LabelDesignerTexts::font, 501},
    {&LabelDesignerTexts::fontMissing, 502},     {&LabelDesignerTexts::size, 503},
    {&LabelDesignerTexts::color, 504},           {&LabelDesignerTexts::bold, 505},
    {&LabelDesignerTexts::italic, 506},          {&LabelDesignerTexts::underline, 507},
    {&LabelDesignerTexts::insertVariable, 508},  {&LabelDesignerTexts::insertVariableTip, 509},
    {&LabelDesignerTexts::empty, 510},           {&LabelDesignerTexts::otherVersion, 511},
    {&LabelDesignerTexts::notUnderstood, 512},   {&LabelDesignerTexts::colorNumber, 513},
    {&LabelDesignerTexts::byLayer, 514},         {&LabelDesignerTexts::byBlock, 515},
    {&LabelDesignerTexts::boldLetter, 525},      {&LabelDesignerTexts::italicLetter, 526},
    {&LabelDesignerTexts::underlineLetter, 527}, {&LabelDesignerTexts::editAsText, 528},
};
constexpr int kFirstColorName = 516;
constexpr int kFirstVariable = 530;
constexpr int kVariableHelp = 461;

QString prompt(int number) {
    return toQt(Prompts::dsm(number));
}

LabelDesignerTexts texts() {
    LabelDesignerTexts result;
    for (const auto& [member, number] : kTexts)
        result.*member = prompt(number);
    int number = kFirstColorName;
    for (QString& name : result.colorNames)
        name = prompt(number++);
    number = kFirstVariable;
    for (const LabelVariable& variable : kLabelVariables)
        result.variables[toQt(KorString(std::string(variable.name)))] = prompt(number++);
    return result;
}

// Sizes are chosen from a list, never read from their texts: in inches a thousandth is near enough.
QString sizeText(const KorUnitsManager& units, double size) {
    const QString exact = toQt(units.format(size, KorUnitsManager::kPaper));
    if (!units.getBasisUnitForDistanceIsImperial())
        return exact + ' ' + QLatin1String(units.getUnit(KorUnitsManager::kPaper).symbol());
    constexpr double kThousandth = 0.0254;
    const bool isFraction =
        exact.contains('/') || !exact.contains(QLatin1Char(KorUnitsManager::decimalMark()));
    return isFraction
               ? exact
               : toQt(units.format(std::round(size / kThousandth) * kThousandth, KorUnitsManager::kPaper));
}

} // namespace

KorString LabelDesignerSetup::variableHelp() {
    KorString lines;
    int number = kFirstVariable;
    for (const LabelVariable& variable : kLabelVariables)
        lines = lines + KorString::format("\n{%s}  %s",
                                          {KorString(std::string(variable.name)), Prompts::dsm(number++)});
    return Prompts::dsm(kVariableHelp) + lines;
}

void LabelDesignerSetup::apply(VELLabelDesignerCtrlWrap& designer, int objectTypeKey) {
    int status = 0;
    KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue(KorDSMHandOver::kQueue, status, 0);
    if (queue.has("LDBKCOLOR"))
        designer.SetBkColor(static_cast<int>(queue.getDouble("LDBKCOLOR")));
    designer.SetObjectTypeKey(objectTypeKey);
    designer.setTexts(texts());
    applySource(designer);
}

void LabelDesignerSetup::applyStyle(VELLabelDesignerCtrlWrap& designer, const LabelStyle& style) {
    designer.SetDefaultSize(style.size);
    designer.SetDefaultColor(style.color);
    designer.SetDefaultBold(style.bold);
    designer.SetDefaultItalic(style.italic);
    designer.SetDefaultUnderline(style.underline);
}

void LabelDesignerSetup::applySource(VELLabelDesignerCtrlWrap& designer) {
    const KorUnitsManager& units = getUnitsOfCurrentDatabase();
    designer.SetGUIIUnits([&units](double size) { return sizeText(units, size); });
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
