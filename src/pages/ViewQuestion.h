#pragma once

#include "session/KorDSMViewList.h"

class QWidget;

/// Asks which view is to be added to a style of the current source; nothing when the user wants none.
std::optional<KorDSMViewList::Wish> askForView(QWidget* parent);
