#include "pages/KorDSMPageDetailStylesProperties.h"

#include "base/LabelVariables.h"

namespace {

constexpr TitlePosition kPositions[] = {
    {0, 1040, 33933, 1106}, {1, 1036, 33663, 1083}, {2, 1034, 33662, 1085}, {3, 1033, 33661, 1084},
    {4, 1035, 33929, 1102}, {5, 1037, 33930, 1105}, {6, 1038, 33931, 1103}, {7, 1039, 33932, 1104},
};

constexpr TitlePageTable kTable = {
    .templateId = 2002,
    .pageCode = KorDSMDefines::kDetailStyle,
    .title = 33655,
    .positionColumn = 6,
    .formatColumn = 5,
    .objectType = kLabelDetailTitle,
    .positionFrame = 1157,
    .formatFrame = 1158,
    .positions = kPositions,
    .fallback = 3, // above main view
    .picture = 1013,
    .positionTooltip = 33825,
    .designerTooltip = 33826,
};

} // namespace

KorDSMPageDetailStylesProperties::KorDSMPageDetailStylesProperties(QWidget* parent)
    : KorDSMTitlePage(parent, kTable) {}
