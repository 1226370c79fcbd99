#pragma once

#include "controls/KorImageList.h"

class KorString;

/// Fills the icon table and appends its icons to an empty list, so that an icon's index in the table is its
/// index there.
void appendGlobalIcons(KorImageList& images);
/// The picture of a file that an add-in or the host brings.
QIcon broughtIcon(const KorString& file);
