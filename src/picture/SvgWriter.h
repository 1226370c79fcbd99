#pragma once

#include "picture/PicturePage.h"

/// A page as an SVG picture, in millimetres. The same page gives the same bytes, whatever machine and locale.
std::string svgOf(const PicturePage& page);
