#pragma once

#include "picture/PicturePage.h"

#include <QImage>

#include <filesystem>

class QPainter;

/// Pages of drawings as files: SVG, PNG and PDF, by the ending of the name.
namespace DrawingFile {

/// Whether the name ends as that of a picture.
bool isKnown(const std::filesystem::path& file);
/// What is to be written into a file of this name, which is known. A PNG has 150 pixels in an inch, fewer
/// where the page is larger than 8000 pixels; a PDF has one page of the size of the drawing.
std::string bytes(const std::filesystem::path& file, const PicturePage& page);

/// The picture that a PNG has.
QImage imageOf(const PicturePage& page);
/// Paints the page with its upper left corner at 0, 0; `pixels` are in a millimetre.
void paint(QPainter& painter, const PicturePage& page, double pixels);
/// The pixels in a millimetre with which the page has its size on the paper, or fits into it where that is
/// less.
double scaleFor(const PicturePage& page, const QPaintDevice& paper);

} // namespace DrawingFile
