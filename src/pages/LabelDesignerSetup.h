#pragma once

#include "base/KorString.h"

class VELLabelDesignerCtrlWrap;
struct LabelStyle;

/// Sets up the label designers of the title pages.
namespace LabelDesignerSetup {

/// What stays the same for the life of the page: background colour from the exchange queue
/// "DETAILSTYLESMANAGERNEW", the object type that decides which variables are offered, and the texts.
void apply(VELLabelDesignerCtrlWrap& designer, int objectTypeKey);

/// What belongs to the current source: its units, the creation defaults for titles, its text sizes.
void applySource(VELLabelDesignerCtrlWrap& designer);

/// What texts look like that say nothing else, where that is not the look of titles; the font stays.
void applyStyle(VELLabelDesignerCtrlWrap& designer, const LabelStyle& style);

/// What variables a text can hold, one a line: for fields that have no designer.
KorString variableHelp();

} // namespace LabelDesignerSetup
