#include "session/KorDSMStatusTexts.h"

#include "services/Prompts.h"

using namespace KorDSMDefines;

namespace {

// Texts of the item types that have one of their own; 0: the entry's text.
constexpr struct {
    eItemType type;
    int prompt;
} kRows[] = {
    {kDetailStyle, 33513},
    {kDetailStyleCategory, 33512},
    {kDetailStylesSection, 0},
    {kAnnotationsSection, 0},
    {kDimRequestsSection, 0},
    {kQualifiersSection, 0},
    {kAnnotationStrategy, 33790},
    {kAnnotationGroup, 33515},
    {kDimRequest, 33625},
    {kDimRequestGroup, 33517},
    {kQualifierSet, 33675},
    {kQualifierSetGroup, 33519},
    {kViewRequest, 0},
    {kSystemAndBox, 33772},
    {kReprMapRule, 33580},
    {kViewDimensioning, 33610},
    {kReprMap, 33595},
    {kAppearance, 33685},
    {kAnnotationArrangement, 33805},
    {kPointSelection, 33645},
};

} // namespace

KorString statusTextOf(const KorDSMDatabaseItem& item, const KorString& entryText) {
    for (const auto& row : kRows)
        if (row.type == item.m_Type)
            return row.prompt == 0 ? entryText : Prompts::ups(row.prompt);
    return {};
}
