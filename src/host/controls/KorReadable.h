#pragma once

#include <QPalette>

#include <functional>

class QWidget;

/// Texts that can be read in every palette.
namespace KorReadable {

/// What the accessibility guidelines ask of text, and so what is asked here.
constexpr double kContrast = 4.5;

/// The contrast of two opaque colours as the accessibility guidelines measure it, from 1 (the same) to 21
/// (black on white).
double contrast(const QColor& a, const QColor& b);

/// `a` with that share of `b`, 0 to 1.
QColor mixed(const QColor& a, const QColor& b, double share);

/// `color`, moved towards `end` until it is enough, or all the way.
QColor moved(const QColor& color, const QColor& end, const std::function<bool(const QColor&)>& isEnough);

/// `palette` with the texts of what is disabled, and of what stands where nothing is chosen, drawn so far
/// towards ordinary text that they have the contrast asked for on every ground they stand on.
QPalette palette(const QPalette& palette);

/// Shows `root` and all that lies in it in readable colours from now on, whatever palette comes. For windows
/// and pages, which can lie in a host of other looks.
void keep(QWidget* root);

} // namespace KorReadable
