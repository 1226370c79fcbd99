#include "pages/KorDSMPageCutViewTitleProperties.h"

#include "base/LabelVariables.h"

namespace {

constexpr TitlePosition kPositions[] = {{0, 2025, 33941}, {1, 2026, 33942}};

constexpr TitlePageTable kTable = {
    .templateId = 2309,
    .pageCode = 32,
    .title = 33940,
    .positionColumn = 8,
    .formatColumn = 7,
    .objectType = kLabelCutViewTitle,
    .positionFrame = 1246,
    .formatFrame = 2027,
    .positions = kPositions,
    .fallback = 0, // below
};

} // namespace

KorDSMPageCutViewTitleProperties::KorDSMPageCutViewTitleProperties(QWidget* parent)
    : KorDSMTitlePage(parent, kTable) {}
