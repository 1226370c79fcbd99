#pragma once

#include "picture/PicturePage.h"
#include "records/KorDSNDefinitions.h"

/// A detail style on paper: its drawing of a sample part, its views with their scales, and below what it says
/// in words.
namespace StyleSheet {

/// `drawn` is the page of the drawing alone. The source of the style is read.
PicturePage pageOf(const PicturePage& drawn, const Drawing& drawing, SourceId source, std::int32_t style);

} // namespace StyleSheet
