#pragma once

#include "base/KorString.h"

#include <QIcon>
#include <QSize>

#include <functional>

/// The program's pictures, by number: icons (`<base>/icons/<number>.svg`, 16-pixel grid, for trees and
/// lists) and bitmaps (`<base>/bitmaps/<number>.svg`, for buttons and explanations). They are drawn at the
/// size and device pixel ratio at which they are shown; icons in disabled controls look so.
namespace KorPictures {

/// Where the pictures are: a folder or a resource prefix as ":/pictures". Nothing is found before this.
void setBase(const KorString& base);

/// Receives each picture that was asked for and is not there, once, as its path relative to the base. An
/// empty sink is silent.
void setMissingSink(std::function<void(const KorString& path)> sink);

/// Says in the user's language what a bitmap shows, for those who do not see it; an empty text for one that
/// says nothing of its own.
void setDescriptions(std::function<KorString(int number)> describe);
/// What the bitmap of that number shows; an empty text where nobody says it.
KorString description(int number);

/// The icon of that number, an empty one when it is missing.
QIcon icon(int number);
/// The bitmap of that number, an empty one when it is missing.
QIcon bitmap(int number);
/// A button's bitmap that changes while the button is down or disabled; 0 stands for no other picture
/// (a disabled button then shows the first one faded).
QIcon buttonBitmap(int number, int checkedNumber, int disabledNumber = 0);
/// The icon of that name, for the few icons that have no number.
QIcon namedIcon(const KorString& name);
/// The icon of a picture file, as the others are made: it keeps its colours on selected rows.
QIcon fromFile(const QString& file);
/// The size at which the bitmap was drawn, in pixels at 100 %; an empty size when it is missing.
QSize bitmapSize(int number);

} // namespace KorPictures
