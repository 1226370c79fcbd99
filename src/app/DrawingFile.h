#pragma once

#include "drawing/PicturePage.h"

#include <filesystem>

/// Pages of drawings as files: SVG, PNG and PDF, by the ending of the name.
namespace DrawingFile {

/// Whether the name ends as that of a picture.
bool isKnown(const std::filesystem::path& file);
/// What is to be written into a file of this name, which is known. A PNG has 150 pixels in an inch, fewer
/// where the page is larger than 8000 pixels; a PDF has one page of the size of the drawing.
std::string bytes(const std::filesystem::path& file, const PicturePage& page);

} // namespace DrawingFile
